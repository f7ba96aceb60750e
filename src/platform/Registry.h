#pragma once

#include <memory>
#include <optional>
#include <string>

namespace burnwick {

enum class RegistryRoot { ClassesRoot, CurrentUser };

// The registry of a system that has one. Keys are paths with "\", texts UTF-8. Nothing here throws.
class Registry {
public:
    virtual ~Registry() = default;

    virtual bool HasKey(RegistryRoot root, const std::string& key) const = 0;
    // Nothing when there is no such text. A key's default value has no name.
    virtual std::optional<std::string> Text(RegistryRoot root, const std::string& key,
                                            const std::string& name) const = 0;
    // Makes the key when it is missing, and stores its default value as text. False when the system refuses.
    virtual bool StoreText(RegistryRoot root, const std::string& key, const std::string& text) = 0;
    // With all below it.
    virtual void Delete(RegistryRoot root, const std::string& key) = 0;
};

// Null on a system that has none.
std::unique_ptr<Registry> SystemRegistry();

}  // namespace burnwick
