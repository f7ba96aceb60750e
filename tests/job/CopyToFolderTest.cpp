#include "job/CopyToFolderTest.h"

#include <chrono>

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

TEST_F(CopyToFolderTest, AnEmptyFileIsCopiedToo) {
    Put(Source_, {});
    Put(Target_, Old_);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(Target_), Bytes{});
}

TEST_F(CopyToFolderTest, AFileThatTheUserWasNotAskedAboutIsKept) {
    Put(Target_, Old_);
    EXPECT_EQ(Copy(Existing::Keep), "The folder holds another file that this one would replace.");
    EXPECT_EQ(ReadFile(Target_), Old_);
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

}  // namespace burnwick::test
