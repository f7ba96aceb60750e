#include "settings/modUtility.h"

// The file is UTF-8, and so is all text in the program.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include <fstream>
#include <sstream>

namespace burnwick::modUtility {

namespace {

constexpr std::size_t LongestValue = 254;

std::filesystem::path& IniPath() {
    static std::filesystem::path path;
    return path;
}

}  // namespace

void SetIniPath(const std::filesystem::path& path) {
    IniPath() = path;
}

std::string ReadIniValue(const std::string& section, const std::string& key) {
    // Reading through the stream, not its buffer: a folder in the file's place would throw there.
    std::ostringstream text;
    text << std::ifstream(IniPath(), std::ios::binary).rdbuf();
    CSimpleIniA ini;
    if (ini.LoadData(text.str()) < 0) {
        return {};
    }
    return std::string(ini.GetValue(section.c_str(), key.c_str(), "")).substr(0, LongestValue);
}

}  // namespace burnwick::modUtility
