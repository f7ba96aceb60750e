#include "image/ImageType.h"

#include <gmock/gmock.h>

#include <string>

#include "image/MemoryImage.h"

namespace burnwick::test {

namespace {

using namespace modBinFileInfo;

// The type's fields, and where the texts are looked for.
struct Type {
    BinFileInfo Info;
    std::uint64_t Offset = 0;
    std::string Buffer;
};

Type TypeOf(const Bytes& image) {
    MemoryImage memory(image);
    Type type;
    type.Offset = ReadImageType(memory.Source(), type.Info);
    type.Buffer = ReadSearchBuffer(memory.Source(), type.Info, type.Offset).TextAt(0, 2 * KiB128);
    return type;
}

Type TypeOf(const ImageBuilder& builder) {
    return TypeOf(builder.Build());
}

ImageBuilder Parts(std::size_t size) {
    return ImageBuilder(size).TypeCode("C0DE0123").SecondTypeCode("C0DE0001");
}

}  // namespace

TEST(ImageKind, IsToldByTheTypeCode) {
    for (const auto& [code, kind] :
         {std::pair{"BC0DE131", 5}, std::pair{"C0DE0131", 5}, std::pair{"BC0DE137", 7},
          std::pair{"C0DE0137", 7}, std::pair{"BC0DE149", 8}, std::pair{"C0DE0149", 8},
          std::pair{"BC0DE157", 9}, std::pair{"C0DE0157", 9}}) {
        const Type type = TypeOf(ImageBuilder(KiB128).TypeCode(code));
        EXPECT_EQ(type.Info.ImageKind, kind) << code;
        EXPECT_EQ(type.Info.ImageFamily, 2) << code;
        EXPECT_EQ(type.Offset, 0U) << code;
    }
}

TEST(ImageKind, IsZeroForACodeThatIsOnlyAccepted) {
    for (const char* code : {"02009E02", "C0DE0000", "BC0DE118", "BC0DE123", "C0DE0123"}) {
        const Type type = TypeOf(ImageBuilder(KiB128).TypeCode(code).SecondTypeCode("00000000"));
        EXPECT_EQ(type.Info.ImageKind, 0) << code;
        EXPECT_EQ(type.Info.ImageFamily, 0) << code;
    }
}

TEST(ImageKind, IsThreeForE122AndE128Behind) {
    for (const char* code : {"BC0DE122", "BC0DE128", "0102E122", "0102E128"}) {
        EXPECT_EQ(TypeOf(ImageBuilder(KiB128).TypeCode(code)).Info.ImageKind, 3) << code;
    }
    for (const char* code : {"BC0DE123", "BC0DE022", "BC0DE028", "E122BC0D", "00E12200"}) {
        EXPECT_EQ(TypeOf(ImageBuilder(KiB128).TypeCode(code)).Info.ImageKind, 0) << code;
    }
}

TEST(ImageKind, IsThreeInOnePartAndInSeveral) {
    const Type one = TypeOf(ImageBuilder(KiB128).TypeCode("BC0DE122").SecondTypeCode("00000000"));
    EXPECT_EQ(one.Info.ImageKind, 3);
    EXPECT_EQ(one.Info.ImageFamily, 0);
    const Type several = TypeOf(ImageBuilder(KiB128).TypeCode("BC0DE122").SecondTypeCode("BC0D0000"));
    EXPECT_EQ(several.Info.ImageKind, 3);
    EXPECT_EQ(several.Info.ImageFamily, 2);
}

TEST(TypeSuffix, IsTheCodesLastFourDigits) {
    EXPECT_EQ(TypeOf(ImageBuilder(KiB128).TypeCode("BC0DE149")).Info.TypeSuffix, "E149");
}

TEST(TypeSuffix, OfAShortFileIsWhatThereIs) {
    EXPECT_EQ(TypeOf(Bytes{}).Info.TypeSuffix, "");
    EXPECT_EQ(TypeOf(ImageBuilder(1).TypeCode("C0DE0149")).Info.TypeSuffix, "C0");
    EXPECT_EQ(TypeOf(ImageBuilder(3).TypeCode("C0DE0149")).Info.TypeSuffix, "DE01");
}

TEST(BootCode, IsMarkedInTheTypeCode) {
    EXPECT_TRUE(TypeOf(ImageBuilder(KiB128).TypeCode("BC0DE149")).Info.IsBootCode);
    EXPECT_TRUE(TypeOf(ImageBuilder(KiB128).TypeCode("BC0DE118").SecondTypeCode("00000000")).Info.IsBootCode);
    EXPECT_FALSE(TypeOf(ImageBuilder(KiB128).TypeCode("C0DE0149")).Info.IsBootCode);
}

TEST(BootCode, IsNotWhatIsReadOfALongImageOfSeveralParts) {
    const auto builder = [](std::size_t size) {
        return ImageBuilder(size).TypeCode("BC0DE118").SecondTypeCode("BC0D0000");
    };
    EXPECT_TRUE(TypeOf(builder(KiB64)).Info.IsBootCode);
    EXPECT_FALSE(TypeOf(builder(KiB64 + 1)).Info.IsBootCode);
}

TEST(BootCode, OfAKnownKindStaysSoInSeveralParts) {
    const Type type = TypeOf(ImageBuilder(KiB128).TypeCode("BC0DE137").SecondTypeCode("BC0D0000"));
    EXPECT_TRUE(type.Info.IsBootCode);
    EXPECT_EQ(type.Offset, 0U);
}

TEST(SeveralParts, ShowInTheSecondCopyOfTheFirstTwoBytes) {
    EXPECT_EQ(TypeOf(Parts(KiB128)).Info.ImageFamily, 2);
    EXPECT_EQ(TypeOf(Parts(KiB128).Byte(0x3000, 0)).Info.ImageFamily, 0);
    EXPECT_EQ(TypeOf(Parts(KiB128).Byte(0x3001, 0)).Info.ImageFamily, 0);
    EXPECT_EQ(TypeOf(Parts(KiB128).Byte(0x3002, 9).Byte(0x3003, 9)).Info.ImageFamily, 2);
}

TEST(SeveralParts, AreReadFromTheSecondOneOn) {
    const Type type = TypeOf(Parts(KiB128).Text(0x10000, "second part"));
    EXPECT_EQ(type.Offset, 0x10000U);
    EXPECT_EQ(type.Buffer.substr(0, 11), "second part");
}

TEST(SeveralParts, AreReadFromTheBeginningUpTo64KiB) {
    EXPECT_EQ(TypeOf(Parts(KiB64)).Offset, 0U);
    EXPECT_EQ(TypeOf(Parts(0x3002)).Offset, 0U);
    EXPECT_EQ(TypeOf(Parts(KiB64 + 1)).Offset, 0x10000U);
}

TEST(SeveralParts, CutByTheFilesEndReadAsZeros) {
    EXPECT_EQ(TypeOf(Parts(0x3001)).Info.ImageFamily, 0);
    EXPECT_EQ(TypeOf(Parts(0x3002)).Info.ImageFamily, 2);
    EXPECT_EQ(TypeOf(Bytes(100)).Info.ImageFamily, 2);
}

TEST(HeaderFormat, IsThatOfKinds5And8And9) {
    for (const char* code : {"BC0DE131", "C0DE0131", "BC0DE149", "C0DE0149", "BC0DE157", "C0DE0157"}) {
        const Type type = TypeOf(ImageBuilder(KiB128).TypeCode(code).Byte(14, 7));
        EXPECT_EQ(type.Info.HeaderFormat, 7) << code;
        EXPECT_TRUE(type.Info.HasBinaryHeader) << code;
    }
}

TEST(HeaderFormat, OfOtherKindsIsNotLookedAt) {
    for (const char* code : {"BC0DE137", "C0DE0137", "BC0DE122", "C0DE0000"}) {
        const Type type = TypeOf(ImageBuilder(KiB128).TypeCode(code).Byte(14, 1));
        EXPECT_EQ(type.Info.HeaderFormat, 0) << code;
        EXPECT_FALSE(type.Info.HasBinaryHeader) << code;
    }
}

TEST(HeaderFormat, OfZeroIsNoHeader) {
    EXPECT_FALSE(TypeOf(ImageBuilder(KiB128).TypeCode("C0DE0149").Byte(14, 0)).Info.HasBinaryHeader);
}

TEST(HeaderFormat, PastTheFilesEndIsNone) {
    EXPECT_FALSE(TypeOf(ImageBuilder(14).TypeCode("C0DE0149")).Info.HasBinaryHeader);
}

TEST(SearchBufferSize, Is256BytesWithABinaryHeader) {
    const auto builder = [](std::size_t size) { return ImageBuilder(size).TypeCode("C0DE0149").Byte(14, 2); };
    EXPECT_EQ(TypeOf(builder(KiB128)).Buffer.size(), 256U);
    EXPECT_EQ(TypeOf(builder(256)).Buffer.size(), 256U);
    EXPECT_EQ(TypeOf(builder(20)).Buffer.size(), 20U);
}

TEST(SearchBufferSize, IsThatOfAFileBelow32KiB) {
    for (const std::size_t size : {0UL, 1UL, 1000UL, 32'766UL, 32'767UL}) {
        EXPECT_EQ(TypeOf(AnyBytes(size)).Buffer.size(), size);
    }
}

TEST(SearchBufferSize, IsOneShortOf32KiBFromThereOn) {
    for (const std::size_t size : std::initializer_list<std::size_t>{32'768, 32'769, KiB64, KiB128}) {
        EXPECT_EQ(TypeOf(AnyBytes(size)).Buffer.size(), 32'767U) << size;
    }
}

TEST(SearchBufferSize, IsWhatThereIsOfACutSecondPart) {
    EXPECT_EQ(TypeOf(Parts(KiB64 + 1)).Buffer.size(), 1U);
    EXPECT_EQ(TypeOf(Parts(KiB64 + 32'767)).Buffer.size(), 32'767U);
    EXPECT_EQ(TypeOf(Parts(KiB64 + 32'768)).Buffer.size(), 32'767U);
}

}  // namespace burnwick::test
