#include "image/TroubleOfReading.h"
#include "support/SampleImages.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using modBinFileInfo::ReadTrouble;

TEST_F(TroubleOfReading, AFileIsNone) {
    EXPECT_EQ(ReadTrouble(Folder.Write("image.bin", SampleImage())), "");
    EXPECT_EQ(ReadTrouble(Folder.Write("empty.bin", {})), "");
}

TEST_F(TroubleOfReading, AMissingFileIsTold) {
    EXPECT_EQ(ReadTrouble(Folder / "missing.bin"), "No such file or directory");
    EXPECT_EQ(ReadTrouble(""), "No such file or directory");
}

TEST_F(TroubleOfReading, AFolderIsTold) {
    EXPECT_EQ(ReadTrouble(Folder.Path().string()), "it is a folder");
}

TEST_F(TroubleOfReading, AFileOf2GBOrMoreIsTold) {
    const std::string path = Folder.Write("image.bin", {});
    fs::resize_file(path, 2'147'483'647);
    EXPECT_EQ(ReadTrouble(path), "");
    fs::resize_file(path, 2'147'483'648);
    EXPECT_EQ(ReadTrouble(path), "it is longer than 2 GB, and no image is");
}

}  // namespace burnwick::test
