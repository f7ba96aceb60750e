#include "image/Image.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "support/ReadImage.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

using modBinFileInfo::HasChanged;
using modBinFileInfo::ImageRefusal;
using modBinFileInfo::ReadImageFile;

class ImageRead : public ::testing::Test {
protected:
    static ImageRefusal RefusalOf(const std::string& fileName) {
        return std::get<ImageRefusal>(ReadImageFile(fileName));
    }

    TempFolder Folder;
};

TEST_F(ImageRead, HasContentAndInformation) {
    const std::string path = Folder.Write("unit.bin", SampleImage());
    const Image image = ImageOf(path);
    EXPECT_EQ(image.FileName, path);
    EXPECT_EQ(*image.Content, SampleImage());
    EXPECT_EQ(image.Length, SampleImage().size());
    EXPECT_EQ(image.Information.Model, modBinFileInfo::GetBinFileInfo(path).Model);
    EXPECT_EQ(image.Information.Checksum, modBinFileInfo::GetBinFileInfo(path).Checksum);
    EXPECT_EQ(image.Information.FileName, "unit.bin");
}

TEST_F(ImageRead, OfAForeignFormatIsRefused) {
    const ImageRefusal refusal = RefusalOf(Folder.Write("text.bin", AnyBytes(1000)));
    EXPECT_EQ(refusal.Status, "Invalid file format.");
    EXPECT_EQ(refusal.Trouble, "");
}

TEST_F(ImageRead, OfAFileThatIsGoneIsRefusedWithTheReason) {
    const ImageRefusal refusal = RefusalOf(Folder / "gone.bin");
    EXPECT_EQ(refusal.Status, "Invalid file format.");
    EXPECT_EQ(refusal.Trouble, "No such file or directory");
}

TEST_F(ImageRead, HasNoContentBeyondWhatATransferCanNumber) {
    const std::string path = Folder.Write("long.bin", SampleImage());
    std::filesystem::resize_file(Utf8Path(path), modBinFileInfo::LongestImage + 1);
    EXPECT_EQ(ImageOf(path).Content, nullptr);
    EXPECT_EQ(ImageOf(path).Length, modBinFileInfo::LongestImage + 1);
    std::filesystem::resize_file(Utf8Path(path), modBinFileInfo::LongestImage);
    EXPECT_EQ(ImageOf(path).Content->size(), modBinFileInfo::LongestImage);
}

TEST_F(ImageRead, KnowsWhetherTheFileHasChanged) {
    const Image image = ImageOf(Folder.Write("unit.bin", SampleImage()));
    EXPECT_FALSE(HasChanged(image));
    Folder.Write("unit.bin", AnyBytes(image.Length));
    EXPECT_TRUE(HasChanged(image));
    Folder.Write("unit.bin", AnyBytes(10));
    EXPECT_TRUE(HasChanged(image));
    std::filesystem::remove(Utf8Path(image.FileName));
    EXPECT_TRUE(HasChanged(image));
}

}  // namespace burnwick::test
