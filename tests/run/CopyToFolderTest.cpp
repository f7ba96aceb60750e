#include "run/CopyToFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iterator>

#include "support/AnyUser.h"
#include "support/LittleRoom.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

namespace {

namespace fs = std::filesystem;

std::tm Moment(int year, int month, int day, int hour, int minute, int second) {
    std::tm moment{};
    moment.tm_year = year - 1900;
    moment.tm_mon = month - 1;
    moment.tm_mday = day;
    moment.tm_hour = hour;
    moment.tm_min = minute;
    moment.tm_sec = second;
    moment.tm_isdst = -1;
    return moment;
}

}  // namespace

TEST(SizeAndTime, PadsMonthAndDayAndNotTheHour) {
    EXPECT_EQ(SizeAndTime(524'288, Moment(2004, 7, 2, 9, 5, 9)), "512KB, 07/02/2004 9:05:09");
}

TEST(SizeAndTime, CountsTheHoursTo23) {
    EXPECT_EQ(SizeAndTime(0, Moment(2009, 11, 25, 0, 0, 0)), "00KB, 11/25/2009 0:00:00");
    EXPECT_EQ(SizeAndTime(0, Moment(2009, 11, 25, 23, 59, 59)), "00KB, 11/25/2009 23:59:59");
}

TEST(SizeAndTime, CutsThePartOfAKBOff) {
    EXPECT_EQ(SizeAndTime(1'573'887, Moment(2009, 1, 1, 1, 1, 1)), "1,536KB, 01/01/2009 1:01:01");
}

class CopyToFolderTest : public ::testing::Test {
protected:
    CopyToFolderTest() { fs::create_directory(Target_.parent_path()); }

    static void Put(const fs::path& path, const Bytes& content) {
        const TempFolder other;
        fs::copy_file(other.Write("content", content), path, fs::copy_options::overwrite_existing);
    }
    std::string Copy(Existing existing = Existing::Replace) const {
        return CopyWhole(Source_, Target_, existing);
    }
    std::ptrdiff_t FilesThere() const {
        return std::distance(fs::directory_iterator(Target_.parent_path()), fs::directory_iterator());
    }
    bool Has(const std::string& name) const {
        std::error_code error;
        const bool has = HasFile(Folder_.Path().string(), name, error);
        EXPECT_FALSE(error) << error.message();
        return has;
    }

    TempFolder Folder_;
    Bytes Content_ = AnyBytes(300'000);
    Bytes Old_ = AnyBytes(1000, /*seed=*/2);
    fs::path Source_ = Folder_.Write("unit.bin", Content_);
    fs::path Target_ = Folder_.Path() / "to" / "unit.bin";
};

TEST_F(CopyToFolderTest, APathIsJoinedWithOneSeparator) {
    EXPECT_EQ(PathIn("/a/b", "c.bin"), "/a/b/c.bin");
    EXPECT_EQ(PathIn("", "c.bin"), "/c.bin");
}

TEST_F(CopyToFolderTest, AFileIsFoundByItsExactName) {
    EXPECT_TRUE(Has("unit.bin"));
    EXPECT_FALSE(Has("UNIT.BIN"));
    EXPECT_FALSE(Has("unit.bi"));
    EXPECT_FALSE(Has(""));
}

TEST_F(CopyToFolderTest, AFolderIsNoFile) {
    EXPECT_FALSE(Has("to"));
}

TEST_F(CopyToFolderTest, ALinkThatLeadsNowhereIsThere) {
    fs::create_symlink("nowhere", Folder_.Path() / "link.bin");
    EXPECT_TRUE(Has("link.bin"));
}

TEST_F(CopyToFolderTest, AFolderThatCannotBeListedIsTold) {
    std::error_code error;
    EXPECT_FALSE(HasFile(Folder_ / "gone", "unit.bin", error));
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(HasFile(Source_.string(), "unit.bin", error));
    EXPECT_EQ(error, std::errc::not_a_directory);
}

TEST_F(CopyToFolderTest, AFileTellsItsSizeAndItsLocalTime) {
    std::tm written = Moment(2004, 7, 22, 9, 5, 9);
    const auto system = std::chrono::system_clock::from_time_t(std::mktime(&written));
    fs::last_write_time(Source_, std::chrono::file_clock::from_sys(system));
    EXPECT_EQ(SizeAndTimeOf(Source_), "292KB, 07/22/2004 9:05:09");
}

TEST_F(CopyToFolderTest, AFileThatTellsNothingIsNotAvailable) {
    EXPECT_EQ(SizeAndTimeOf(Folder_ / "gone.bin"), "N/A");
    EXPECT_EQ(SizeAndTimeOf(Folder_.Path()), "N/A");
}

TEST_F(CopyToFolderTest, ANewCopyIsLikeItsSource) {
    fs::permissions(Source_, fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(Copy(Existing::Keep), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_EQ(fs::status(Target_).permissions(), fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, AnEmptyFileIsCopiedToo) {
    Put(Source_, {});
    Put(Target_, Old_);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(Target_), Bytes{});
}

TEST_F(CopyToFolderTest, AReplacedFileKeepsItsPermissions) {
    Put(Target_, Old_);
    const auto permissions = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(Target_, permissions);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_EQ(fs::status(Target_).permissions(), permissions);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, AFileThatTheUserWasNotAskedAboutIsKept) {
    Put(Target_, Old_);
    EXPECT_EQ(Copy(Existing::Keep), "The folder holds another file that this one would replace.");
    EXPECT_EQ(ReadFile(Target_), Old_);
}

TEST_F(CopyToFolderTest, AFileIsNotCopiedOntoItself) {
    for (const bool viaLink : {false, true}) {
        fs::remove(Target_);
        if (viaLink) {
            fs::create_symlink(Source_, Target_);
        } else {
            fs::create_hard_link(Source_, Target_);
        }
        const LittleRoom none(0);
        EXPECT_EQ(Copy(), "");
        EXPECT_EQ(ReadFile(Source_), Content_);
        EXPECT_EQ(fs::is_symlink(Target_), viaLink);
    }
    EXPECT_EQ(CopyWhole(Source_, Source_, Existing::Replace), "");
    EXPECT_EQ(ReadFile(Source_), Content_);
}

TEST_F(CopyToFolderTest, ALinkStaysOneAndWhatItLeadsToIsReplaced) {
    Put(Folder_.Path() / "led to.bin", Old_);
    fs::create_symlink("../led to.bin", Target_);
    EXPECT_EQ(Copy(), "");
    EXPECT_TRUE(fs::is_symlink(Target_));
    EXPECT_FALSE(fs::is_symlink(Folder_.Path() / "led to.bin"));
    EXPECT_EQ(ReadFile(Folder_.Path() / "led to.bin"), Content_);
}

TEST_F(CopyToFolderTest, ALinkThatLeadsNowhereIsReplaced) {
    fs::create_symlink("nowhere", Target_);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, LinksInACircleAreLeftAlone) {
    fs::create_symlink("unit.bin", Target_);
    EXPECT_TRUE(Copy().starts_with("The copy cannot be written: ")) << Copy();
    EXPECT_TRUE(fs::is_symlink(Target_));
}

TEST_F(CopyToFolderTest, AFolderInTheCopysPlaceIsTold) {
    fs::create_directory(Target_);
    EXPECT_EQ(Copy(), "What has this name in the folder is a folder.");
    EXPECT_TRUE(fs::is_directory(Target_));
}

TEST_F(CopyToFolderTest, AFileThatIsGoneOrNoneIsTold) {
    Put(Target_, Old_);
    fs::remove(Source_);
    EXPECT_EQ(Copy(), "The file cannot be read: No such file or directory.");
    fs::create_directory(Source_);
    EXPECT_EQ(Copy(), "The file cannot be read: it is a folder.");
    EXPECT_EQ(ReadFile(Target_), Old_);
}

TEST_F(CopyToFolderTest, AFolderThatMayNotBeWrittenIsTold) {
    const AnyUser user;
    EXPECT_EQ(Copy(), "The copy cannot be written: Permission denied.");
}

TEST_F(CopyToFolderTest, AFileThatMayNotBeWrittenIsNotReplaced) {
    Put(Target_, Old_);
    fs::permissions(Target_, fs::perms::owner_read | fs::perms::others_read);
    fs::permissions(Target_.parent_path(), fs::perms::all);
    {
        const AnyUser user;
        EXPECT_EQ(Copy(), "The copy cannot be written: Permission denied.");
    }
    EXPECT_EQ(ReadFile(Target_), Old_);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, AFolderWithoutRoomKeepsTheOldFile) {
    Put(Target_, Old_);
    {
        const LittleRoom little(100'000);
        EXPECT_EQ(Copy(), "The copy cannot be written: File too large.");
    }
    EXPECT_EQ(ReadFile(Target_), Old_);
    EXPECT_EQ(FilesThere(), 1) << "the part of the copy is gone";
}

TEST_F(CopyToFolderTest, WhatHasThePassingNameIsLeftAlone) {
    const auto file = Target_.parent_path() / "Burnwick-copy-1.tmp";
    const auto folder = Target_.parent_path() / "Burnwick-copy-2.tmp";
    Put(file, Old_);
    fs::create_directory(folder);
    Put(folder / "unit.bin", Old_);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(file), Old_);
    EXPECT_EQ(ReadFile(folder / "unit.bin"), Old_);
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_EQ(FilesThere(), 3);
}

TEST_F(CopyToFolderTest, ANameTooLongForTheSystemIsTold) {
    const auto longName = Target_.parent_path() / std::string(4000, 'x');
    EXPECT_EQ(CopyWhole(Source_, longName, Existing::Replace),
              "The copy cannot be written: File name too long.");
}

}  // namespace burnwick::test
