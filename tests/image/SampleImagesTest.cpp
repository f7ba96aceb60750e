#include "support/SampleImages.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "engine/FlashMessages.h"
#include "engine/ImageInfo.h"
#include "image/MemoryImage.h"

// The samples are what they say: whole images that tell all about themselves, to the link as well.
namespace burnwick::test {

namespace {

ImageInfo LinkInfoOf(const Bytes& image) {
    return CheckImageType(image.size(), image);
}

}  // namespace

TEST(SampleImage, TellsAllAboutItself) {
    for (const std::size_t size : {512UL, 16'384UL, 131'072UL, 262'144UL, 524'288UL, 1'048'576UL}) {
        const auto info = InfoOf(SampleImage(size));
        EXPECT_EQ(info.Model, "VX-1600") << size;
        EXPECT_EQ(info.Version, "4.10") << size;
        EXPECT_EQ(info.DateStamp, "07/22/2004 15:05:09") << size;
        EXPECT_EQ(info.ImageFileName, "VX16410F.BIN") << size;
        EXPECT_EQ(info.Language, "English/French") << size;
        EXPECT_EQ(info.TypeSuffix, "0000") << size;
        EXPECT_EQ(info.ImageFamily, 0) << size;
    }
}

TEST(SampleImage, Of64KiBTellsNothing) {
    const auto info = InfoOf(SampleImage(65'536));
    EXPECT_EQ(info.Model, "N/A");
    EXPECT_EQ(info.Version, "N/A");
    EXPECT_EQ(info.DateStamp, "N/A");
    EXPECT_EQ(info.Language, "N/A");
    EXPECT_EQ(info.FileSize, "64KB");
}

TEST(SampleImage, IsOfNoFamilyToTheLink) {
    for (const std::size_t size : {262'144UL, 524'288UL, 1'048'576UL}) {
        EXPECT_EQ(LinkInfoOf(SampleImage(size)), ImageInfo{}) << size;
    }
    EXPECT_EQ(LinkInfoOf(SampleImage(65'536)).ImageFamily, 1);
}

TEST(SampleType4Image, TellsAllAboutItself) {
    const auto info = InfoOf(SampleType4Image());
    EXPECT_EQ(info.ImageKind, 8);
    EXPECT_EQ(info.Model, "VX-3200");
    EXPECT_EQ(info.Version, "2.07");
    EXPECT_EQ(info.DateStamp, "11/05/2009 09:30:00");
    EXPECT_EQ(info.Language, "German");
    EXPECT_EQ(info.FileSize, "293KB");
    EXPECT_NE(info.Checksum, "00000000");
}

TEST(SampleType4Image, IsOfType4ToTheLink) {
    const Bytes image = SampleType4Image();
    const ImageInfo info = LinkInfoOf(image);
    EXPECT_EQ(image.size(), 1172 * BlockSize);
    EXPECT_EQ(info.ImageFamily, 2);
    EXPECT_EQ(info.ImageType, 4);
    EXPECT_EQ(info.ImageModel, 2);
    EXPECT_EQ(info.ImageSubModel, 7);
    const auto length = LengthBytes(info);
    EXPECT_TRUE(std::equal(length.begin(), length.end(), image.begin() + 4));
}

TEST(SampleAnnouncedImage, TellsAllAboutItself) {
    const auto info = InfoOf(SampleAnnouncedImage());
    EXPECT_EQ(info.ImageKind, 9);
    EXPECT_EQ(info.Model, "VX-5700");
    EXPECT_EQ(info.Version, "1.15");
    EXPECT_EQ(info.DateStamp, "03/14/2012 16:20:30");
    EXPECT_EQ(info.Language, "Spanish");
    EXPECT_NE(info.Checksum, "00000000");
}

TEST(SampleAnnouncedImage, IsAnnouncedByTheLink) {
    const Bytes image = SampleAnnouncedImage();
    const ImageInfo info = LinkInfoOf(image);
    EXPECT_EQ(info.ImageType, AnnouncedImageType);
    const auto length = LengthBytes(info);
    EXPECT_TRUE(std::equal(length.begin(), length.end(), image.begin() + 4));
}

}  // namespace burnwick::test
