#include "settings/modRegistry.h"

namespace burnwick::modRegistry {

bool KeyExists(const Registry& registry, RegistryRoot root, const std::string& subKey) {
    return registry.HasKey(root, subKey);
}

std::string GetKeyValue(const Registry& registry, RegistryRoot root, const std::string& subKey,
                        const std::string& valueName) {
    return registry.Text(root, subKey, valueName).value_or("");
}

bool SetKeyValue(Registry& registry, RegistryRoot root, const std::string& subKey, const std::string& value) {
    return registry.StoreText(root, subKey, "", value);
}

void DeleteKey(Registry& registry, RegistryRoot root, const std::string& subKey) {
    if (KeyExists(registry, root, subKey)) {
        registry.Delete(root, subKey);
    }
}

}  // namespace burnwick::modRegistry
