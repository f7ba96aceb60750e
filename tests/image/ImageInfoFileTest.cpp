#include <gmock/gmock.h>

#include <filesystem>

#include "image/MemoryImage.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

// GetBinFileInfo and what it makes of a file's path and length.
namespace burnwick::test {

using namespace modBinFileInfo;

TEST(FileName, IsThePartBehindTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(FileNameOf("/home/me/image.bin"), "image.bin");
    EXPECT_EQ(FileNameOf("C:\\images\\image.bin"), "image.bin");
    EXPECT_EQ(FileNameOf("/mnt/c\\image.bin"), "image.bin");
    EXPECT_EQ(FileNameOf("C:\\images/image.bin"), "image.bin");
    EXPECT_EQ(FileNameOf("image.bin"), "image.bin");
    EXPECT_EQ(FileNameOf("images/"), "");
    EXPECT_EQ(FileNameOf(""), "");
}

TEST(FileFolder, IsThePartBeforeTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(FolderOf("/home/me/image.bin"), "/home/me");
    EXPECT_EQ(FolderOf("C:\\images\\image.bin"), "C:\\images");
    EXPECT_EQ(FolderOf("/mnt/c\\image.bin"), "/mnt/c");
    EXPECT_EQ(FolderOf("image.bin"), "");
    EXPECT_EQ(FolderOf("/image.bin"), "");
    EXPECT_EQ(FolderOf(""), "");
}

TEST(FileSize, IsInWholeKBOfAtLeastTwoDigits) {
    EXPECT_EQ(FormatFileSize(0), "00KB");
    EXPECT_EQ(FormatFileSize(1023), "00KB");
    EXPECT_EQ(FormatFileSize(1024), "01KB");
    EXPECT_EQ(FormatFileSize(1536), "01KB");
    EXPECT_EQ(FormatFileSize(10'240), "10KB");
    EXPECT_EQ(FormatFileSize(65'536), "64KB");
}

TEST(FileSize, HasACommaBetweenThousands) {
    EXPECT_EQ(FormatFileSize(999 * 1024UL), "999KB");
    EXPECT_EQ(FormatFileSize(1000 * 1024UL), "1,000KB");
    EXPECT_EQ(FormatFileSize(1'048'576), "1,024KB");
    EXPECT_EQ(FormatFileSize(1'572'864), "1,536KB");
    EXPECT_EQ(FormatFileSize(2'147'483'647), "2,097,151KB");
}

class ImageInformation : public testing::Test {
protected:
    TempFolder Folder;
};

TEST_F(ImageInformation, TellsAllFieldsOfAFile) {
    const auto info = GetBinFileInfo(Folder.Write("sample.bin", SampleImage()));
    EXPECT_EQ(info.FileName, "sample.bin");
    EXPECT_EQ(info.FilePath, Folder.Path().string());
    EXPECT_EQ(info.FileSize, "512KB");
    EXPECT_EQ(info.Model, "VX-1600");
    EXPECT_EQ(info.Version, "4.10");
    EXPECT_EQ(info.DateStamp, "07/22/2004 15:05:09");
    EXPECT_EQ(info.Language, "English/French");
    EXPECT_EQ(info.ImageFileName, "VX16410F.BIN");
    EXPECT_EQ(info.TypeSuffix, "0000");
    EXPECT_EQ(info.ChecksumShort, info.Checksum.substr(info.Checksum.size() - 4));
    EXPECT_EQ(info.SignaturePos, 0x100);
    EXPECT_EQ(info.HeaderFormat, 0);
    EXPECT_FALSE(info.IsBootCode);
    EXPECT_FALSE(info.HasBinaryHeader);
}

TEST_F(ImageInformation, OfAFileIsThatOfItsBytes) {
    for (const Bytes& image :
         {SampleType4Image(), SampleAnnouncedImage(), SampleImage(65'536), AnyBytes(70'000), Bytes{}}) {
        const auto fromFile = GetBinFileInfo(Folder.Write("image.bin", image));
        const auto fromBytes = InfoOf(image);
        EXPECT_EQ(fromFile.Checksum, fromBytes.Checksum);
        EXPECT_EQ(fromFile.Model, fromBytes.Model);
        EXPECT_EQ(fromFile.FileSize, fromBytes.FileSize);
        EXPECT_EQ(fromFile.ImageKind, fromBytes.ImageKind);
    }
}

TEST_F(ImageInformation, TakesNothingOverFromTheFileBefore) {
    GetBinFileInfo(Folder.Write("first.bin", SampleType4Image()));
    const auto info = GetBinFileInfo(Folder.Write("second.bin", AnyBytes(1000)));
    EXPECT_EQ(info.ImageKind, 0);
    EXPECT_FALSE(info.HasBinaryHeader);
    EXPECT_EQ(info.Model, "N/A");
}

TEST_F(ImageInformation, OfAFileThatCannotBeReadIsItsNamesOnly) {
    for (const std::string& path : {Folder / "missing.bin", Folder.Path().string()}) {
        const auto info = GetBinFileInfo(path);
        EXPECT_EQ(info.FileName, FileNameOf(path));
        EXPECT_EQ(info.FilePath, FolderOf(path));
        EXPECT_EQ(info.FileSize, "");
        EXPECT_EQ(info.Checksum, "");
        EXPECT_EQ(info.Model, "");
        EXPECT_EQ(info.Language, "");
        EXPECT_EQ(info.ImageFamily, 0);
    }
}

TEST_F(ImageInformation, OfAFileWithAnyNameIsRead) {
    for (const char* name : {"n\xC3\xA4me.bin", "a b.bin", "\xE6\x97\xA5.bin", "no extension"}) {
        EXPECT_EQ(GetBinFileInfo(Folder.Write(name, SampleImage())).Model, "VX-1600") << name;
    }
}

}  // namespace burnwick::test
