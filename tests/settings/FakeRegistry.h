#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Registry.h"

namespace burnwick::test {

// A registry in memory, in which a user's own keys show through among all.
class FakeRegistry final : public Registry {
public:
    bool HasKey(RegistryRoot root, const std::string& key) const override {
        return Keys.contains(NameOf(root, key));
    }
    std::optional<std::string> Text(RegistryRoot root, const std::string& key,
                                    const std::string& name) const override {
        const auto found = Keys.find(NameOf(root, key));
        return found != Keys.end() && name.empty() ? std::optional(found->second) : std::nullopt;
    }
    bool StoreText(RegistryRoot root, const std::string& key, const std::string& text) override {
        if (root == Refusing || RefusedKeys.contains(key)) {
            return false;
        }
        Stored.push_back(key);
        Keys[NameOf(root, key)] = text;
        return true;
    }
    void Delete(RegistryRoot root, const std::string& key) override {
        Deleted.push_back(NameOf(root, key));
        std::erase_if(Keys, [name = NameOf(root, key)](const auto& entry) {
            return entry.first == name || entry.first.starts_with(name + "\\");
        });
    }

    std::map<std::string, std::string> Keys;  // "HKCR\.bin"
    std::vector<std::string> Stored;
    std::vector<std::string> Deleted;
    std::optional<RegistryRoot> Refusing;
    std::set<std::string> RefusedKeys;

private:
    static std::string NameOf(RegistryRoot root, const std::string& key) {
        return (root == RegistryRoot::ClassesRoot ? "HKCR\\" : "HKCU\\") + key;
    }
};

}  // namespace burnwick::test
