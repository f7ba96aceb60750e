#include "settings/modUtility.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string_view>

#include "platform/files/FileLock.h"
#include "settings/SettingsFile.h"
#include "support/Elapsed.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using modUtility::ReadIniValue;
using modUtility::WriteIniValue;

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
    fs::remove(Path);
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
}

TEST_F(ReadIni, CutsAValueToWhatABufferOf255Holds) {
    Holds("[Path]\nLastPath=" + std::string(400, 'x') + "\n");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), std::string(254, 'x'));
}

TEST_F(ReadIni, CutsAValueByItsCharactersAndCutsNoneInTwo) {
    std::string most;
    for (int character = 0; character < 254; ++character) {
        most += character % 2 == 0 ? "\u0417" : "\U0001F525";
    }
    Holds("[Path]\nLastPath=" + most + "\nLonger=" + most + "\u0417\nMuchLonger=" + most + most + "\n");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), most);
    EXPECT_EQ(ReadIniValue("Path", "Longer"), most);
    EXPECT_EQ(ReadIniValue("Path", "MuchLonger"), most);
}

TEST_F(ReadIni, CutsWhatIsNoTextToo) {
    Holds("[Path]\nLastPath=" + std::string(100'000, '\x80') + "\n");
    EXPECT_LE(ReadIniValue("Path", "LastPath").size(), 4U * 254U);
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
    fs::create_directory(Path);
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
}

TEST_F(WriteIni, MakesFileSectionAndKey) {
    WriteIniValue("COMPort", "COM", "3");
    EXPECT_EQ(Content(), "[COMPort]\r\nCOM=3\r\n");
    WriteIniValue("COMPort", "BaudRate", "1");
    WriteIniValue("Options", "LogOption", "&All");
    EXPECT_EQ(Content(), "[COMPort]\r\nCOM=3\r\nBaudRate=1\r\n\r\n[Options]\r\nLogOption=&All\r\n");
}

TEST_F(WriteIni, IsReadBackTheSame) {
    for (const auto* value : {"3", "", " /home/anna/my images ", "\"quoted\"", "C:\\images", "&Summary"}) {
        WriteIniValue("Path", "LastPath", value);
        EXPECT_EQ(ReadIniValue("Path", "LastPath"), value);
    }
}

TEST_F(WriteIni, ChangesOneLineAndNoOther) {
    Holds("; mine\n\n[COMPort]\nCOM = 3\nnoise\n[Foreign]\nx=1");
    WriteIniValue("COMPort", "COM", "4");
    EXPECT_EQ(Content(), "; mine\n\n[COMPort]\nCOM = 4\nnoise\n[Foreign]\nx=1");
}

TEST_F(WriteIni, StoresMoreThanIsRead) {
    WriteIniValue("Path", "LastPath", std::string(400, 'x'));
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), std::string(254, 'x'));
    EXPECT_EQ(Content(), "[Path]\r\nLastPath=" + std::string(400, 'x') + "\r\n");
}

TEST_F(WriteIni, LeavesAFolderInTheFilesPlace) {
    fs::create_directory(Path);
    WriteIniValue("COMPort", "COM", "3");
    EXPECT_TRUE(fs::is_directory(Path));
    EXPECT_TRUE(fs::is_empty(Path));
}

TEST_F(WriteIni, LeavesWhatHasNoFolder) {
    modUtility::SetIniPath(Folder.Path() / "none" / "Burnwick.ini");
    WriteIniValue("COMPort", "COM", "3");
    EXPECT_FALSE(fs::exists(Folder.Path() / "none"));
}

TEST_F(WriteIni, WorksOnAFileOfNoise) {
    std::string noise;
    while (noise.size() < 10'000'000) {
        noise += "\xFF\x01 noise without sense;;[[\r\n";
    }
    Holds(noise);
    WriteIniValue("COMPort", "COM", "3");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "3");
    EXPECT_TRUE(Content() == noise + "\r\n[COMPort]\r\nCOM=3\r\n");
}

TEST_F(WriteIni, LeavesTheFileWhileAnotherProgramKeepsTheLock) {
    Holds("[A]\nk=1\n");
    const auto lock = LockFile(Folder / "Burnwick.ini.lock", std::chrono::milliseconds(0));
    ASSERT_NE(lock, nullptr);
    EXPECT_LT(Elapsed([] { WriteIniValue("A", "k", "2"); }), HangLimit);
    EXPECT_EQ(Content(), "[A]\nk=1\n");
    EXPECT_EQ(ReadIniValue("A", "k"), "1") << "who reads needs no lock";
}

}  // namespace burnwick::test
