#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "settings/modUtility.h"
#include "support/TempFolder.h"

namespace burnwick::test {

// Tests on a settings file of their own.
class SettingsFile : public ::testing::Test {
protected:
    SettingsFile() { modUtility::SetIniPath(Path); }

    void Holds(std::string_view text) const { std::ofstream(Path, std::ios::binary) << text; }

    std::string Content() const {
        std::ifstream file(Path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TempFolder Folder;
    std::filesystem::path Path = Folder.Path() / "Burnwick.ini";
};

class ReadIni : public SettingsFile {};
class WriteIni : public SettingsFile {};

}  // namespace burnwick::test
