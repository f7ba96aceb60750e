#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/desktop/Registry.h"

namespace burnwick::test {

// A registry in memory. What is all users' and what is one user's are kept apart in it, unless it is told to
// show the user's among all.
class FakeRegistry final : public Registry {
public:
    using Values = std::map<std::string, std::string>;  // by name; the default value has none

    bool HasKey(RegistryRoot root, const std::string& key) const override {
        return Keys.contains(PlaceOf(root, key));
    }
    std::optional<std::string> Text(RegistryRoot root, const std::string& key,
                                    const std::string& name) const override {
        for (const auto& place : {PlaceOf(root, key), NameOf(root, key)}) {
            const auto found = Keys.find(place);
            if (found != Keys.end() && found->second.contains(name)) {
                return found->second.at(name);
            }
        }
        return std::nullopt;
    }
    bool StoreText(RegistryRoot root, const std::string& key, const std::string& name,
                   const std::string& text) override {
        const auto place = PlaceOf(root, key);
        if (IsRefused(place)) {
            return false;
        }
        Stored.push_back(key);
        Keys[place][name] = text;
        return true;
    }
    void DeleteValue(RegistryRoot root, const std::string& key, const std::string& name) override {
        const auto found = Keys.find(PlaceOf(root, key));
        if (found != Keys.end() && !IsRefused(found->first)) {
            found->second.erase(name);
        }
    }
    bool IsEmpty(RegistryRoot root, const std::string& key) const override {
        const auto isBare = [this](const std::string& name) {
            const auto found = Keys.find(name);
            return (found == Keys.end() || found->second.empty()) && !HasKeysBelow(name);
        };
        return HasKey(root, key) && isBare(PlaceOf(root, key)) && isBare(NameOf(root, key));
    }
    void Delete(RegistryRoot root, const std::string& key) override {
        const auto place = PlaceOf(root, key);
        if (!IsRefused(place) && !HasKeysBelow(place)) {
            Deleted.push_back(place);
            Keys.erase(place);
        }
    }

    std::map<std::string, Values> Keys;  // "HKCR\.bin"
    std::vector<std::string> Stored;
    std::vector<std::string> Deleted;
    std::optional<RegistryRoot> Refusing;
    std::set<std::string> RefusedKeys;
    // As Windows does: a key that the user has too is his, whoever reads, writes or deletes it among all.
    bool ShowsTheUsersAmongAll = false;

private:
    static std::string NameOf(RegistryRoot root, const std::string& key) {
        return (root == RegistryRoot::ClassesRoot ? "HKCR\\" : "HKCU\\") + key;
    }
    std::string PlaceOf(RegistryRoot root, const std::string& key) const {
        const auto users = NameOf(RegistryRoot::CurrentUser, "Software\\Classes\\" + key);
        const bool isTheUsers =
            ShowsTheUsersAmongAll && root == RegistryRoot::ClassesRoot && Keys.contains(users);
        return isTheUsers ? users : NameOf(root, key);
    }
    bool IsRefused(const std::string& place) const {
        return RefusedKeys.contains(place) || (Refusing && place.starts_with(NameOf(*Refusing, "")));
    }
    bool HasKeysBelow(const std::string& name) const {
        return std::any_of(Keys.begin(), Keys.end(),
                           [&name](const auto& key) { return key.first.starts_with(name + '\\'); });
    }
};

}  // namespace burnwick::test
