#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "image/modBinFileInfo.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using modBinFileInfo::ReadTrouble;

class TroubleOfReading : public testing::Test {
protected:
    TempFolder Folder;
};

TEST_F(TroubleOfReading, AFileIsNone) {
    EXPECT_EQ(ReadTrouble(Folder.Write("image.bin", SampleImage())), "");
    EXPECT_EQ(ReadTrouble(Folder.Write("empty.bin", {})), "");
}

TEST_F(TroubleOfReading, ALinkToAFileIsNone) {
    fs::create_symlink(Folder.Write("image.bin", SampleImage()), Folder / "link.bin");
    EXPECT_EQ(ReadTrouble(Folder / "link.bin"), "");
}

TEST_F(TroubleOfReading, AMissingFileIsTold) {
    EXPECT_EQ(ReadTrouble(Folder / "missing.bin"), "No such file or directory");
    EXPECT_EQ(ReadTrouble(""), "No such file or directory");
}

TEST_F(TroubleOfReading, ALinkToNothingIsTold) {
    fs::create_symlink(Folder / "missing.bin", Folder / "link.bin");
    EXPECT_EQ(ReadTrouble(Folder / "link.bin"), "No such file or directory");
}

TEST_F(TroubleOfReading, ALinkToItselfIsTold) {
    fs::create_symlink(Folder / "link.bin", Folder / "link.bin");
    EXPECT_EQ(ReadTrouble(Folder / "link.bin"), "Too many levels of symbolic links");
}

TEST_F(TroubleOfReading, AFolderIsTold) {
    EXPECT_EQ(ReadTrouble(Folder.Path().string()), "it is a folder");
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
    const auto user = geteuid();
    if (user == 0) {
        ASSERT_EQ(seteuid(65'534), 0);  // nobody: root may read anything
    }
    EXPECT_EQ(ReadTrouble(path), "Permission denied");
    EXPECT_EQ(modBinFileInfo::CheckFileFormat(path), "Invalid file format.");
    EXPECT_EQ(modBinFileInfo::GetBinFileInfo(path).FileSize, "");
    ASSERT_EQ(seteuid(user), 0);
}

TEST_F(TroubleOfReading, AFileOf2GBOrMoreIsTold) {
    const std::string path = Folder.Write("image.bin", {});
    fs::resize_file(path, 2'147'483'647);
    EXPECT_EQ(ReadTrouble(path), "");
    fs::resize_file(path, 2'147'483'648);
    EXPECT_EQ(ReadTrouble(path), "it is longer than 2 GB, and no image is");
}

}  // namespace burnwick::test
