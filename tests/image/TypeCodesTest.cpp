#include "image/TypeCodes.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

#include "image/MemoryImage.h"

namespace burnwick::test {

namespace {

using namespace modBinFileInfo;

bool Accepts(const Bytes& image) {
    MemoryImage memory(image);
    return IsImage(memory.Source());
}

std::string CodeOf(const Bytes& image) {
    MemoryImage memory(image);
    return TypeCodeOf(memory.Source());
}

}  // namespace

struct KnownCode {
    const char* Digits;
    int Kind;
    bool IsBoot;
};

class KnownTypeCode : public testing::TestWithParam<KnownCode> {};

TEST_P(KnownTypeCode, IsThatOfAnImage) {
    EXPECT_TRUE(IsKnownTypeCode(GetParam().Digits));
    EXPECT_TRUE(Accepts(ImageBuilder(MiB).TypeCode(GetParam().Digits).Build()));
}

TEST_P(KnownTypeCode, IsAcceptedInAFileOfAnyLength) {
    for (const std::size_t size : {4UL, 5UL, 1000UL, 65'535UL, 65'537UL, 0x40000UL, 0x80000UL, 0x80001UL}) {
        EXPECT_TRUE(Accepts(ImageBuilder(size).TypeCode(GetParam().Digits).Build())) << size;
    }
}

TEST_P(KnownTypeCode, TellsItsKind) {
    EXPECT_EQ(KindOfTypeCode(GetParam().Digits), GetParam().Kind);
    EXPECT_EQ(IsBootTypeCode(GetParam().Digits), GetParam().IsBoot);
}

INSTANTIATE_TEST_SUITE_P(Table, KnownTypeCode,
                         testing::Values(KnownCode{"02009E02", 0, false}, KnownCode{"C0DE0000", 0, false},
                                         KnownCode{"BC0DE118", 0, true}, KnownCode{"BC0DE122", 0, true},
                                         KnownCode{"BC0DE128", 0, true}, KnownCode{"BC0DE123", 0, true},
                                         KnownCode{"C0DE0123", 0, false}, KnownCode{"BC0DE131", 5, true},
                                         KnownCode{"C0DE0131", 5, false}, KnownCode{"BC0DE137", 7, true},
                                         KnownCode{"C0DE0137", 7, false}, KnownCode{"BC0DE149", 8, true},
                                         KnownCode{"C0DE0149", 8, false}, KnownCode{"BC0DE157", 9, true},
                                         KnownCode{"C0DE0157", 9, false}),
                         [](const auto& test) { return std::string(test.param.Digits); });

TEST(TypeCode, IsTheFirstFourBytesInTheirOrder) {
    EXPECT_EQ(CodeOf(ImageBuilder(100).TypeCode("0A00FE9B").Build()), "0A00FE9B");
}

TEST(TypeCode, OfAShortFileHasFewerDigits) {
    EXPECT_EQ(CodeOf({}), "");
    EXPECT_EQ(CodeOf(ImageBuilder(1).TypeCode("C0DE0149").Build()), "C0");
    EXPECT_EQ(CodeOf(ImageBuilder(3).TypeCode("C0DE0149").Build()), "C0DE01");
}

TEST(TypeCode, ThatIsUnknownIsThatOfNoImage) {
    for (const char* code : {"C0DE0150", "BC0DE119", "00000000", "FFFFFFFF", "02009E03", ""}) {
        EXPECT_FALSE(IsKnownTypeCode(code)) << code;
        EXPECT_EQ(KindOfTypeCode(code), 0) << code;
        EXPECT_FALSE(Accepts(ImageBuilder(MiB).Fill(1).TypeCode(code).Build())) << code;
    }
}

TEST(TypeCode, CutByTheFilesEndIsThatOfNoImage) {
    EXPECT_FALSE(Accepts(ImageBuilder(3).TypeCode("C0DE0149").Build()));
    EXPECT_FALSE(Accepts({}));
}

TEST(TypeCode, IsNotLookedAtInAFileOf64KiB) {
    for (const char* code : {"00000000", "FFFFFFFF", "12345678", "BC0DE157"}) {
        EXPECT_TRUE(Accepts(ImageBuilder(65'536).TypeCode(code).Build())) << code;
    }
}

TEST(TypeCode, IsLookedAtInFilesNextTo64KiB) {
    EXPECT_FALSE(Accepts(ImageBuilder(65'535).TypeCode("12345678").Build()));
    EXPECT_FALSE(Accepts(ImageBuilder(65'537).TypeCode("12345678").Build()));
}

TEST(TypeCode, OfBootCodeHasItsMarkAnywhere) {
    EXPECT_TRUE(IsBootTypeCode("BC0D0000"));
    EXPECT_TRUE(IsBootTypeCode("0BC0DE12"));
    EXPECT_TRUE(IsBootTypeCode("0000BC0D"));
    EXPECT_FALSE(IsBootTypeCode("C0DE0149"));
    EXPECT_FALSE(IsBootTypeCode("BC0"));
}

TEST(HexDigits, AreTwoUpperCaseOnesAByte) {
    EXPECT_EQ(HexDigits(std::string_view("\x00\x0A\x7F\x80\xFF", 5)), "000A7F80FF");
    EXPECT_EQ(HexDigits(""), "");
}

}  // namespace burnwick::test
