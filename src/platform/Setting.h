#pragma once

#include <functional>
#include <string>

namespace burnwick {

// Gives a value of the settings; empty when there is none.
using ReadSetting = std::function<std::string(const std::string& section, const std::string& key)>;

// Stores a value of the settings.
using WriteSetting =
    std::function<void(const std::string& section, const std::string& key, const std::string& value)>;

}  // namespace burnwick
