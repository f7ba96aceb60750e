#include <filesystem>
#include <stdexcept>

#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

}  // namespace

class Execute : public LinkTest {
protected:
    void SetUp() override { OpensTheLink = false; }

    void RunsWell() {
        OpensTheLink = true;
        AgreesOn(ProgramMode, Speed57600);
        Unit.AcknowledgesBlocks(0, 256);
        Events = {};
        RunDownload(AnyBytes(65'536));
        EXPECT_THAT(Events.Messages, Contains("Programming was completed successfully."));
    }
};

using Properties = Execute;

TEST_F(Properties, HaveTheirDefaults) {
    EXPECT_EQ(Flash.CommPort(), 1);
    EXPECT_EQ(Flash.FileName(), "");
    EXPECT_EQ(Flash.UploadBlock(), 0);
    EXPECT_EQ(Flash.BaudRate(), "57600");
    EXPECT_EQ(Flash.Version(), "1.19");
    EXPECT_FALSE(Flash.DebugEnabled());
}

TEST_F(Properties, KeepTheVersionWhateverIsAssigned) {
    Flash.SetVersion("2.00");
    EXPECT_EQ(Flash.Version(), "1.19");
}

TEST_F(Properties, TellWhenTheyChangeExceptForDebugEnabled) {
    std::vector<std::string> changed;
    Flash.PropertyChanged = [&](const std::string& property) { changed.push_back(property); };
    Flash.SetCommPort(3);
    Flash.SetFileName("a.bin");
    Flash.SetUploadBlock(256);
    Flash.SetBaudRate("9600");
    Flash.SetDebugEnabled(true);
    Flash.SetVersion("2.00");
    EXPECT_THAT(changed, ElementsAre("CommPort", "FileName", "UploadBlock", "BaudRate"));
}

TEST_F(Properties, AreWrittenWhereTheyDifferFromTheirDefaults) {
    SerialFlash::PropertyBag bag;
    Flash.WriteProperties(bag);
    EXPECT_THAT(bag, IsEmpty());
    Flash.SetCommPort(3);
    Flash.SetBaudRate("115200");
    Flash.SetDebugEnabled(true);
    Flash.SetFileName("not kept");
    Flash.WriteProperties(bag);
    EXPECT_THAT(bag, ElementsAre(std::pair("BaudRate", "115200"), std::pair("CommPort", "3"),
                                 std::pair("DebugEnabled", "True")));
}

TEST_F(Properties, AreReadWithTheirDefaultsForWhatIsMissing) {
    Flash.ReadProperties({{"CommPort", "7"}, {"Version", "1.20"}, {"DebugEnabled", "True"}});
    EXPECT_EQ(Flash.CommPort(), 7);
    EXPECT_EQ(Flash.BaudRate(), "57600");
    EXPECT_TRUE(Flash.DebugEnabled());
    EXPECT_EQ(Flash.Version(), "1.20");
    Flash.ReadProperties({});
    EXPECT_EQ(Flash.Version(), "1.19");
    EXPECT_EQ(Flash.CommPort(), 1);
    EXPECT_FALSE(Flash.DebugEnabled());
}

TEST_F(Execute, EndsBeforeThePortIsTouchedWhenTheFileIsNoImage) {
    RunDownload(AnyBytes(1000));
    EXPECT_EQ(Unit.Opens(), 0);
    EXPECT_EQ(Flash.LastRun().PortError, std::nullopt);
}

TEST_F(Execute, OpensThePortOnceAsATestAndOnceForTheRun) {
    RunsWell();
    EXPECT_EQ(Unit.Opens(), 2);
}

TEST_F(Execute, SetsBinaryInput) {
    RunsWell();
    EXPECT_EQ(Port.InputMode(), InputMode::Binary);
}

TEST_F(Execute, RaisesWhyThePortCannotBeOpenedAndStops) {
    Unit.RefuseToOpen({CommErrorNumber::Busy, "/dev/ttyUSB0 is in use by another program"});
    RunDownload(AnyBytes(65'536));
    EXPECT_THAT(Events.All, ElementsAre("/dev/ttyUSB0 is in use by another program"));
    ASSERT_TRUE(Flash.LastRun().PortError);
    EXPECT_EQ(Flash.LastRun().PortError->Number, CommErrorNumber::Busy);
}

TEST_F(Execute, RefusesAPortNumberThatIsNone) {
    for (const int port : {0, 17, 255}) {
        Flash.SetCommPort(static_cast<std::uint8_t>(port));
        RunDownload(AnyBytes(65'536));
        ASSERT_TRUE(Flash.LastRun().PortError);
        EXPECT_EQ(Flash.LastRun().PortError->Number, CommErrorNumber::InvalidPortNumber);
    }
}

TEST_F(Execute, LeavesNoUploadBehindWhenThePortCannotBeOpened) {
    Unit.RefuseToOpen({CommErrorNumber::Busy, "in use"});
    RunUpload(10);
    EXPECT_FALSE(std::filesystem::exists(UploadPath()));
}

TEST_F(Execute, ForgetsThePortErrorOfAnEarlierRun) {
    Flash.SetCommPort(17);
    RunDownload(AnyBytes(65'536));
    Flash.SetCommPort(1);
    RunsWell();
    EXPECT_EQ(Flash.LastRun().PortError, std::nullopt);
}

TEST_F(Execute, StartsAnewAfterAFailedRun) {
    OpensTheLink = true;
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 10);
    Unit.Hears("FF AA 03 0A 00").Says("FF AA 07 00");
    RunDownload(AnyBytes(65'536));
    ASSERT_EQ(Events.Messages.back(), "Transmitting error.");
    RunsWell();
    EXPECT_EQ(Unit.Speeds().back(), 57600U);
}

TEST_F(Execute, StartsAnewAfterASuccess) {
    RunsWell();
    RunsWell();
}

TEST_F(Execute, BrokenOffByAHandlerTellsTheUnitClosesThePortAndStartsAnew) {
    OpensTheLink = true;
    AgreesOn(ProgramMode, Speed57600);
    Flash.Progress = [](int, int) { throw std::runtime_error("out of luck"); };
    EXPECT_THROW(RunDownload(AnyBytes(65'536)), std::runtime_error);
    EXPECT_FALSE(Port.PortOpen());
    EXPECT_EQ(SentFrame(Unit.Sent().size() - 1), Finish);
    Flash.Progress = nullptr;
    RunsWell();
}

TEST_F(Execute, BrokenOffByAHandlerLeavesNoUpload) {
    Flash.Message = [](const RunLine&) { throw std::runtime_error("out of luck"); };
    EXPECT_THROW(RunUpload(256), std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(UploadPath()));
}

TEST_F(Execute, WorksWithoutAnyoneListening) {
    Flash.Message = nullptr;
    Flash.Progress = nullptr;
    Flash.Timing = nullptr;
    OpensTheLink = true;
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    RunDownload(AnyBytes(65'536));
}

using DebugMode = Execute;

TEST_F(DebugMode, TracesEachAnswer) {
    Flash.SetDebugEnabled(true);
    RunsWell();
    EXPECT_THAT(Events.Trace, Contains("ReceiveMessage: SecTimeout = 0"));
    EXPECT_THAT(Events.Trace, Contains("ReceiveMessage: Block/RxMessage = 1 FF AA 6 0"));
    EXPECT_THAT(Events.Trace, Contains("ReceiveMessage: RxFlashRequest = 0"));
    EXPECT_THAT(Events.Trace, Contains("ReceiveMessage: Block/Address = 100 100"));
}

TEST_F(DebugMode, TracesTheFlashRequest) {
    Flash.SetDebugEnabled(true);
    OpensTheLink = true;
    RunDownload(ImageWith(66'000, 0, {0xC0, 0xDE, 0x01, 0x57}));
    EXPECT_THAT(Events.Trace, Contains("SendMessage: VDR_FLASH_REQUEST").Times(120));
}

TEST_F(DebugMode, KeepsItsLinesOutOfTheMessages) {
    Flash.SetDebugEnabled(true);
    RunsWell();
    for (const auto& text : Events.Messages) {
        EXPECT_THAT(text, Not(StartsWith("ReceiveMessage")));
    }
}

TEST_F(DebugMode, IsOffUnlessAskedFor) {
    RunsWell();
    EXPECT_THAT(Events.Trace, IsEmpty());
}

}  // namespace burnwick::test
