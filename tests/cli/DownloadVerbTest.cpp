#include "cli/DownloadVerbTest.h"

#include <filesystem>

#include "platform/serial/SystemPorts.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

}  // namespace

TEST_F(DownloadVerb, ProgramsTheImageAndPrintsTheRunsLines) {
    Connect(UnitOfSize(131'072));
    const std::string image = Image();
    EXPECT_EQ(Run({"download", image, "--port", "COM2"}), 0);
    EXPECT_EQ(Bytes(Unit->Flash().begin(), Unit->Flash().begin() + 65'536), AnyBytes(65'536));
    EXPECT_THAT(OutLines(), Contains("Waiting for response from the unit on COM2..."));
    EXPECT_EQ(OutLines().front(), "Opening " + image + "...");
    EXPECT_EQ(OutLines().back(), "Now rebooting the unit...");
}

TEST_F(DownloadVerb, KeepsTheComputerAwakeMeanwhile) {
    Connect(UnitOfSize(131'072));
    Run({"download", Image(), "--port", "COM2"});
    EXPECT_THAT(SleepReasons, SizeIs(1));
}

TEST_F(DownloadVerb, TellsEveryTenPercentWhenNobodyWatches) {
    Connect(UnitOfSize(131'072));
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2"}), 0);
    EXPECT_THAT(ErrLines(),
                ElementsAre("10 %", "20 %", "30 %", "40 %", "50 %", "60 %", "70 %", "80 %", "90 %", "100 %"));
}

TEST_F(DownloadVerb, PrintsNothingWhenQuiet) {
    Connect(UnitOfSize(131'072));
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2", "--quiet"}), 0);
    EXPECT_EQ(Out(), "");
    EXPECT_EQ(Err(), "");
}

TEST_F(DownloadVerb, PrintsErrorsWhenQuiet) {
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2", "--quiet"}), 1);
    EXPECT_EQ(Out(), "");
    EXPECT_THAT(ErrLines(), SizeIs(1));
}

TEST_F(DownloadVerb, TakesPortAndSpeedFromTheSettings) {
    Connect(UnitOfSize(262'144));
    Settings["COMPort/COM"] = "3";
    Settings["COMPort/BaudRate"] = "1";
    EXPECT_EQ(Run({"download", Image(262'144)}), 0);
    EXPECT_THAT(OutLines(), Contains("Waiting for response from the unit on COM3..."));
    EXPECT_THAT(OutLines(), Contains("Contact established at 115200bps."));
}

TEST_F(DownloadVerb, TakesTheFirstPortThatOpensWhenTheSettingsNameNone) {
    Connect(UnitOfSize(262'144));
    EXPECT_EQ(Run({"download", Image(262'144)}), 0);
    EXPECT_THAT(OutLines(), Contains("Waiting for response from the unit on COM1..."));
    EXPECT_THAT(OutLines(), Contains("Selected baud rate: 57600bps."));
}

TEST_F(DownloadVerb, PrintsOneJsonObject) {
    Connect(UnitOfSize(262'144));
    EXPECT_EQ(Run({"download", Image(262'144), "--port", "COM2", "--baud", "115200", "--json"}), 0);
    const auto json = Json();
    EXPECT_EQ(json["result"], "ok");
    EXPECT_EQ(json["exitCode"], 0);
    EXPECT_EQ(json["port"], "COM2");
    EXPECT_EQ(json["baud"], 115200);
    EXPECT_EQ(json["blocks"], 1024);
    EXPECT_EQ(json["totalBlocks"], 1024);
    EXPECT_GT(json["elapsedSeconds"], 0.0);
    EXPECT_THAT(json["messages"], Contains("Programming was completed successfully."));
}

TEST_F(DownloadVerb, PrintsAJsonObjectForEachFailureToo) {
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2", "--json"}), 1);
    EXPECT_EQ(Json()["result"], "no-response");
    EXPECT_EQ(Json()["exitCode"], 1);
    EXPECT_EQ(Json()["baud"], 0);
    EXPECT_EQ(Run({"download", Folder / "missing.bin", "--port", "COM2", "--json"}), 6);
    EXPECT_EQ(Json()["result"], "file-error");
    EXPECT_EQ(Run({"download", Image(), "--port", "COM17", "--json"}), 5);
    EXPECT_EQ(Json()["result"], "port-error");
}

TEST_F(DownloadVerb, PutsAFileNameThatIsNoTextIntoValidJson) {
    const std::string image = Folder.Write("\xFF\xFE.bin", AnyBytes(65'536));
    EXPECT_EQ(Run({"download", image, "--port", "COM2", "--json"}), 1);
    EXPECT_EQ(Json()["result"], "no-response");
}

TEST_F(DownloadVerb, EndsWith1WhenNobodyAnswers) {
    ExpectRefusal(1, {"download", Image(), "--port", "COM2"},
                  "no response from the unit on COM2 (" + SystemDeviceOf(2) + ")");
}

TEST_F(DownloadVerb, EndsWith2WhenTheTransferFails) {
    auto options = UnitOfSize(131'072);
    options.Faults = {{simulator::Fault::Negative7, 16}};
    Connect(options);
    ExpectRefusal(2, {"download", Image(), "--port", "COM2"}, "failed at block 17 of 256");
    EXPECT_THAT(Err(), HasSubstr("The unit's flash is incomplete"));
}

TEST_F(DownloadVerb, EndsWith3WhenTheImageDoesNotSuitTheUnit) {
    auto options = UnitOfSize(131'072);
    options.Ident = '{';
    Connect(options);
    const std::string image = Folder.Write("image.bin", ImageWith(70'000, 0, {0xC0, 0xDE, 0x01, 0x49}));
    ExpectRefusal(3, {"download", image, "--port", "COM2"}, "not made for this unit; nothing was written.");
    EXPECT_THAT(Err(), Not(HasSubstr("incomplete")));
    EXPECT_EQ(Unit->Flash(), AnyBytes(131'072, 7));
}

TEST_F(DownloadVerb, EndsWith4WhenInterruptedInEachPhase) {
    // waiting for the unit, settling the speed, sending
    for (const auto moment : {200ms, 550ms, 5000ms}) {
        auto options = UnitOfSize(131'072);
        options.Faults = {{simulator::Fault::NoAnswer, 100}};
        Connect(options);
        InterruptAt(Loop.Time() + moment);
        ExpectRefusal(4, {"download", Image(), "--port", "COM2"}, "canceled.");
        EXPECT_EQ(Unit->Journal().FinishMessages, 1) << moment.count();
        EXPECT_THAT(OutLines(), Contains("Programming was canceled."));
    }
}

TEST_F(DownloadVerb, SurvivesASecondInterrupt) {
    auto options = UnitOfSize(131'072);
    options.Faults = {{simulator::Fault::NoAnswer, 100}};
    Connect(options);
    InterruptAt(5s);
    InterruptAt(5s);
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2"}), 4);
    EXPECT_EQ(Unit->Journal().FinishMessages, 1);
}

TEST_F(DownloadVerb, EndsWith5WhenThePortIsNotAvailable) {
    PortTrouble =
        CommError{CommErrorNumber::NotPermitted, "/dev/ttyS1: permission denied: add yourself to dialout"};
    ExpectRefusal(5, {"download", Image(), "--port", "COM2"},
                  "COM2 is not available. /dev/ttyS1: permission denied: add yourself to dialout.");
    EXPECT_THAT(ErrLines(), SizeIs(1));
}

TEST_F(DownloadVerb, EndsWith5ForAPortNumberThatDoesNotExist) {
    for (const std::string port : {"COM0", "COM17", "COM300"}) {
        ExpectRefusal(5, {"download", Image(), "--port", port},
                      port + " is no port number: choose COM1 to COM16");
        EXPECT_EQ(Out(), "");
    }
}

TEST_F(DownloadVerb, EndsWith6ForAMissingFile) {
    ExpectRefusal(6, {"download", Folder / "missing.bin", "--port", "COM2"},
                  "Cannot access to " + Folder / "missing.bin" + " (No such file or directory).");
    EXPECT_THAT(ErrLines(), SizeIs(1));
}

TEST_F(DownloadVerb, EndsWith6ForAFolder) {
    ExpectRefusal(6, {"download", Folder.Path().string(), "--port", "COM2"}, "(it is a folder).");
}

TEST_F(DownloadVerb, EndsWith6ForAFileThatIsNoImage) {
    for (const Bytes& content : {AnyBytes(262'144), AnyBytes(3), Bytes()}) {
        const std::string file = Folder.Write("foreign.bin", content);
        ExpectRefusal(6, {"download", file, "--port", "COM2"}, file + ": Invalid file format.");
        EXPECT_THAT(ErrLines(), SizeIs(1));
        EXPECT_EQ(Out(), "");
    }
}

TEST_F(DownloadVerb, OpensNoPortForAFileThatIsNoImage) {
    Connect(UnitOfSize(262'144));
    EXPECT_EQ(Run({"download", Folder.Write("foreign.bin", AnyBytes(262'144)), "--json"}), 6);
    EXPECT_EQ(Json()["port"], "");
    EXPECT_EQ(Unit->Journal().Probes, 0);
    EXPECT_EQ(LogText(), "");
}

TEST_F(DownloadVerb, EndsWith6ForAnImageThatIsTruncatedOrTooLong) {
    for (const std::size_t size : std::initializer_list<std::size_t>{4, 100, 65'535, 100'000, 2'000'000}) {
        ExpectRefusal(6, {"download", Image(size), "--port", "COM2"}, "Invalid file size.");
        EXPECT_THAT(ErrLines(), SizeIs(1));
    }
}

TEST_F(DownloadVerb, SendsNothingWhenTheFileIsRefused) {
    Connect(UnitOfSize(131'072));
    EXPECT_EQ(Run({"download", Image(100), "--port", "COM2"}), 6);
    EXPECT_EQ(Unit->Journal().Probes, 0);
}

TEST_F(DownloadVerb, RefusesAnEmptyPortRatherThanTakeTheSettings) {
    Connect(UnitOfSize(131'072));
    Settings["COMPort/COM"] = "3";
    EXPECT_EQ(Run({"download", Image(), "--port", ""}), 64);
    EXPECT_THAT(ErrLines(), SizeIs(1));
    EXPECT_EQ(Unit->Journal().Probes, 0);
}

TEST_F(DownloadVerb, PrintsAFileNameWithALineBreakAsOneLine) {
    const std::string image = Folder / "no\nsuch\x1B[31m.bin";
    EXPECT_EQ(Run({"download", image, "--port", "COM2"}), 6);
    EXPECT_THAT(ErrLines(), SizeIs(1));
    EXPECT_THAT(Err(), HasSubstr("no.such.[31m.bin"));
}

TEST_F(DownloadVerb, UsesADevicePathUnderTheNumberOfTheTable) {
    Settings["Ports/COM7"] = Folder / "line";
    Folder.Write("line", {});
    EXPECT_EQ(Run({"download", Image(), "--port", Folder / "line"}), 1);
    EXPECT_THAT(OutLines(), Contains("Waiting for response from the unit on COM7..."));
}

TEST_F(DownloadVerb, UsesAnyOtherDevicePathAsCOM16) {
    EXPECT_EQ(Run({"download", Image(), "--port", Folder / "other"}), 1);
    EXPECT_THAT(OutLines(), Contains("Waiting for response from the unit on COM16..."));
    EXPECT_THAT(Err(), HasSubstr("COM16 (" + Folder / "other" + ")"));
}

}  // namespace burnwick::test
