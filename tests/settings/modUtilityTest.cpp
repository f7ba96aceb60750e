#include "settings/modUtility.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "support/TempFolder.h"

namespace burnwick::test {

using modUtility::ReadIniValue;

class ReadIni : public ::testing::Test {
protected:
    void SetUp() override { modUtility::SetIniPath(Folder.Path() / "Burnwick.ini"); }

    void Holds(std::string_view text) {
        Bytes bytes(text.size());
        std::transform(text.begin(), text.end(), bytes.begin(),
                       [](char c) { return static_cast<std::byte>(c); });
        Folder.Write("Burnwick.ini", bytes);
    }

    TempFolder Folder;
};

TEST_F(ReadIni, GivesAKeysValue) {
    Holds("[COMPort]\r\nCOM=3\r\nBaudRate=1\r\n[Path]\r\nLastPath=/home/anna/images\r\n");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "3");
    EXPECT_EQ(ReadIniValue("COMPort", "BaudRate"), "1");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), "/home/anna/images");
}

TEST_F(ReadIni, GivesAnEmptyTextWithoutFileSectionOrKey) {
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
    Holds("[COMPort]\nCOM=3\n");
    EXPECT_EQ(ReadIniValue("Options", "COM"), "");
    EXPECT_EQ(ReadIniValue("COMPort", "BaudRate"), "");
}

TEST_F(ReadIni, GivesAnEmptyTextOnceTheFileIsDeleted) {
    Holds("[COMPort]\nCOM=3\n");
    std::filesystem::remove(Folder.Path() / "Burnwick.ini");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
}

TEST_F(ReadIni, CutsAValueToWhatABufferOf255Holds) {
    Holds("[Path]\nLastPath=" + std::string(400, 'x') + "\n");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), std::string(254, 'x'));
}

TEST_F(ReadIni, SeesAChangeAtOnce) {
    Holds("[COMPort]\nCOM=3\n");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "3");
    Holds("[COMPort]\nCOM=4\n");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "4");
}

TEST_F(ReadIni, KeepsUtf8AsItIs) {
    Holds("[Path]\nLastPath=/home/j\xC3\xBCrgen\n");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), "/home/j\xC3\xBCrgen");
}

TEST_F(ReadIni, SurvivesNonsense) {
    using namespace std::string_view_literals;
    for (const auto nonsense :
         {"\0\0\0\0"sv, "[[[[["sv, "=\n=\n]\n["sv, "\xFF\xFE\xFD"sv, "[COMPort"sv, "COM=1"sv}) {
        Holds(nonsense);
        EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
    }
}

TEST_F(ReadIni, GivesAnEmptyTextForAFolderInTheFilesPlace) {
    std::filesystem::create_directory(Folder.Path() / "Burnwick.ini");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
}

}  // namespace burnwick::test
