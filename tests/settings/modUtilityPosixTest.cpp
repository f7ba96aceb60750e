#include <sys/stat.h>

#include "settings/SettingsFile.h"

// Pipes, links and rights, as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;
using modUtility::ReadIniValue;
using modUtility::WriteIniValue;

TEST_F(ReadIni, DoesNotWaitForAPipeInTheFilesPlace) {
    ASSERT_EQ(mkfifo(Path.c_str(), 0666), 0);
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
    WriteIniValue("COMPort", "COM", "3");
    EXPECT_TRUE(fs::is_fifo(Path));
}

TEST_F(ReadIni, KeepsAPathThatIsNoText) {
    Holds("[Path]\nLastPath=/home/j\xFCrgen\n");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), "/home/j\xFCrgen") << "bytes make a path here";
}

TEST_F(WriteIni, DoesNotReplaceTheFileForAValueThatIsThere) {
    WriteIniValue("COMPort", "COM", "3");
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(stat(Path.c_str(), &before), 0);
    WriteIniValue("COMPort", "COM", "3");
    ASSERT_EQ(stat(Path.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    WriteIniValue("COMPort", "COM", "4");
    ASSERT_EQ(stat(Path.c_str(), &after), 0);
    EXPECT_NE(before.st_ino, after.st_ino);
}

TEST_F(WriteIni, KeepsALinkAndTheFilesPermissions) {
    const auto target = Folder.Path() / "elsewhere.ini";
    fs::create_symlink("elsewhere.ini", Path);
    Holds("[A]\nk=1\n");
    ASSERT_EQ(chmod(target.c_str(), 0640), 0);
    WriteIniValue("A", "k", "2");
    EXPECT_TRUE(fs::is_symlink(Path));
    EXPECT_EQ(Content(), "[A]\nk=2\n");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms{0640});
}

}  // namespace burnwick::test
