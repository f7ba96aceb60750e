#include "engine/ImageInfo.h"

#include <gmock/gmock.h>

#include "support/Hex.h"
#include "support/ImageBuilder.h"
#include "support/SampleImages.h"

namespace burnwick::test {

namespace {

ImageInfo Classify(const Bytes& image) {
    return CheckImageType(image.size(), image);
}

ImageInfo Image(int family, int type, std::uint8_t subModel = 0) {
    ImageInfo info;
    info.ImageFamily = family;
    info.ImageType = type;
    info.ImageSubModel = subModel;
    return info;
}

}  // namespace

TEST(ImageType, OfAtMost64KiBIsFamily1Type1WhateverItsBytes) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, KiB64}) {
        Bytes image(size);
        if (size > 4) {
            Put(image, 0, {0xC0, 0xDE, 0x01, 0x49});
        }
        EXPECT_EQ(Classify(image), Image(1, 1)) << size;
    }
}

TEST(ImageType, MarkedC0DE0149OrBC0DE149IsFamily2Type4) {
    for (const auto& [first, second, text] : {std::tuple{0xC0, 0xDE, "C0DE0149"}, {0xBC, 0x0D, "BC0DE149"}}) {
        Bytes image(KiB64 + 1);
        Put(image, 0,
            {static_cast<unsigned char>(first), static_cast<unsigned char>(second),
             static_cast<unsigned char>(first == 0xC0 ? 0x01 : 0xE1), 0x49});
        Put(image, 12, {7, 31});
        const ImageInfo info = Classify(image);
        EXPECT_EQ(info.ImageFamily, 2);
        EXPECT_EQ(info.ImageType, 4);
        EXPECT_EQ(info.ImageTypeText, text);
        EXPECT_EQ(info.ImageModel, 7);
        EXPECT_EQ(info.ImageSubModel, 31);
        EXPECT_EQ(info.FilesizeHex, "FilesizeHex=00010001");
    }
}

TEST(ImageType, MarkedC0DE0157IsFamily2Type343) {
    const ImageInfo info = Classify(ImageWith(KiB256, 0, {0xC0, 0xDE, 0x01, 0x57}));
    EXPECT_EQ(info.ImageFamily, 2);
    EXPECT_EQ(info.ImageType, 343);
    EXPECT_EQ(info.ImageTypeText, "C0DE0157");
}

TEST(ImageType, MarkedBC0DE157IsFamily2Type343) {
    const ImageInfo info = Classify(ImageWith(KiB256, 0, {0xBC, 0x0D, 0xE1, 0x57}));
    EXPECT_EQ(info.ImageType, 343);
    EXPECT_EQ(info.ImageTypeText, "BC0DE157");
}

TEST(ImageType, With02009E02At64KiBIsFamily1Type1Model1) {
    ImageInfo expected = Image(1, 1);
    expected.ImageModel = 1;
    EXPECT_EQ(Classify(ImageWith(KiB256, 0x10000, {0x02, 0x00, 0x9E, 0x02})), expected);
}

TEST(ImageType, WithC0DE0002At64KiBIsFamily2) {
    EXPECT_EQ(Classify(ImageWith(KiB256, 0x10000, {0xC0, 0xDE, 0x00, 0x02})), Image(2, 0));
}

TEST(ImageType, MarkedBC0DE122IsType3WithItsModelsFromByte73600) {
    Bytes image = ImageWith(KiB256, 0, {0xBC, 0x0D, 0xE1, 0x22});
    Put(image, 73'600, {9, 30});
    const ImageInfo info = Classify(image);
    EXPECT_EQ(info.ImageType, 3);
    EXPECT_EQ(info.ImageTypeText, "BC0DE122");
    EXPECT_EQ(info.ImageModel, 9);
    EXPECT_EQ(info.ImageSubModel, 30);
}

TEST(ImageType, MarkedBC0DE122AloneIsOfNoFamily) {
    EXPECT_EQ(Classify(ImageWith(KiB256, 0, {0xBC, 0x0D, 0xE1, 0x22})).ImageFamily, 0);
}

TEST(ImageType, WithC0DE0001At0x3000IsType2Model2) {
    const ImageInfo info = Classify(ImageWith(KiB256, 0x3000, {0xC0, 0xDE, 0x00, 0x01}));
    EXPECT_EQ(info.ImageType, 2);
    EXPECT_EQ(info.ImageTypeText, "C0DE0001");
    EXPECT_EQ(info.ImageModel, 2);
    EXPECT_EQ(info.ImageFamily, 0);
}

TEST(ImageType, WithBC0DE118At0x3000IsType2Model3) {
    const ImageInfo info = Classify(ImageWith(KiB256, 0x3000, {0xBC, 0x0D, 0xE1, 0x18}));
    EXPECT_EQ(info.ImageType, 2);
    EXPECT_EQ(info.ImageTypeText, "BC0DE118");
    EXPECT_EQ(info.ImageModel, 3);
}

TEST(ImageType, TakesALaterMarkerOverAnEarlierOne) {
    Bytes image = ImageWith(KiB256, 0x10000, {0x02, 0x00, 0x9E, 0x02});
    Put(image, 0x3000, {0xC0, 0xDE, 0x00, 0x01});
    const ImageInfo info = Classify(image);
    EXPECT_EQ(info.ImageFamily, 1);
    EXPECT_EQ(info.ImageType, 2);
    EXPECT_EQ(info.ImageModel, 2);
}

TEST(ImageType, OfMarkedFamilyAndBootCodeIsFamily2Type3) {
    Bytes image = ImageWith(KiB256, 0, {0xBC, 0x0D, 0xE1, 0x22});
    Put(image, 0x10000, {0xC0, 0xDE, 0x00, 0x02});
    EXPECT_EQ(Classify(image).ImageFamily, 2);
    EXPECT_EQ(Classify(image).ImageType, 3);
}

TEST(ImageType, OfAnUnmarkedHalfMegabyteIsFamily0Type0) {
    const ImageInfo info = Classify(Bytes(KiB512));
    EXPECT_EQ(info, ImageInfo{});
    EXPECT_FALSE(NeedsIdentity(info, KiB512));
    EXPECT_FALSE(IsLimitedTo57600(info));
}

TEST(ImageType, ReadsZerosPastAShortFilesEnd) {
    // The marker at 64 KiB would need four bytes; there are two.
    Bytes image(KiB64 + 2);
    Put(image, 0x10000, {0x02, 0x00});
    EXPECT_EQ(Classify(image), ImageInfo{});
}

TEST(FilesizeHex, IsTheLengthInEightUpperCaseDigits) {
    Bytes image(300'000);
    Put(image, 0, {0xC0, 0xDE, 0x01, 0x49});
    EXPECT_EQ(Classify(image).FilesizeHex, "FilesizeHex=000493E0");
}

TEST(LengthBytes, AreTheLengthHighestByteFirst) {
    ImageInfo info;
    info.FilesizeHex = "FilesizeHex=0001234F";
    const auto bytes = LengthBytes(info);
    EXPECT_EQ(ToHex({bytes.begin(), bytes.end()}), "00 01 23 4F");
}

TEST(Identity, IsAskedForFamily1OfExactlyOneMebibyte) {
    EXPECT_TRUE(NeedsIdentity(Image(1, 1), MiB));
    EXPECT_FALSE(NeedsIdentity(Image(1, 1), KiB512));
}

TEST(Identity, IsAskedForFamily2OfTypes3And4Only) {
    EXPECT_TRUE(NeedsIdentity(Image(2, 3), MiB));
    EXPECT_TRUE(NeedsIdentity(Image(2, 4), 300'000));
    EXPECT_FALSE(NeedsIdentity(Image(2, 0), MiB));
    EXPECT_FALSE(NeedsIdentity(Image(2, 2), MiB));
    EXPECT_FALSE(NeedsIdentity(Image(2, 343), MiB));
    EXPECT_FALSE(NeedsIdentity(Image(0, 3), MiB));
}

TEST(Identity, OfFamily1MustBeABrace) {
    EXPECT_TRUE(SuitsUnit(Image(1, 1), MiB, '{'));
    EXPECT_FALSE(SuitsUnit(Image(1, 1), MiB, '"'));
    EXPECT_FALSE(SuitsUnit(Image(1, 1), MiB, 'I'));
    EXPECT_FALSE(SuitsUnit(Image(1, 1), MiB, 0));
}

TEST(Identity, OfType3MustBeAQuoteFromSubModel30On) {
    EXPECT_TRUE(SuitsUnit(Image(2, 3, 30), MiB, '"'));
    EXPECT_FALSE(SuitsUnit(Image(2, 3, 30), MiB, 0));
    EXPECT_FALSE(SuitsUnit(Image(2, 3, 255), MiB, '{'));
}

TEST(Identity, OfType3MustBeNoQuoteBelowSubModel30) {
    EXPECT_FALSE(SuitsUnit(Image(2, 3, 29), MiB, '"'));
    EXPECT_TRUE(SuitsUnit(Image(2, 3, 29), MiB, 0));
    EXPECT_TRUE(SuitsUnit(Image(2, 3, 0), MiB, 'I'));
}

TEST(Identity, OfType4MustBeAnI) {
    EXPECT_TRUE(SuitsUnit(Image(2, 4), 300'000, 'I'));
    EXPECT_FALSE(SuitsUnit(Image(2, 4), 300'000, '{'));
    EXPECT_FALSE(SuitsUnit(Image(2, 4), 300'000, 0));
}

TEST(SpeedLimit, HoldsForFamily1AndForType2) {
    EXPECT_TRUE(IsLimitedTo57600(Image(1, 1)));
    EXPECT_TRUE(IsLimitedTo57600(Image(0, 2)));
    EXPECT_TRUE(IsLimitedTo57600(Image(2, 2)));
    EXPECT_FALSE(IsLimitedTo57600(Image(2, 3)));
    EXPECT_FALSE(IsLimitedTo57600(Image(0, 0)));
}

}  // namespace burnwick::test
