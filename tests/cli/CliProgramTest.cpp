#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <pty.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <thread>

#include "cli/CliProgram.h"

namespace burnwick::test {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace fs = std::filesystem;

termios LineSettingsOf(const std::string& line) {
    const int port = open(line.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    tcgetattr(port, &settings);
    close(port);
    return settings;
}

}  // namespace

TEST_F(CliProgram, ProgramsAUnitAndReadsItBack) {
    const UnitProgram unit({"--size", "262144"});
    Program download(Cli({"download", Folder.Write("image.bin", SampleImage(262'144)), "--port", unit.Line(),
                          "--baud", "115200"}));
    EXPECT_EQ(download.Wait().Status, 0) << download.Err();
    EXPECT_TRUE(Eventually([&] { return unit.Flash() == SampleImage(262'144); }));
    Program upload(Upload(unit));
    EXPECT_EQ(upload.Wait().Status, 0) << upload.Err();
    EXPECT_EQ(ReadFile(Folder / "file.bin"), SampleImage(262'144));
}

TEST_F(CliProgram, CancelsWhileItWaitsForTheUnit) {
    const UnitProgram unit({"--announce"});  // never answers a probe
    Program run(Download(unit));
    ASSERT_TRUE(run.Prints("Waiting for response"));
    run.Signal(SIGINT);
    EXPECT_EQ(run.Wait().Status, 4);
    EXPECT_THAT(run.Out(), EndsWith(" \nProgramming was canceled.\n"));
}

TEST_F(CliProgram, CancelsADownloadInMidTransferAndFinishesTheLink) {
    const UnitProgram unit({"--size", "262144", "--fault", "no-answer@76"});
    Program run(Download(unit));
    ASSERT_TRUE(run.Prints("30 %"));
    run.Signal(SIGINT);
    EXPECT_EQ(run.Wait().Status, 4);
    ExpectUnitToBeServedNext(unit);
}

TEST_F(CliProgram, CancelsAnUploadInMidTransferAndLeavesNoFile) {
    const UnitProgram unit({"--size", "262144", "--fault", "no-answer@409"});
    Program run(Upload(unit));
    ASSERT_TRUE(run.Prints("40 %"));
    run.Signal(SIGINT);
    EXPECT_EQ(run.Wait().Status, 4);
    EXPECT_FALSE(fs::exists(Folder / "file.bin"));
    ExpectUnitToBeServedNext(unit);
}

TEST_F(CliProgram, TakesEveryRequestToEndAsACancelHoweverOftenItComes) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const UnitProgram unit({"--size", "262144", "--fault", "no-answer@76"});
        Program run(Download(unit));
        ASSERT_TRUE(run.Prints("30 %"));
        for (int i = 0; i < 5; ++i) {
            run.Signal(signal);
        }
        EXPECT_EQ(run.Wait().Status, 4) << signal;
        ExpectUnitToBeServedNext(unit);
    }
}

TEST_F(CliProgram, EndsWith2WhenTheLineIsPulledOut) {
    UnitProgram unit({"--size", "262144", "--fault", "no-answer@255"});
    Program run(Download(unit));
    ASSERT_TRUE(run.Prints("100 %"));
    unit.Kill();
    const auto end = run.Wait();
    EXPECT_EQ(end.Status, 2) << run.Err();
    EXPECT_LT(end.CpuSeconds, 1.0) << "it spins while it waits";
    EXPECT_THAT(run.Err(), HasSubstr("failed at block 256 of 256"));
}

TEST_F(CliProgram, LeavesNoUploadBehindWhenTheLineIsPulledOut) {
    UnitProgram unit({"--size", "262144", "--fault", "cut-short@409"});
    Program run(Upload(unit));
    ASSERT_TRUE(run.Prints("40 %"));
    unit.Kill();
    EXPECT_EQ(run.Wait().Status, 2) << run.Err();
    EXPECT_FALSE(fs::exists(Folder / "file.bin"));
}

TEST_F(CliProgram, GoesOnWhenNobodyReadsWhatItPrints) {
    const UnitProgram unit({"--size", "262144"});
    Program run(Download(unit), [] {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            close(ends[0]);
            close(ends[1]);
        }
    });
    EXPECT_EQ(run.Wait().Status, 0);
    EXPECT_TRUE(Eventually([&] {
        const Bytes flash = unit.Flash();
        return Bytes(flash.begin(), flash.begin() + 65'536) == AnyBytes(65'536);
    }));
}

TEST_F(CliProgram, EndsWith6OnAFullDiskAndLeavesNoFile) {
    const UnitProgram unit({"--size", "262144"});
    Program run(Upload(unit), [] {
        const rlimit limit{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(run.Wait().Status, 6) << run.Err();
    EXPECT_THAT(run.Err(), HasSubstr("Cannot write to " + Folder / "file.bin" + " (File too large)."));
    EXPECT_FALSE(fs::exists(Folder / "file.bin"));
    ExpectUnitToBeServedNext(unit);
}

TEST_F(CliProgram, EndsWith5AndNamesWhoHasThePort) {
    const UnitProgram unit({"--announce"});
    const Program holder(Download(unit));
    ASSERT_TRUE(holder.Prints("Waiting for response"));
    Program second(Download(unit));
    EXPECT_EQ(second.Wait().Status, 5);
    EXPECT_THAT(second.Err(),
                HasSubstr("is in use by burnwick-cli (process " + std::to_string(holder.Process())));
    EXPECT_THAT(second.Out(), Not(HasSubstr("Opening")));
}

TEST_F(CliProgram, EndsWith5ForAPortThatIsNotThere) {
    Program run(Cli({"download", Folder.Write("image.bin", AnyBytes(65'536)), "--port", Folder / "none"}));
    EXPECT_EQ(run.Wait().Status, 5);
    EXPECT_THAT(run.Err(), StartsWith("burnwick-cli: COM16 is not available. " + Folder / "none"));
    EXPECT_FALSE(fs::exists(Folder / "none"));
}

TEST_F(CliProgram, EndsWith5ForAPortThatIsNotPermitted) {
    const UnitProgram unit;
    Folder.Write("image.bin", AnyBytes(65'536));
    const fs::path device = fs::canonical(unit.Line());
    // An owner is kept out though the group may use it; root tries it as another user.
    fs::permissions(device, static_cast<fs::perms>(geteuid() == 0 ? 0660 : 0060));
    // Links in a sticky folder are followed for their owner only.
    Program run(Cli({"download", Folder / "image.bin", "--port", device.string()}), [] {
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(65'534) != 0 || setuid(65'534) != 0)) {
            _exit(126);
        }
    });
    EXPECT_EQ(run.Wait().Status, 5);
    EXPECT_THAT(run.Err(), HasSubstr("ermission denied"));
    EXPECT_THAT(run.Err(), HasSubstr("add yourself to the group"));
}

TEST_F(CliProgram, EndsWith5ForAFileInPlaceOfAPortAndLeavesItAsItWas) {
    const std::string file = Folder.Write("port", AnyBytes(10));
    Program run(Cli({"download", Folder.Write("image.bin", AnyBytes(65'536)), "--port", file}));
    EXPECT_EQ(run.Wait().Status, 5);
    EXPECT_EQ(ReadFile(file), AnyBytes(10));
}

TEST_F(CliProgram, PutsTheLinesSettingsBackHoweverTheRunEnds) {
    // done, canceled, refused by the unit
    for (const auto& [fault, status] :
         {std::pair{"pieces@76", 0}, {"no-answer@76", 4}, {"negative-7@76", 2}}) {
        const UnitProgram unit({"--size", "262144", "--fault", fault});
        const termios before = LineSettingsOf(unit.Line());
        Program run(Download(unit));
        if (status == 4) {
            ASSERT_TRUE(run.Prints("30 %"));
            run.Signal(SIGINT);
        }
        EXPECT_EQ(run.Wait().Status, status) << run.Err();
        const termios after = LineSettingsOf(unit.Line());
        EXPECT_EQ(cfgetospeed(&after), cfgetospeed(&before));
        EXPECT_EQ(after.c_cflag, before.c_cflag);
        EXPECT_EQ(after.c_lflag, before.c_lflag);
    }
}

TEST_F(CliProgram, RewritesOneLineOnATerminalAndClearsItAtTheEnd) {
    const UnitProgram unit({"--size", "262144"});
    int far = -1;
    int near = -1;
    ASSERT_EQ(openpty(&far, &near, nullptr, nullptr, nullptr), 0);
    Program run(Download(unit), [near] {
        setenv("TERM", "xterm", 1);
        dup2(near, STDERR_FILENO);
    });
    close(near);
    std::string shown;
    std::array<char, 4096> room{};
    for (ssize_t got = 0; (got = read(far, room.data(), room.size())) > 0;) {
        shown.append(room.data(), static_cast<std::size_t>(got));
    }
    close(far);
    EXPECT_EQ(run.Wait().Status, 0);
    EXPECT_THAT(shown, HasSubstr("\r\x1b[K"));
    EXPECT_THAT(shown, HasSubstr("Waiting for the unit: 60 seconds left (Ctrl+C cancels)"));
    EXPECT_THAT(shown, HasSubstr("100 %"));
    EXPECT_THAT(shown, EndsWith("\r\x1b[K"));
    EXPECT_THAT(shown, Not(HasSubstr("\n")));
}

TEST_F(CliProgram, TellsTheTraceOnRequest) {
    const UnitProgram unit({"--size", "262144"});
    Program run(Download(unit), [] { setenv("BURNWICK_DEBUG", "1", 1); });
    EXPECT_EQ(run.Wait().Status, 0);
    EXPECT_THAT(run.Err(), HasSubstr("ReceiveMessage: Block/RxMessage = 0 FF AA 5"));
    EXPECT_THAT(run.Out(), Not(HasSubstr("ReceiveMessage")));
}

TEST_F(CliProgram, FindsItsPortsInTheSettingsFile) {
    const UnitProgram unit({"--size", "262144"});
    fs::create_directory(Folder / "home");
    const std::string ini = "[Ports]\r\nCOM9=" + unit.Line() + "\r\n[COMPort]\r\nCOM=9\r\nBaudRate=0\r\n";
    Bytes bytes(ini.size());
    std::transform(ini.begin(), ini.end(), bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    Folder.Write("home/Burnwick.ini", bytes);
    Program run(Cli({"download", Folder.Write("image.bin", AnyBytes(65'536))}));
    EXPECT_EQ(run.Wait().Status, 0) << run.Err();
    EXPECT_THAT(run.Out(), HasSubstr("Waiting for response from the unit on COM9..."));
    Program ports(Cli({"ports"}));
    EXPECT_EQ(ports.Wait().Status, 0);
    EXPECT_THAT(ports.Out(), HasSubstr("COM9   " + unit.Line() + " usable"));
}

}  // namespace burnwick::test
