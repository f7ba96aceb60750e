#include "image/ImageComparison.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "image/MemoryImage.h"

namespace burnwick::test {

namespace {

using namespace modBinFileInfo;
using ::testing::ElementsAre;
using ::testing::Pair;

struct Outcome {
    std::string Error;
    std::int32_t Differences = -1;
};

Outcome Compare(const Bytes& image1, const Bytes& image2) {
    MemoryImage memory1(image1);
    MemoryImage memory2(image2);
    Outcome outcome;
    outcome.Error = CompareSources(memory1.Source(), memory2.Source(), outcome.Differences);
    return outcome;
}

// How many differences are seen when the bytes in these places differ.
std::int32_t Seen(const char* code, std::size_t size, const std::vector<std::size_t>& places) {
    const Bytes image = ImageBuilder(size).TypeCode(code).Build();
    Bytes other = image;
    for (const std::size_t place : places) {
        other.at(place) ^= std::byte{0x80};
    }
    const Outcome outcome = Compare(image, other);
    EXPECT_EQ(outcome.Error, "");
    return outcome.Differences;
}

DifferingRanges Ranges(const Bytes& image1, const Bytes& image2) {
    MemoryImage memory1(image1);
    MemoryImage memory2(image2);
    std::int32_t differences = 0;
    DifferingRanges ranges;
    EXPECT_EQ(CompareSources(memory1.Source(), memory2.Source(), differences, &ranges), "");
    return ranges;
}

// Offset and length of each.
std::vector<std::pair<std::uint64_t, std::uint64_t>> Places(const DifferingRanges& ranges) {
    std::vector<std::pair<std::uint64_t, std::uint64_t>> places;
    for (const DifferingRange& range : ranges.Kept()) {
        places.emplace_back(range.Offset, range.Length);
    }
    return places;
}

}  // namespace

TEST(Comparison, OfAnImageWithItselfFindsNothing) {
    for (const char* code : {"C0DE0149", "BC0DE128", "BC0DE157"}) {
        EXPECT_EQ(Seen(code, MiB, {}), 0) << code;
    }
}

TEST(Comparison, CountsEveryDifferentByte) {
    EXPECT_EQ(Seen("C0DE0149", MiB, {4, 5, 0x8000, 0xFEFF, 0xFF00, 0xFFFF, 0x10000, MiB - 1}), 8);
}

TEST(Comparison, CountsAllBytesWhenAllDiffer) {
    const Bytes ones = ImageBuilder(300'000).Fill(1).TypeCode("C0DE0000").Build();
    const Bytes twos = ImageBuilder(300'000).Fill(2).TypeCode("C0DE0000").Build();
    EXPECT_EQ(Compare(ones, twos).Differences, 300'000 - 4);
}

TEST(Comparison, TellsWhereTheImagesDiffer) {
    const Bytes image = ImageBuilder(MiB).Fill(0x11).TypeCode("C0DE0149").Build();
    Bytes other = image;
    for (const std::size_t place : std::initializer_list<std::size_t>{0x5000, 0x7001, 0x7002, MiB - 1}) {
        other.at(place) = std::byte{0xEE};
    }
    const DifferingRanges ranges = Ranges(image, other);
    EXPECT_THAT(Places(ranges), ElementsAre(Pair(0x5000, 1), Pair(0x7001, 2), Pair(MiB - 1, 1)));
    EXPECT_EQ(ranges.Kept().at(1).Bytes1, "\x11\x11");
    EXPECT_EQ(ranges.Kept().at(1).Bytes2, "\xEE\xEE");
    EXPECT_FALSE(ranges.HasMore());
}

TEST(Comparison, HasOneRangeForBytesThatAreReadInTwoChunks) {
    const Bytes image = ImageBuilder(MiB).TypeCode("C0DE0149").Build();
    Bytes other = image;
    for (const std::size_t place : {0xFFFEUL, 0xFFFFUL, 0x10000UL}) {
        other.at(place) ^= std::byte{1};
    }
    const DifferingRanges ranges = Ranges(image, other);
    EXPECT_THAT(Places(ranges), ElementsAre(Pair(0xFFFE, 3)));
    EXPECT_EQ(ranges.Kept().front().Bytes1.size(), 3U);
}

TEST(Comparison, KeepsAThousandRangesAndTellsThatThereAreMore) {
    const Bytes image = ImageBuilder(MiB).TypeCode("C0DE0149").Build();
    Bytes other = image;
    for (std::size_t place = 4; place < MiB; place += 2) {
        other.at(place) ^= std::byte{1};
    }
    const DifferingRanges ranges = Ranges(image, other);
    EXPECT_EQ(ranges.Kept().size(), 1000U);
    EXPECT_EQ(ranges.Kept().back().Offset, 2002U);
    EXPECT_TRUE(ranges.HasMore());
    EXPECT_EQ(Compare(image, other).Differences, static_cast<std::int32_t>((MiB - 4) / 2));
}

TEST(Comparison, GoesOnUntilItIsToldToEnd) {
    MemoryImage image(AnyBytes(MiB));
    std::int32_t differences = 0;
    int chunks = 0;
    EXPECT_EQ(CompareSources(image.Source(), image.Source(), differences, nullptr,
                             [&chunks] { return ++chunks < 3; }),
              "Error: The comparison was ended");
    EXPECT_EQ(chunks, 3);
}

TEST(Comparison, OfDifferentLengthsIsAnError) {
    const auto outcome = Compare(AnyBytes(1000), AnyBytes(1001));
    EXPECT_EQ(outcome.Error, "Error: File size mismatched");
    EXPECT_EQ(outcome.Differences, 0);
}

TEST(Comparison, OfDifferentTypesIsAnError) {
    const auto outcome = Compare(ImageBuilder(MiB).TypeCode("C0DE0149").Build(),
                                 ImageBuilder(MiB).TypeCode("C0DE0157").Build());
    EXPECT_EQ(outcome.Error, "Error: File type mismatched");
    EXPECT_EQ(outcome.Differences, 0);
}

TEST(Comparison, LooksAtTheLengthsBeforeTheTypes) {
    EXPECT_EQ(
        Compare(ImageBuilder(100).TypeCode("C0DE0149").Build(), ImageBuilder(99).TypeCode("C0DE0157").Build())
            .Error,
        "Error: File size mismatched");
}

TEST(Comparison, TakesAnyTwoFilesOfOneTypeEvenAnUnknownOne) {
    EXPECT_EQ(Seen("12345678", 1000, {10, 999}), 2);
}

TEST(Comparison, OfEmptyFilesFindsNothing) {
    const auto outcome = Compare({}, {});
    EXPECT_EQ(outcome.Error, "");
    EXPECT_EQ(outcome.Differences, 0);
}

TEST(Comparison, OfFilesBelowFourBytesComparesTheirTypes) {
    EXPECT_EQ(Compare(ImageBuilder(3).Fill(1).Build(), ImageBuilder(3).Fill(1).Build()).Error, "");
    EXPECT_EQ(Compare(ImageBuilder(3).Fill(1).Build(), ImageBuilder(3).Fill(2).Build()).Error,
              "Error: File type mismatched");
}

class ComparisonOfBootCode : public testing::TestWithParam<const char*> {};

TEST_P(ComparisonOfBootCode, LeavesOutTheUnitsOwnBytesFromFF00ToFFFF) {
    EXPECT_EQ(Seen(GetParam(), MiB, {0xFF00, 0xFF80, 0xFFFF}), 0);
}

TEST_P(ComparisonOfBootCode, CountsTheBytesNextToTheUnitsOwn) {
    EXPECT_EQ(Seen(GetParam(), MiB, {0xFEFF}), 1);
    EXPECT_EQ(Seen(GetParam(), MiB, {0x10000}), 1);
}

TEST_P(ComparisonOfBootCode, OfAShortFileGoesToItsEnd) {
    for (const std::size_t size : {100UL, 0xFEFFUL, 0xFF00UL}) {
        EXPECT_EQ(Seen(GetParam(), size, {4, size - 1}), 2) << size;
    }
    for (const std::size_t size : {0xFF01UL, 0x10000UL}) {
        EXPECT_EQ(Seen(GetParam(), size, {4, 0xFEFF, size - 1}), 2) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(Types, ComparisonOfBootCode,
                         testing::Values("BC0DE118", "BC0DE122", "BC0DE123", "BC0DE128", "BC0DE131",
                                         "BC0DE157", "BC0DE1FF"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(ComparisonOfBootCode, HasNoRangeAcrossTheUnitsOwnBytes) {
    const Bytes ones = ImageBuilder(0x30000).Fill(1).TypeCode(GetParam()).Build();
    const Bytes twos = ImageBuilder(0x30000).Fill(2).TypeCode(GetParam()).Build();
    const bool endIsLeftOut = std::string_view(GetParam()) == "BC0DE128";
    EXPECT_THAT(Places(Ranges(ones, twos)),
                ElementsAre(Pair(4, 0xFEFC), Pair(0x10000, endIsLeftOut ? 0x10000 : 0x20000)));
}

TEST(ComparisonOfBC0DE1, GoesToTheEnd) {
    EXPECT_EQ(Seen("BC0DE122", MiB, {MiB - 0x10001, MiB - 0x10000, MiB - 1}), 3);
    EXPECT_EQ(Seen("BC0DE122", 0x10001, {0x10000}), 1);
}

TEST(ComparisonOfBC0DE1, IsToldByTheCodesDigitsAnywhere) {
    EXPECT_EQ(Seen("0BC0DE12", MiB, {0xFF00}), 0);
    EXPECT_EQ(Seen("00BC0DE1", MiB, {0xFF00}), 0);
    EXPECT_EQ(Seen("BC0DE022", MiB, {0xFF00}), 1);
}

TEST(ComparisonOfBC0DE128, LeavesOutTheLast64KiB) {
    EXPECT_EQ(Seen("BC0DE128", MiB, {MiB - 0x10000, MiB - 0x8000, MiB - 1}), 0);
    EXPECT_EQ(Seen("BC0DE128", MiB, {MiB - 0x10001}), 1);
}

TEST(ComparisonOfBC0DE128, OfAMebibyteIgnoresBothItsEndAndTheUnitsOwnBytes) {
    EXPECT_EQ(Seen("BC0DE128", MiB, {0xFF00, 0xFFFF, MiB - 0x10000, MiB - 1}), 0);
}

TEST(ComparisonOfBC0DE128, UpTo128KiBLooksAtTheFirstPartOnly) {
    EXPECT_EQ(Seen("BC0DE128", 0x20000, {0xFEFF, 0x10000, 0x1FFFF}), 1);
    EXPECT_EQ(Seen("BC0DE128", 0x20001, {0xFEFF, 0x10000, 0x10001}), 2);
    EXPECT_EQ(Seen("BC0DE128", 0x18000, {0xFEFF, 0x10000, 0x17FFF}), 1);
}

}  // namespace burnwick::test
