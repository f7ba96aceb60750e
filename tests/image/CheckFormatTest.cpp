#include <gmock/gmock.h>

#include <filesystem>

#include "image/modBinFileInfo.h"
#include "support/ImageBuilder.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

namespace {

constexpr const char* Invalid = "Invalid file format.";

}  // namespace

class FormatCheck : public testing::Test {
protected:
    std::string Check(const Bytes& image) const {
        return modBinFileInfo::CheckFileFormat(Folder.Write("image.bin", image));
    }

    TempFolder Folder;
};

TEST_F(FormatCheck, PassesAFileOf64KiBWithAnyFirstBytes) {
    EXPECT_EQ(Check(ImageBuilder(65'536).TypeCode("12345678").Build()), "");
}

TEST_F(FormatCheck, PassesAMebibyteMarkedBC0DE157) {
    EXPECT_EQ(Check(ImageBuilder(MiB).TypeCode("BC0DE157").Build()), "");
}

TEST_F(FormatCheck, RefusesAMebibyteOfNoKnownType) {
    EXPECT_EQ(Check(ImageBuilder(MiB).TypeCode("BC0DE158").Build()), Invalid);
}

TEST_F(FormatCheck, RefusesAFileThatIsTooShortForAType) {
    EXPECT_EQ(Check({}), Invalid);
    EXPECT_EQ(Check(ImageBuilder(3).TypeCode("C0DE0149").Build()), Invalid);
}

TEST_F(FormatCheck, RefusesWhatCannotBeRead) {
    EXPECT_EQ(modBinFileInfo::CheckFileFormat(Folder / "missing.bin"), Invalid);
    EXPECT_EQ(modBinFileInfo::CheckFileFormat(Folder.Path().string()), Invalid);
    EXPECT_EQ(modBinFileInfo::CheckFileFormat(""), Invalid);
}

TEST_F(FormatCheck, RefusesAFileLongerThanAnyImageWithItsTypeCode) {
    const std::string path = Folder.Write("long.bin", ImageBuilder(4).TypeCode("C0DE0149").Build());
    std::filesystem::resize_file(path, 2'147'483'648);
    EXPECT_EQ(modBinFileInfo::CheckFileFormat(path), Invalid);
}

TEST_F(FormatCheck, PassesTheSamples) {
    for (const Bytes& image :
         {SampleImage(), SampleImage(65'536), SampleType4Image(), SampleAnnouncedImage()}) {
        EXPECT_EQ(Check(image), "");
    }
}

}  // namespace burnwick::test
