#include "log/LogRotation.h"

#include "platform/files/FileLock.h"

namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(LogRotation, LeavesALogOfExactly16384Bytes) {
    const auto text = Record(1, Longest);
    LogHolds(text);
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), text + " \r\n" + FailureText("/new.bin"));
    EXPECT_EQ(Names(), std::set<std::string>{"Burnwick.log"});
}

TEST_F(LogRotation, ArchivesALogOf16385Bytes) {
    const auto text = Record(1, Longest + 1);
    LogHolds(text);
    Write(Failure("/new.bin"));
    EXPECT_EQ(Content(Archive), text);
    EXPECT_EQ(Log(), text + " \r\n" + FailureText("/new.bin"));
    EXPECT_EQ(Names(), (std::set<std::string>{"Burnwick.log", "Burnwick20040721.log"}));
}

TEST_F(LogRotation, KeepsRecords16To45Of45) {
    LogHolds(Records(1, 45));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), FromItsPath(Records(16, 45)) + " \r\n" + FailureText("/new.bin"));
    EXPECT_EQ(Content(Archive), Records(1, 45));
}

TEST_F(LogRotation, CopiesALogOf10RecordsWhole) {
    const auto text = "a line in front\r\n" + Records(1, 10, 2000);
    LogHolds(text);
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), text + " \r\n" + FailureText("/new.bin"));
}

TEST_F(LogRotation, TakesBaudNotesAlongWithTheRecordInFrontOfThem) {
    const auto note = " \r\n" + NoteText();
    LogHolds(Records(1, 15) + note + Record(16, 500) + note + Records(17, 45) + note);
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), FromItsPath(Record(16, 500)) + note + Records(17, 45) + note + " \r\n"
                         + FailureText("/new.bin"));
}

TEST_F(LogRotation, KeepsNotesInFrontOfTheFirstRecordOnlyWhenThereAreFewerThan30Records) {
    const auto record = [](int n) { return " \r\n" + FromItsPath(Record(n + 1, 600)); };
    std::string of29 = NoteText();
    for (int n = 1; n <= 29; ++n) {
        of29 += record(n);
    }
    LogHolds(of29);
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), of29 + " \r\n" + FailureText("/new.bin"));
    fs::remove(Archive);
    LogHolds(of29 + record(30));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), (of29 + record(30)).substr(NoteText().size() + 3) + " \r\n" + FailureText("/new.bin"));
}

TEST_F(LogRotation, KnowsARecordByABackslashOrByASlashInFront) {
    std::string text = "a/b\r\n /c\r\n";
    std::string kept;
    for (int n = 1; n <= 45; ++n) {
        const auto path = n % 2 == 0 ? "C:\\images\\" + std::to_string(n) : "/images/" + std::to_string(n);
        const auto record = path + "\r\na/b " + std::string(400, 'y') + "\r\n";
        text += record;
        kept += n > 15 ? record : "";
    }
    LogHolds(text);
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), kept + " \r\n" + FailureText("/new.bin"));
}

TEST_F(LogRotation, CopiesLinesAsTheyAreHoweverLongTheyAre) {
    using namespace std::string_literals;
    std::string text = "front\n";
    std::string kept;
    for (int n = 1; n <= 40; ++n) {
        const auto record =
            "/" + std::to_string(n) + "\n\xFF\x01\0\r \n"s + std::string(50'000, 'z') + "\r\n";
        text += record;
        kept += n > 10 ? record : "";
    }
    text += "no end";
    LogHolds(text);
    Write(Failure("/new.bin"));
    EXPECT_TRUE(Log() == kept + "no end \r\n" + FailureText("/new.bin"));
    EXPECT_TRUE(Content(Archive) == text);
}

TEST_F(LogRotation, AddsTheTimeToAnArchivesNameThatIsTaken) {
    Put(Archive, "older");
    LogHolds(Records(1, 45));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Content(Archive), "older");
    EXPECT_EQ(Content(SecondArchive), Records(1, 45));
    EXPECT_EQ(Log(), FromItsPath(Records(16, 45)) + " \r\n" + FailureText("/new.bin"));
    EXPECT_FALSE(fs::exists(Scratch));
}

TEST_F(LogRotation, AppendsToTheUntrimmedLogWhenBothNamesAreTaken) {
    Put(Archive, "older");
    Put(SecondArchive, "old");
    LogHolds(Records(1, 45));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Content(Archive), "older");
    EXPECT_EQ(Content(SecondArchive), "old");
    EXPECT_EQ(Log(), Records(1, 45) + " \r\n" + FailureText("/new.bin"));
    EXPECT_EQ(Content(Scratch), FromItsPath(Records(16, 45))) << "left behind, for the next rotation";
}

TEST_F(LogRotation, OverwritesAScratchFileLeftOverFromBefore) {
    Put(Scratch, std::string(100'000, 's'));
    LogHolds(Records(1, 45));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), FromItsPath(Records(16, 45)) + " \r\n" + FailureText("/new.bin"));
    EXPECT_FALSE(fs::exists(Scratch));
}

TEST_F(LogRotation, BeginsANewLogWhenALeftOverScratchFileIsAllThereIs) {
    Put(Scratch, Records(1, 3));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), FailureText("/new.bin"));
    EXPECT_EQ(Content(Scratch), Records(1, 3));
}

TEST_F(LogRotation, IsNotMadeForABaudNote) {
    LogHolds(Records(1, 45));
    LogBaudRateChange(Folder.Path(), false, Afternoon());
    EXPECT_EQ(Log(), Records(1, 45) + " \r\n" + NoteText());
    EXPECT_EQ(Names(), std::set<std::string>{"Burnwick.log"});
}

TEST_F(LogRotation, IsNotMadeForARecordThatIsNotWritten) {
    LogHolds(Records(1, 45));
    Write(Failure("/new.bin"), "&Disable");
    auto unstarted = Failure("/new.bin");
    unstarted.Started = false;
    Write(unstarted);
    EXPECT_EQ(Log(), Records(1, 45));
}

TEST_F(LogRotation, IsNotMadeWhileAnotherProgramKeepsTheLock) {
    LogHolds(Records(1, 45));
    const auto lock = LockFile(Folder / "Burnwick.log.lock", std::chrono::milliseconds(0));
    ASSERT_NE(lock, nullptr);
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), Records(1, 45) + " \r\n" + FailureText("/new.bin"));
    EXPECT_EQ(Names(), std::set<std::string>{"Burnwick.log"});
}

}  // namespace burnwick::test
