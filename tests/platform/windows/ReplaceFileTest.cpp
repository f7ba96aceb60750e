#include "platform/files/ReplaceFile.h"

#include <gtest/gtest.h>

#include "Child.h"
#include "ForeignFolder.h"
#include "platform/files/ReadWholeFile.h"

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class ReplaceFileTest : public testing::Test {
protected:
    ForeignFolder Folder_;
    fs::path File_ = Folder_.Path() / u8"\u0444\u0430\u0439\u043B.ini";
};

TEST_F(ReplaceFileTest, MakesAFileThatIsNotThere) {
    using namespace std::string_view_literals;
    EXPECT_TRUE(ReplaceFile(File_, "one\r\n\0two\n"sv));
    EXPECT_EQ(Content(File_), "one\r\n\0two\n"sv);
}

TEST_F(ReplaceFileTest, ReplacesAllOfTheOldContent) {
    Put(File_, "a long old content");
    EXPECT_TRUE(ReplaceFile(File_, "short"));
    EXPECT_EQ(Content(File_), "short");
    EXPECT_TRUE(ReplaceFile(File_, ""));
    EXPECT_EQ(Content(File_), "");
    EXPECT_EQ(Folder_.FilesThere(), 1) << "nothing else is left behind";
}

TEST_F(ReplaceFileTest, WritesALargeFile) {
    const std::string large(5'000'000, 'x');
    EXPECT_TRUE(ReplaceFile(File_, large));
    EXPECT_EQ(Content(File_), large);
}

TEST_F(ReplaceFileTest, KeepsAttributes) {
    Put(File_, "old");
    constexpr DWORD attributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    ASSERT_NE(SetFileAttributesW(File_.c_str(), attributes), 0);
    if ((GetFileAttributesW(File_.c_str()) & attributes) != attributes) {
        GTEST_SKIP() << "this file system keeps no such attributes";
    }
    EXPECT_TRUE(ReplaceFile(File_, "new"));
    EXPECT_EQ(GetFileAttributesW(File_.c_str()) & attributes, attributes);
}

TEST_F(ReplaceFileTest, LeavesAFileThatMayNotBeWritten) {
    Put(File_, "old");
    ASSERT_NE(SetFileAttributesW(File_.c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_FALSE(ReplaceFile(File_, "new"));
    EXPECT_EQ(Content(File_), "old");
    EXPECT_NE(GetFileAttributesW(File_.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    EXPECT_EQ(Folder_.FilesThere(), 1);
    SetFileAttributesW(File_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(ReplaceFileTest, LeavesAFolderInTheFilesPlace) {
    fs::create_directory(File_);
    EXPECT_FALSE(ReplaceFile(File_, "new"));
    EXPECT_TRUE(fs::is_directory(File_));
    EXPECT_EQ(Folder_.FilesThere(), 1);
}

TEST_F(ReplaceFileTest, FailsInAFolderThatIsNotThere) {
    EXPECT_FALSE(ReplaceFile(Folder_.Path() / "none" / "file", "new"));
    EXPECT_FALSE(fs::exists(Folder_.Path() / "none"));
    Put(File_, "old");
    EXPECT_FALSE(ReplaceFile(File_ / "file", "new"));
    EXPECT_EQ(Content(File_), "old");
}

TEST_F(ReplaceFileTest, GivesUpWhereAFolderHasTheNewFilesName) {
    Put(File_, "old");
    fs::create_directory(fs::path(File_) += ".new");
    EXPECT_FALSE(ReplaceFile(File_, "new"));
    EXPECT_EQ(Content(File_), "old");
}

TEST_F(ReplaceFileTest, WaitsForAReaderWhoKeepsOthersOut) {
    Put(File_, "old");
    UniqueHandle reader(CreateFileW(File_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(reader);
    std::thread closer([&reader] {
        std::this_thread::sleep_for(100ms);
        reader.Reset();
    });
    EXPECT_TRUE(ReplaceFile(File_, "new"));
    closer.join();
    EXPECT_EQ(Content(File_), "new");
}

TEST_F(ReplaceFileTest, LeavesTheOldContentToAReaderWhoStays) {
    Put(File_, "old");
    const UniqueHandle reader(CreateFileW(File_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(reader);
    EXPECT_FALSE(ReplaceFile(File_, "new"));
    EXPECT_EQ(Content(File_), "old");
    EXPECT_EQ(Folder_.FilesThere(), 1);
}

TEST_F(ReplaceFileTest, LeavesTheOldOrTheNewContentWhereverItIsKilled) {
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(ReplaceFile(File_, "old")) << "what a killed process left behind is in the way";
        Child writer(Child::Doing(L"replace " + Quoted(File_)));
        ASSERT_EQ(writer.Line(), "replaced");
        std::this_thread::sleep_for(std::chrono::microseconds(round * 137));
        writer.Kill();
        const auto content = Content(File_);
        ASSERT_TRUE(content == std::string(200'000, '2') || content == std::string(300'000, '3'))
            << content.size() << " bytes";
    }
    ASSERT_TRUE(ReplaceFile(File_, "old"));
    EXPECT_EQ(Folder_.FilesThere(), 1);
}

TEST_F(ReplaceFileTest, ShowsNoReaderHalfAFile) {
    Child writer(Child::Doing(L"replace " + Quoted(File_)));
    ASSERT_EQ(writer.Line(), "replaced");
    std::size_t before = 0;
    for (int changes = 0; changes < 20;) {
        const auto content = ReadWholeFile(File_);
        ASSERT_TRUE(content);
        ASSERT_TRUE(*content == std::string(200'000, '2') || *content == std::string(300'000, '3'))
            << content->size() << " bytes";
        changes += content->size() != before ? 1 : 0;
        before = content->size();
    }
}

}  // namespace
}  // namespace burnwick::test
