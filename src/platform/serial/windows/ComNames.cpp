#include "platform/serial/windows/ComNames.h"

#include <algorithm>
#include <string_view>

namespace burnwick {

namespace {

constexpr std::string_view devices = R"(\\.\)";

// ASCII alone, whatever the locale.
char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// What stands behind the devices' folder; all of a text that does not begin with it.
std::string WithoutFolder(const std::string& path) {
    std::string start = path.substr(0, devices.size());
    std::replace(start.begin(), start.end(), '/', '\\');
    return start == devices || start == R"(\\?\)" ? path.substr(devices.size()) : path;
}

}  // namespace

std::string ComName(const std::string& path) {
    const std::string name = WithoutFolder(path);
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return IsComNumber(upper) ? upper : name;
}

bool IsComNumber(const std::string& name) {
    return name.size() > 3 && name.starts_with("COM") && std::all_of(name.begin() + 3, name.end(), IsDigit);
}

std::string ComPath(const std::string& path) {
    const std::string name = ComName(path);
    return IsComNumber(name) ? std::string(devices) + name : path;
}

}  // namespace burnwick
