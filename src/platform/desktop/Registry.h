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
    // Makes the key when it is missing, and stores the text in it. False when the system refuses.
    virtual bool StoreText(RegistryRoot root, const std::string& key, const std::string& name,
                           const std::string& text) = 0;
    // Whatever has that name, be it no text. One that is not there, or that the system keeps, is no error.
    virtual void DeleteValue(RegistryRoot root, const std::string& key, const std::string& name) = 0;
    // Whether the key is there, and has neither values nor keys below it.
    virtual bool IsEmpty(RegistryRoot root, const std::string& key) const = 0;
    // With its values. A key with others below it stays, as does one that the system keeps.
    virtual void Delete(RegistryRoot root, const std::string& key) = 0;
};

// Null on a system that has none.
std::unique_ptr<Registry> SystemRegistry();

}  // namespace burnwick
