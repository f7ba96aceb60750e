#include <fcntl.h>
#include <grp.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string_view>

#include "cli/CliProgram.h"

namespace burnwick::test {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using namespace std::string_view_literals;

namespace fs = std::filesystem;

Bytes BytesOf(std::string_view text) {
    Bytes bytes(text.size());
    std::transform(text.begin(), text.end(), bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    return bytes;
}

std::string TextOf(const Bytes& bytes) {
    std::string text(bytes.size(), ' ');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](std::byte b) { return static_cast<char>(b); });
    return text;
}

void BecomeNobody() {
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(65'534) != 0 || setuid(65'534) != 0)) {
        _exit(126);
    }
}

}  // namespace

// The files that the program keeps: settings, log and what it reads back.
class CliFiles : public CliProgram {
protected:
    CliFiles() { fs::create_directory(Home()); }

    fs::path Home() const { return Folder.Path() / "home"; }
    std::string HomeFile(const char* name) const { return TextOf(ReadFile(Home() / name)); }
    std::string WriteSettings(std::string_view text) {
        return Folder.Write("home/Burnwick.ini", BytesOf(text));
    }
    std::vector<std::string> Verified(const UnitProgram& unit, const char* image = "image.bin") {
        return Cli({"download", Folder.Write(image, SampleImage(262'144)), "--port", unit.Line(), "--baud",
                    "115200", "--verify"});
    }
    // Neither now nor later a trace of what was read back.
    void ExpectNothingLeftBehind() {
        for (const auto& entry : fs::directory_iterator(Home())) {
            EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
        }
    }
};

TEST_F(CliFiles, ProgramsVerifiesAndKeepsARecord) {
    const UnitProgram unit({"--size", "262144"});
    Program run(Verified(unit));
    EXPECT_EQ(run.Wait().Status, 0) << run.Err();
    EXPECT_THAT(run.Out(), EndsWith("Verifying was successfully.\n"));
    EXPECT_THAT(HomeFile("Burnwick.log"), HasSubstr(Folder / "image.bin" + "\r\nFlashed: "));
    EXPECT_THAT(HomeFile("Burnwick.log"), EndsWith("Verification: Verifying was successfully.\r\n"));
    EXPECT_EQ(HomeFile("Burnwick.ini"), "[Options]\r\nLogOption=&All\r\n");
    ExpectNothingLeftBehind();
}

TEST_F(CliFiles, FindsTheBlockThatTheUnitDidNotStore) {
    const UnitProgram unit({"--size", "262144", "--fault", "masked@100"});
    Program run(Verified(unit));
    EXPECT_EQ(run.Wait().Status, 7) << run.Err();
    EXPECT_THAT(run.Out(), HasSubstr("\nVerifying error: "));
    EXPECT_THAT(run.Out(), EndsWith(" bytes are different.\n"));
    ExpectNothingLeftBehind();
}

TEST_F(CliFiles, LeavesNothingOfAVerificationThatWasCanceled) {
    const UnitProgram unit({"--size", "262144", "--fault", "cut-short@500"});
    Program programming(
        Cli({"verify", Folder.Write("image.bin", SampleImage(262'144)), "--port", unit.Line()}));
    ASSERT_TRUE(programming.Prints("40 %"));
    programming.Signal(SIGINT);
    EXPECT_EQ(programming.Wait().Status, 4);
    EXPECT_THAT(programming.Out(), EndsWith("Verifying was canceled.\n"));
    ExpectNothingLeftBehind();
}

TEST_F(CliFiles, ReplacesWhatAKilledVerificationLeft) {
    const std::string image = Folder.Write("image.bin", SampleImage(262'144));
    {
        const UnitProgram unit({"--size", "262144", "--fault", "cut-short@500"});
        Program killed(Cli({"verify", image, "--port", unit.Line()}));
        ASSERT_TRUE(killed.Prints("40 %"));
        killed.Signal(SIGKILL);
        killed.Wait();
    }
    ASSERT_TRUE(fs::exists(Home() / "Verify.tmp"));
    const UnitProgram unit({"--size", "262144"});
    Program next(Verified(unit));
    EXPECT_EQ(next.Wait().Status, 0) << next.Err();
    EXPECT_THAT(next.Out(), HasSubstr((Home() / "Verify.tmp").string()));
    ExpectNothingLeftBehind();
}

TEST_F(CliFiles, ServesTwoCopiesThatProgramAndVerifyAtOnce) {
    const UnitProgram left({"--size", "262144"});
    const UnitProgram right({"--size", "262144"});
    Program first(Verified(left, "left.bin"));
    Program second(Verified(right, "right.bin"));
    EXPECT_EQ(first.Wait().Status, 0) << first.Err();
    EXPECT_EQ(second.Wait().Status, 0) << second.Err();
    for (const char* image : {"left.bin", "right.bin"}) {
        EXPECT_THAT(HomeFile("Burnwick.log"), HasSubstr(Folder / image + "\r\nFlashed: "));
    }
    EXPECT_EQ(HomeFile("Burnwick.ini"), "[Options]\r\nLogOption=&All\r\n");
    ExpectNothingLeftBehind();
}

TEST_F(CliFiles, KeepsWhatItFindsInTheSettingsFile) {
    const UnitProgram unit({"--size", "262144"});
    WriteSettings("; the bench by the window\r\n[Bench]\r\nowner = Anna\r\n");
    Program run(Download(unit));
    EXPECT_EQ(run.Wait().Status, 0);
    EXPECT_THAT(HomeFile("Burnwick.ini"),
                testing::StartsWith("; the bench by the window\r\n[Bench]\r\nowner = Anna\r\n"));
    EXPECT_THAT(HomeFile("Burnwick.ini"), HasSubstr("LogOption=&All"));
}

TEST_F(CliFiles, StoresThePortThatItFound) {
    const UnitProgram unit({"--size", "262144"});
    std::string ports = "[Ports]\r\n";
    for (int port = 1; port <= 16; ++port) {
        ports += "COM" + std::to_string(port) + "=" + (port == 9 ? unit.Line() : Folder / "none") + "\r\n";
    }
    WriteSettings(ports);
    Program run(Cli({"download", Folder.Write("image.bin", AnyBytes(65'536))}));
    EXPECT_EQ(run.Wait().Status, 0) << run.Err();
    EXPECT_THAT(HomeFile("Burnwick.ini"), HasSubstr("[COMPort]\r\nCOM=9\r\n"));
}

TEST_F(CliFiles, WorksWithAWrongValueForEveryKey) {
    const UnitProgram unit({"--size", "262144"});
    for (const auto wrong :
         {"banana"sv, "-1"sv, "99999999999999999999"sv, "\xFF\xFE"sv, "\0\0"sv, "="sv, "\"'"sv}) {
        std::string text;
        for (const auto* key : {"[COMPort]\nCOM", "BaudRate", "[Options]\nVerify", "LogOption", "Desktop",
                                "ContextMenu", "[Path]\nLastPath", "[LastOpenFile]\n1",
                                "[ChipSelect]\nUploadChipSize", "[Status]\nProgramming"}) {
            text += key + ("=" + std::string(wrong)) + "\n";
        }
        WriteSettings(text);
        Program run(Download(unit));
        EXPECT_EQ(run.Wait().Status, 0) << text << run.Err();
        EXPECT_THAT(run.Err(), Not(HasSubstr("burnwick-cli:")));
    }
}

TEST_F(CliFiles, WorksWithASettingsFileOfNonsenseAndLosesNothingOfIt) {
    const UnitProgram unit({"--size", "262144"});
    std::string noise = TextOf(AnyBytes(10'000'000));
    for (const std::string& nonsense : {noise, std::string(10'000'000, 'x'), std::string(100'000, '\0'),
                                        std::string("[Options"), std::string(5'000, '[')}) {
        WriteSettings(nonsense);
        Program run(Download(unit));
        EXPECT_EQ(run.Wait().Status, 0) << run.Err();
        EXPECT_TRUE(HomeFile("Burnwick.ini").starts_with(nonsense)) << nonsense.substr(0, 20);
    }
}

TEST_F(CliFiles, WorksWhereNeitherSettingsNorLogCanBeWritten) {
    const UnitProgram unit({"--size", "262144"});
    Folder.Write("home/Burnwick.log", BytesOf("/old.bin\r\n"));
    WriteSettings("[Options]\r\nLogOption=&All\r\n");
    fs::permissions(fs::canonical(unit.Line()), static_cast<fs::perms>(0666));
    Folder.Write("image.bin", AnyBytes(65'536));
    for (const auto* name : {"", "Burnwick.log", "Burnwick.ini"}) {
        fs::permissions(Home() / name, static_cast<fs::perms>(0555));
    }
    Program run(Cli({"download", Folder / "image.bin", "--port", fs::canonical(unit.Line()).string()}),
                BecomeNobody);
    EXPECT_EQ(run.Wait().Status, 0) << run.Err();
    EXPECT_THAT(run.Err(), Not(HasSubstr("burnwick-cli:")));
    EXPECT_EQ(HomeFile("Burnwick.log"), "/old.bin\r\n");
    EXPECT_EQ(HomeFile("Burnwick.ini"), "[Options]\r\nLogOption=&All\r\n");
    fs::permissions(Home(), static_cast<fs::perms>(0755));
}

TEST_F(CliFiles, PrintsNeitherIntoAFileNorOntoTheLineWhenItsStreamsAreClosed) {
    const Bytes image = SampleImage(262'144);
    Folder.Write("image.bin", image);
    for (const auto& closed : {std::vector{0, 1}, {1, 2}, {0, 1, 2}}) {
        const UnitProgram unit({"--size", "262144"});
        const auto closeThem = [&closed] { std::for_each(closed.begin(), closed.end(), close); };
        for (const auto& run : {Verified(unit), Upload(unit)}) {
            fs::remove(Folder / "file.bin");
            EXPECT_EQ(Program(run, closeThem).Wait().Status, 0);
        }
        EXPECT_TRUE(ReadFile(Folder / "file.bin") == image);
    }
}

TEST_F(CliFiles, TellsThatItsAnswerCannotBeWritten) {
    const std::string image = Folder.Write("image.bin", SampleImage());
    Program info(Cli({"info", image}), [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_EQ(info.Wait().Status, 6);
    EXPECT_THAT(info.Err(), HasSubstr("the output cannot be written"));
}

TEST_F(CliFiles, KeepsTheOutcomeOfARunThatCannotBePrinted) {
    const UnitProgram unit({"--size", "262144"});
    Program run(Download(unit), [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_EQ(run.Wait().Status, 0);
    EXPECT_THAT(run.Err(), HasSubstr("the output cannot be written"));
}

TEST_F(CliFiles, ProgramsOnWhenTheLogIsAFolder) {
    const UnitProgram unit({"--size", "262144"});
    fs::create_directory(Home() / "Burnwick.log");
    Program run(Download(unit));
    EXPECT_EQ(run.Wait().Status, 0) << run.Err();
    EXPECT_TRUE(fs::is_empty(Home() / "Burnwick.log"));
}

}  // namespace burnwick::test
