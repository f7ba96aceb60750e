#include "image/ImageSource.h"

#include <gmock/gmock.h>

#include <sstream>
#include <streambuf>
#include <string>

#include "image/ImageComparison.h"
#include "image/ImageReader.h"

namespace burnwick::test {

namespace {

using namespace modBinFileInfo;

// A medium that can be read up to a bad place.
class BadMedium : public std::stringbuf {
public:
    BadMedium(const std::string& content, std::streamoff badPlace)
        : std::stringbuf(content, std::ios::in), BadPlace_(badPlace) {}

protected:
    std::streamsize xsgetn(char* into, std::streamsize count) override {
        if (seekoff(0, std::ios::cur, std::ios::in) + count > BadPlace_) {
            throw std::ios_base::failure("bad place");
        }
        return std::stringbuf::xsgetn(into, count);
    }

private:
    std::streamoff BadPlace_;
};

}  // namespace

TEST(ImageSource, GivesTheBytesBehindAnOffset) {
    std::istringstream stream("0123456789");
    ImageSource source(stream, 10);
    EXPECT_EQ(source.ReadAt(3, 4), "3456");
    EXPECT_EQ(source.ReadAt(0, 2), "01");
    EXPECT_FALSE(source.HasFailed());
}

TEST(ImageSource, GivesTheBytesOfAnImageThatWasReadBefore) {
    const std::string content = "0123456789";
    ImageSource source(std::as_bytes(std::span(content)));
    EXPECT_EQ(source.Length(), 10U);
    EXPECT_EQ(source.ReadAt(3, 4), "3456");
    EXPECT_EQ(source.ReadAt(8, 4), "89");
    EXPECT_EQ(source.ReadAt(10, 1), "");
    EXPECT_FALSE(source.HasFailed());
}

TEST(ImageSource, GivesFewerBytesAtTheEnd) {
    std::istringstream stream("0123456789");
    ImageSource source(stream, 10);
    EXPECT_EQ(source.ReadAt(8, 4), "89");
    EXPECT_EQ(source.ReadAt(10, 4), "");
    EXPECT_EQ(source.ReadAt(1'000'000'000'000, 4), "");
    EXPECT_EQ(source.ReadAt(0, 1), "0");
    EXPECT_FALSE(source.HasFailed());
}

TEST(ImageSource, GivesNoMoreThanAChunk) {
    std::istringstream stream(std::string(200'000, 'x'));
    ImageSource source(stream, 200'000);
    EXPECT_EQ(source.ReadAt(1, 150'000).size(), ImageSource::ChunkSize);
}

TEST(ImageSource, HasFailedWhenItIsShorterThanItShouldBe) {
    std::istringstream stream("0123456789");
    ImageSource source(stream, 20);
    EXPECT_EQ(source.ReadAt(0, 10), "0123456789");
    EXPECT_FALSE(source.HasFailed());
    EXPECT_EQ(source.ReadAt(8, 4), "89");
    EXPECT_TRUE(source.HasFailed());
}

TEST(ImageSource, HasFailedWhenItsMediumHas) {
    BadMedium medium(std::string(200'000, 'x'), 100'000);
    std::istream stream(&medium);
    ImageSource source(stream, 200'000);
    EXPECT_EQ(source.ReadAt(0, 1000).size(), 1000U);
    EXPECT_FALSE(source.HasFailed());
    EXPECT_EQ(source.ReadAt(99'999, 1000), "");
    EXPECT_TRUE(source.HasFailed());
}

TEST(ImageSource, StaysFailedWhenALaterReadSucceeds) {
    BadMedium medium(std::string(1000, 'x'), 100);
    std::istream stream(&medium);
    ImageSource source(stream, 1000);
    EXPECT_EQ(source.ReadAt(500, 10), "");
    EXPECT_EQ(source.ReadAt(0, 10).size(), 10U);
    EXPECT_TRUE(source.HasFailed());
}

TEST(BadMedium, ShowsInTheSourceOfAnImageThatIsRead) {
    BadMedium medium(std::string(200'000, 'x'), 100'000);
    std::istream stream(&medium);
    ImageSource source(stream, 200'000);
    ReadImage(source);
    EXPECT_TRUE(source.HasFailed());
}

TEST(BadMedium, ShowsInTheSourceOfAnImageThatIsCompared) {
    const std::string content(200'000, 'x');
    BadMedium medium(content, 100'000);
    std::istream bad(&medium);
    ImageSource badSource(bad, 200'000);
    std::istringstream good(content);
    ImageSource goodSource(good, 200'000);
    std::int32_t differences = 0;
    CompareSources(goodSource, badSource, differences);
    EXPECT_TRUE(badSource.HasFailed());
    EXPECT_FALSE(goodSource.HasFailed());
}

TEST(BadMedium, MakesAnImageAFileThatIsNotSupported) {
    std::string content(65'536, 'x');
    BadMedium medium(content, 60'000);
    std::istream stream(&medium);
    ImageSource source(stream, content.size());
    const auto read = ReadOpenFile("unit.bin", source);
    const auto* const refusal = std::get_if<ImageRefusal>(&read);
    ASSERT_NE(refusal, nullptr);
    EXPECT_EQ(refusal->Status, "File is not supported.");
    EXPECT_EQ(refusal->Trouble, "it cannot be read to its end");
}

}  // namespace burnwick::test
