#include <sys/stat.h>

#include "image/TroubleOfReading.h"
#include "support/AnyUser.h"
#include "support/SampleImages.h"

// Links, pipes, devices and rights, as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;
using modBinFileInfo::ReadTrouble;

TEST_F(TroubleOfReading, ALinkToAFileIsNone) {
    fs::create_symlink(Folder.Write("image.bin", SampleImage()), Folder / "link.bin");
    EXPECT_EQ(ReadTrouble(Folder / "link.bin"), "");
}

TEST_F(TroubleOfReading, ALinkedImageIsReadUnderTheLinksName) {
    fs::create_symlink(Folder.Write("sample.bin", SampleImage()), Folder / "link.bin");
    const auto info = modBinFileInfo::GetBinFileInfo(Folder / "link.bin");
    EXPECT_EQ(info.FileName, "link.bin");
    EXPECT_EQ(info.Model, "VX-1600");
}

TEST_F(TroubleOfReading, ALinkToNothingIsTold) {
    fs::create_symlink(Folder / "missing.bin", Folder / "link.bin");
    EXPECT_EQ(ReadTrouble(Folder / "link.bin"), "No such file or directory");
}

TEST_F(TroubleOfReading, ALinkToItselfIsTold) {
    fs::create_symlink(Folder / "link.bin", Folder / "link.bin");
    EXPECT_EQ(ReadTrouble(Folder / "link.bin"), "Too many levels of symbolic links");
}

TEST_F(TroubleOfReading, AFileAsAFolderIsTold) {
    EXPECT_EQ(ReadTrouble(Folder.Write("image.bin", {}) + "/image.bin"), "Not a directory");
}

TEST_F(TroubleOfReading, APipeIsToldAndNotWaitedFor) {
    const std::string pipe = Folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(ReadTrouble(pipe), "it is not a file");
    EXPECT_EQ(modBinFileInfo::GetBinFileInfo(pipe).Checksum, "");
    EXPECT_EQ(modBinFileInfo::CheckFileFormat(pipe), "Invalid file format.");
    std::int32_t differences = 0;
    EXPECT_EQ(modBinFileInfo::CompareImages(pipe, pipe, differences),
              "Error: " + pipe + ": it is not a file");
}

TEST_F(TroubleOfReading, ADeviceIsTold) {
    EXPECT_EQ(ReadTrouble("/dev/zero"), "it is not a file");
}

TEST_F(TroubleOfReading, AFileThatMayNotBeReadIsTold) {
    const std::string path = Folder.Write("image.bin", SampleImage());
    fs::permissions(path, fs::perms::none);
    const AnyUser user;
    EXPECT_EQ(ReadTrouble(path), "Permission denied");
    EXPECT_EQ(modBinFileInfo::CheckFileFormat(path), "Invalid file format.");
    EXPECT_EQ(modBinFileInfo::GetBinFileInfo(path).FileSize, "");
}

}  // namespace burnwick::test
