#include "log/ActivityLog.h"

#include <clocale>

#include "log/LogFolder.h"

namespace burnwick::test {

namespace fs = std::filesystem;

class ActivityLog : public LogFolder {
protected:
    static ActivityRecord Success() {
        ActivityRecord record;
        record.Started = true;
        record.Succeeded = true;
        record.ImageFileName = "C:\\images\\unit.bin";
        record.Status = "Flashed successfully";
        record.Timing = "Elapsed time: 00:01:09";
        record.Checksum = "1A2B";
        record.Version = "2.50";
        record.DateStamp = "07/01/2004";
        record.Language = "English";
        record.Size = "1,024KB";
        record.Result = "Verified: identical";
        return record;
    }

    // A record whose time alone matters.
    std::string LogAt(int hour, int minute = 0, int second = 0) const {
        fs::remove(Live);
        std::tm now = Afternoon();
        now.tm_hour = hour;
        now.tm_min = minute;
        now.tm_sec = second;
        WriteActivityLog(Folder.Path(), "&All", Failure("/a"), now);
        return Log();
    }
};

constexpr const char* FullText =
    "C:\\images\\unit.bin\r\n"
    "Flashed: 07/22/2004 3:05:09 PM\r\n"
    "Elapsed time: 00:01:09\r\n"
    "Status: Flashed successfully\r\n"
    "File Information: \r\n"
    "Checksum: 1A2B\r\n"
    "Version: 2.50\r\n"
    "Date Stamp: 07/01/2004\r\n"
    "Language: English\r\n"
    "Size: 1,024KB\r\n";

TEST_F(ActivityLog, HasAFullRecordOfASuccessUnderAll) {
    Write(Success());
    EXPECT_EQ(Log(), FullText);
}

TEST_F(ActivityLog, HasTheVerificationOfARunThatReadBack) {
    auto record = Success();
    record.Verifying = true;
    Write(record);
    EXPECT_EQ(Log(), FullText + std::string("Verification: Verified: identical\r\n"));
}

TEST_F(ActivityLog, PartsRecordsByALineWithOneBlank) {
    Write(Success());
    Write(Failure("/b.bin"));
    EXPECT_EQ(Log(), FullText + std::string(" \r\n") + FailureText("/b.bin"));
}

TEST_F(ActivityLog, HasTheShortFormUnderSummaryAndAnyOtherOption) {
    for (const auto* option : {"&Summary", "&all", "All", "nonsense", "&Disabled"}) {
        fs::remove(Live);
        Write(Success(), option);
        EXPECT_EQ(Log(),
                  "C:\\images\\unit.bin\r\nFlashed: 07/22/2004 3:05:09 PM\r\nElapsed time: 00:01:09\r\n"
                  "Status: Flashed successfully\r\n")
            << option;
    }
}

TEST_F(ActivityLog, TellsAnUpload) {
    auto record = Failure("/up.bin");
    record.IsUpload = true;
    Write(record);
    EXPECT_EQ(Log(), "/up.bin\r\nUploaded: 07/22/2004 3:05:09 PM\r\nStatus: No response\r\n");
}

TEST_F(ActivityLog, IsNotWrittenWithAnEmptyLogOptionNorUnderDisable) {
    Write(Success(), "");
    Write(Success(), "&Disable");
    EXPECT_TRUE(Names().empty());
    Put(Live, "old\r\n");
    Write(Success(), "");
    Write(Success(), "&Disable");
    EXPECT_EQ(Log(), "old\r\n");
}

TEST_F(ActivityLog, IsLeftUntouchedByARunThatNeverStarted) {
    auto record = Success();
    record.Started = false;
    Write(record);
    EXPECT_TRUE(Names().empty());
}

TEST_F(ActivityLog, HasNoLeadingBlankLineInAnEmptyOrNewFile) {
    Write(Failure("/a.bin"));
    EXPECT_EQ(Log(), FailureText("/a.bin"));
    Put(Live, "");
    Write(Failure("/a.bin"));
    EXPECT_EQ(Log(), FailureText("/a.bin"));
    Put(Live, "");
    LogBaudRateChange(Folder.Path(), false, Afternoon());
    EXPECT_EQ(Log(), NoteText());
}

TEST_F(ActivityLog, HasNeitherTimingNorFileInformationOfAFailedRunEvenUnderAll) {
    auto record = Success();
    record.Status = "Not flashed successfully";
    record.Succeeded = false;
    record.Verifying = true;
    Write(record, "&All");
    EXPECT_EQ(
        Log(),
        "C:\\images\\unit.bin\r\nFlashed: 07/22/2004 3:05:09 PM\r\nStatus: Not flashed successfully\r\n");
}

TEST_F(ActivityLog, HasTheSizeAsItIsGiven) {
    for (const auto* size : {"00KB", "1,536KB"}) {
        fs::remove(Live);
        auto record = Success();
        record.Size = size;
        Write(record);
        EXPECT_NE(Log().find("\r\nSize: " + std::string(size) + "\r\n"), std::string::npos) << Log();
    }
}

TEST_F(ActivityLog, LeavesOutASizeThatIsNotKnown) {
    auto record = Success();
    record.Size = "";
    record.Verifying = true;
    Write(record);
    EXPECT_NE(Log().find("Language: English\r\nVerification: "), std::string::npos) << Log();
}

TEST_F(ActivityLog, TellsTheTimeOnATwelveHourClock) {
    for (const auto& [hour, text] : {std::pair{0, "12:07:05 AM"},
                                     {1, "1:07:05 AM"},
                                     {10, "10:07:05 AM"},
                                     {11, "11:07:05 AM"},
                                     {12, "12:07:05 PM"},
                                     {13, "1:07:05 PM"},
                                     {23, "11:07:05 PM"}}) {
        const auto log = LogAt(hour, 7, 5);
        EXPECT_NE(log.find("Flashed: 07/22/2004 " + std::string(text) + "\r\n"), std::string::npos) << log;
    }
}

TEST_F(ActivityLog, TellsTheTimeAlikeInEveryLocale) {
    struct OddNumbers : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    const auto before = std::locale::global(std::locale(std::locale(), new OddNumbers));
    for (const auto* name : {"de_DE.UTF-8", "ja_JP.UTF-8", "ar_EG.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        EXPECT_NE(LogAt(15, 5, 9).find("Flashed: 07/22/2004 3:05:09 PM\r\n"), std::string::npos) << name;
    }
    std::setlocale(LC_ALL, "C");
    std::locale::global(before);
}

TEST_F(ActivityLog, WritesEachBreakOrOtherControlCharacterInATextAsABlank) {
    auto record = Success();
    record.ImageFileName = "/images/a\r\nb\nc\rd\te\x01\x7F.bin";
    record.Status = "done\nsuccessfully";
    record.Version = std::string(
        "1\0"
        "2\x1B",
        4);
    record.DateStamp = "07\xC2\x9B/01\xC2\x85/2004";
    record.Language = "\xE6\x97\xA5\xE6\x9C\xAC";
    Write(record);
    EXPECT_EQ(Log(),
              "/images/a  b c d e  .bin\r\nFlashed: 07/22/2004 3:05:09 PM\r\nElapsed time: 00:01:09\r\n"
              "Status: done successfully\r\nFile Information: \r\nChecksum: 1A2B\r\nVersion: 1 2 \r\n"
              "Date Stamp: 07 /01 /2004\r\nLanguage: \xE6\x97\xA5\xE6\x9C\xAC\r\nSize: 1,024KB\r\n");
}

TEST_F(ActivityLog, NotesANewBaudRate) {
    Put(Live, "x\r\n");
    LogBaudRateChange(Folder.Path(), true, Afternoon());
    EXPECT_EQ(Log(),
              "x\r\n \r\nBaud rate changed:\r\nDate: 07/22/2004 3:05:09 PM\r\n"
              "Changed: 115200bps to 57600bps.\r\n");
    LogBaudRateChange(Folder.Path(), false, Afternoon());
    EXPECT_TRUE(Log().ends_with("57600bps.\r\n \r\n" + NoteText())) << Log();
}

TEST_F(ActivityLog, IsNotBegunByANoteOfABaudRate) {
    LogBaudRateChange(Folder.Path(), true, Afternoon());
    EXPECT_TRUE(Names().empty());
}

}  // namespace burnwick::test
