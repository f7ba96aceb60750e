#pragma once

#include <string>

#include "platform/desktop/Registry.h"

// Keys of the registry and their texts.
namespace burnwick::modRegistry {

bool KeyExists(const Registry& registry, RegistryRoot root, const std::string& subKey);

// Empty when key or value are absent. A key's default value has no name.
std::string GetKeyValue(const Registry& registry, RegistryRoot root, const std::string& subKey,
                        const std::string& valueName);

// The key's default value; the key is made when it is missing. False when the system refuses.
bool SetKeyValue(Registry& registry, RegistryRoot root, const std::string& subKey, const std::string& value);

// A key that is not there is no error. One with others below it stays.
void DeleteKey(Registry& registry, RegistryRoot root, const std::string& subKey);

}  // namespace burnwick::modRegistry
