#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace burnwick::test {

// Compares `text` with the file tests/golden/NAME.txt. With BURNWICK_RECORD in the environment it writes the
// file instead (tests/golden/record.sh).
void ExpectGolden(const std::string& name, const std::string& text);

// The text without what differs between two runs or two systems: the folder is FOLDER, the device DEVICE, and
// line ends are LF.
std::string Normalized(std::string text, const std::filesystem::path& folder, const std::string& device);

// One "Section/Key=Value" a line; settings without a value are left out.
std::string SettingsText(const std::map<std::string, std::string>& settings);

}  // namespace burnwick::test
