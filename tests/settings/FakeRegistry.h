#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Registry.h"

namespace burnwick::test {

// A registry in memory. What is all users' and what is one user's are kept apart in it.
class FakeRegistry final : public Registry {
public:
    using Values = std::map<std::string, std::string>;  // by name; the default value has none

    bool HasKey(RegistryRoot root, const std::string& key) const override {
        return Keys.contains(NameOf(root, key));
    }
    std::optional<std::string> Text(RegistryRoot root, const std::string& key,
                                    const std::string& name) const override {
        const auto found = Keys.find(NameOf(root, key));
        return found != Keys.end() && found->second.contains(name) ? std::optional(found->second.at(name))
                                                                   : std::nullopt;
    }
    bool StoreText(RegistryRoot root, const std::string& key, const std::string& name,
                   const std::string& text) override {
        if (root == Refusing || RefusedKeys.contains(NameOf(root, key))) {
            return false;
        }
        Stored.push_back(key);
        Keys[NameOf(root, key)][name] = text;
        return true;
    }
    void DeleteValue(RegistryRoot root, const std::string& key, const std::string& name) override {
        if (const auto found = Keys.find(NameOf(root, key)); found != Keys.end()) {
            found->second.erase(name);
        }
    }
    bool IsEmpty(RegistryRoot root, const std::string& key) const override {
        const auto found = Keys.find(NameOf(root, key));
        return found != Keys.end() && found->second.empty() && !HasKeysBelow(found->first);
    }
    void Delete(RegistryRoot root, const std::string& key) override {
        if (!HasKeysBelow(NameOf(root, key))) {
            Deleted.push_back(NameOf(root, key));
            Keys.erase(NameOf(root, key));
        }
    }

    std::map<std::string, Values> Keys;  // "HKCR\.bin"
    std::vector<std::string> Stored;
    std::vector<std::string> Deleted;
    std::optional<RegistryRoot> Refusing;
    std::set<std::string> RefusedKeys;

private:
    static std::string NameOf(RegistryRoot root, const std::string& key) {
        return (root == RegistryRoot::ClassesRoot ? "HKCR\\" : "HKCU\\") + key;
    }
    bool HasKeysBelow(const std::string& name) const {
        return std::any_of(Keys.begin(), Keys.end(),
                           [&name](const auto& key) { return key.first.starts_with(name + '\\'); });
    }
};

}  // namespace burnwick::test
