#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

constexpr auto CallsItselfI = "00 00 49 00 FF AA 05 00";
constexpr auto CallsItselfBrace = "00 00 7B 00 FF AA 05 00";
constexpr auto CallsItselfQuote = "00 00 22 00 FF AA 05 00";
constexpr auto TooFast = "The unit doesn't support 115200bps.";

// No marker, any speed.
Bytes UnmarkedImage() {
    return AnyBytes(262'144);
}

Bytes Family1Image() {
    return AnyBytes(65'536);
}

Bytes Type2Image() {
    return ImageWith(262'144, 0x3000, {0xC0, 0xDE, 0x00, 0x01});
}

Bytes Type4Image() {
    return ImageWith(66'000, 0, {0xC0, 0xDE, 0x01, 0x49});
}

Bytes Type343Image() {
    return ImageWith(66'000, 0, {0xC0, 0xDE, 0x01, 0x57});
}

Bytes Type3Image(unsigned char subModel) {
    Bytes image = ImageWith(262'144, 0, {0xBC, 0x0D, 0xE1, 0x22});
    Put(image, 0x10000, {0xC0, 0xDE, 0x00, 0x02});
    Put(image, 73'601, {subModel});
    return image;
}

}  // namespace

// The handshake alone: the run is cancelled once the first block has been asked for.
class Handshake : public LinkTest {
protected:
    void SetUp() override {
        const auto record = Flash.Message;
        Flash.Message = [this, record](const RunLine& line) {
            record(line);
            if (line.Kind == LineKind::GettingReady) {
                Flash.Execute(Method::Cancel);
            }
        };
    }

    // The unit's side up to its answer to what it is.
    void AgreesAndCallsItself(const char* identity) {
        AgreesOn(ProgramMode, Speed57600);
        Unit.Hears(Identify).Says(identity);
    }

    std::string Contact() const {
        for (const auto& text : Events.Messages) {
            if (text.starts_with("Contact established")) {
                return text;
            }
        }
        return "no contact";
    }
};

TEST_F(Handshake, StartsAt9600AndProbesTwiceASecond) {
    RunDownload(UnmarkedImage());
    ASSERT_GE(Unit.Sent().size(), 4U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(SentFrame(i), Probe);
        EXPECT_EQ(Unit.Sent()[i].At, i * 500ms);
        EXPECT_EQ(Unit.Sent()[i].Baud, 9600U);
    }
}

TEST_F(Handshake, WithoutAnAnswerCountsDownFrom60To0AndEndsWithNoResponse) {
    RunDownload(UnmarkedImage());
    std::vector<std::string> expected;
    for (int half = 1; half <= 120; ++half) {
        expected.push_back("Timeout: " + std::to_string(60 - half / 2) + " seconds");
    }
    EXPECT_EQ(Events.Timings, expected);
    EXPECT_EQ(Events.Timings.front(), "Timeout: 60 seconds");
    EXPECT_EQ(Events.Timings.back(), "Timeout: 0 seconds");
    EXPECT_THAT(Events.Messages,
                ElementsAre("Opening " + Flash.FileName() + "...", " ", "Selected baud rate: 57600bps.",
                            "Waiting for response from the unit on COM1...", " ",
                            "No response from the unit.", "Timeout."));
    EXPECT_EQ(Loop.Time(), 60s);
}

TEST_F(Handshake, OfAMachineThatStalledPastTheMinuteStillEnds) {
    Loop.At(10s, [this] { Loop.Stall(2min); });
    RunDownload(UnmarkedImage());
    EXPECT_EQ(Events.Timings.back(), "Timeout: 0 seconds");
    EXPECT_EQ(Events.Messages.back(), "Timeout.");
}

TEST_F(Handshake, SendsProgramModeAndSpeed57600OnReady) {
    AgreesOn(ProgramMode, Speed57600);
    RunDownload(UnmarkedImage());
    EXPECT_THAT(SentCommands(), ElementsAre(Probe, ProgramMode, Speed57600, Finish));
    EXPECT_THAT(Unit.Speeds(),
                ElementsAre(9600U, 9600U, 57600U));  // opened twice: as a test, and for the run
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, SendsUploadModeOnAnUpload) {
    AgreesOn(UploadMode, Speed57600);
    RunUpload(256);
    EXPECT_THAT(SentCommands(), ElementsAre(Probe, UploadMode, Speed57600, Finish));
}

TEST_F(Handshake, SendsSpeed115200WhenWanted) {
    Flash.SetBaudRate("115200");
    AgreesOn(ProgramMode, Speed115200);
    RunDownload(UnmarkedImage());
    EXPECT_THAT(SentCommands(), ElementsAre(Probe, ProgramMode, Speed115200, Finish));
    EXPECT_EQ(Contact(), "Contact established at 115200bps.");
    EXPECT_EQ(Unit.Speeds().back(), 115200U);
    EXPECT_THAT(Events.Messages, Not(Contains(TooFast)));
}

TEST_F(Handshake, AsksFor57600InsteadOf115200ForFamily1) {
    Flash.SetBaudRate("115200");
    AgreesOn(ProgramMode, Speed57600);
    RunDownload(Family1Image());
    EXPECT_THAT(Events.Messages, Contains(TooFast).Times(1));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, AsksFor57600InsteadOf115200ForType2) {
    Flash.SetBaudRate("115200");
    AgreesOn(ProgramMode, Speed57600);
    RunDownload(Type2Image());
    EXPECT_THAT(Events.Messages, Contains(TooFast).Times(1));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, AsksForNoSpeedAt9600AndSetsTheLineTo9600Again) {
    Flash.SetBaudRate("9600");
    AgreesOn(ProgramMode, nullptr);
    RunDownload(UnmarkedImage());
    EXPECT_THAT(SentCommands(), ElementsAre(Probe, ProgramMode, Finish));
    EXPECT_THAT(Unit.Speeds(), ElementsAre(9600U, 9600U, 9600U));
    EXPECT_EQ(Contact(), "Contact established at 9600bps.");
}

TEST_F(Handshake, KeepsFamily1At9600WhenNoSpeedWasAskedFor) {
    Flash.SetBaudRate("9600");
    AgreesOn(ProgramMode, nullptr);
    RunDownload(Family1Image());
    EXPECT_EQ(Contact(), "Contact established at 9600bps.");
}

TEST_F(Handshake, FallsBackTo57600WhenTheUnitIsReadyInsteadOfAcknowledging) {
    Flash.SetBaudRate("115200");
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed115200).Says(Ready);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    RunDownload(UnmarkedImage());
    EXPECT_THAT(Events.Messages, Contains(TooFast).Times(1));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
    EXPECT_EQ(Unit.Speeds().back(), 57600U);
}

TEST_F(Handshake, StaysAtTheSpeedOfTheLineWhenTheUnitIsReadyAfterTheFallbackToo) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Ready);
    Unit.Hears(Speed57600).Says(Ready);
    RunDownload(UnmarkedImage());
    EXPECT_EQ(Contact(), "Contact established at 9600bps.");
}

TEST_F(Handshake, StartsTheElapsedTimeAtTheAcknowledgement) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(1500ms, Ready);
    RunDownload(UnmarkedImage());
    EXPECT_THAT(Events.Timings,
                ElementsAre("Timeout: 60 seconds", "Elapsed time: 00:00", "Elapsed time: 00:01"));
}

TEST_F(Handshake, TellsTheContactInThisOrder) {
    AgreesOn(ProgramMode, Speed57600);
    RunDownload(Family1Image());
    EXPECT_THAT(Events.All,
                ElementsAre("Opening " + Flash.FileName() + "...", " ", "Selected baud rate: 57600bps.",
                            "Waiting for response from the unit on COM1...", "Timeout: 60 seconds",
                            "Elapsed time: 00:00", "Contact established at 57600bps.", " ",
                            "Start time: Friday, 11/20/2026, 11:59:30 PM.", "Progress(0, 256)",
                            "Getting ready to start programming...", " ", "Programming was canceled."));
}

TEST_F(Handshake, TellsThatAnUploadGetsReady) {
    AgreesOn(UploadMode, Speed57600);
    RunUpload(256);
    EXPECT_THAT(Events.Messages, Contains("Getting ready to upload data..."));
}

TEST_F(Handshake, AnnouncesType343UntilItsAcknowledgementAndThenOnlyWaits) {
    Loop.At(1600ms, [this] { Unit.SaysUnasked(0us, "00 10 55 66 00 01"); });
    Loop.At(4200ms, [this] { Unit.SaysUnasked(0us, Ready); });
    Unit.Hears(FlashRequest);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    RunDownload(Type343Image());
    EXPECT_THAT(SentCommands(), ElementsAre(FlashRequest, FlashRequest, FlashRequest, FlashRequest,
                                            ProgramMode, Speed57600, Finish));
    EXPECT_EQ(Unit.Sent()[3].At, 1500ms);
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, NeverProbesForType343) {
    RunDownload(Type343Image());
    EXPECT_THAT(SentCommands(), Not(Contains(Probe)));
    EXPECT_THAT(SentCommands(), Contains(FlashRequest).Times(120));
}

TEST_F(Handshake, AsksForTheIdentityOnceAndAcceptsAnIForType4) {
    AgreesAndCallsItself(CallsItselfI);
    RunDownload(Type4Image());
    EXPECT_THAT(SentCommands(), ElementsAre(Probe, ProgramMode, Speed57600, Identify, Finish));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, RefusesType4WithoutAnI) {
    AgreesAndCallsItself(CallsItselfBrace);
    RunDownload(Type4Image());
    EXPECT_THAT(
        Events.Messages,
        ElementsAre("Opening " + Flash.FileName() + "...", " ", "Selected baud rate: 57600bps.",
                    "Waiting for response from the unit on COM1...", " ", "The software is not compatible."));
}

TEST_F(Handshake, RemembersAnIdentityGivenBeforeTheSpeedWasSettled) {
    Flash.SetBaudRate("115200");
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed115200).Says(Ready);
    Unit.Hears(Identify).Says(CallsItselfI);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    RunDownload(Type4Image());
    EXPECT_THAT(SentCommands(), ElementsAre(Probe, ProgramMode, Speed115200, Identify, Speed57600, Finish));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, SeesAnIdentityThatComesByteByByteWhole) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears(Identify)
        .Says("00")
        .Says(170us, "00")
        .Says(170us, "49")
        .Says(170us, "00")
        .Says(170us, "FF")
        .Says(600us, "AA")
        .Says(170us, "05")
        .Says(170us, "00");
    RunDownload(Type4Image());
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, OfOneMebibyteOfFamily1NeedsABrace) {
    AgreesAndCallsItself(CallsItselfBrace);
    RunDownload(ImageWith(1'048'576, 0x10000, {0x02, 0x00, 0x9E, 0x02}));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, RefusesOneMebibyteOfFamily1WithoutABrace) {
    AgreesAndCallsItself(Ready);
    RunDownload(ImageWith(1'048'576, 0x10000, {0x02, 0x00, 0x9E, 0x02}));
    EXPECT_EQ(Events.Messages.back(), "The software is not compatible.");
}

TEST_F(Handshake, OfType3FromSubModel30OnNeedsAQuote) {
    AgreesAndCallsItself(CallsItselfQuote);
    RunDownload(Type3Image(30));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, RefusesType3BelowSubModel30WithAQuote) {
    AgreesAndCallsItself(CallsItselfQuote);
    RunDownload(Type3Image(29));
    EXPECT_EQ(Events.Messages.back(), "The software is not compatible.");
}

TEST_F(Handshake, OfType3BelowSubModel30TakesAnythingButAQuote) {
    AgreesAndCallsItself(Ready);
    RunDownload(Type3Image(29));
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, OfType3WithoutItsFamilyAsksForNoIdentity) {
    AgreesOn(ProgramMode, Speed57600);
    RunDownload(ImageWith(262'144, 0, {0xBC, 0x0D, 0xE1, 0x22}));
    EXPECT_THAT(SentCommands(), Not(Contains(Identify)));
}

TEST_F(Handshake, OfAnUnmarkedImageAsksForNoIdentity) {
    AgreesOn(ProgramMode, Speed57600);
    RunDownload(AnyBytes(524'288));
    EXPECT_THAT(SentCommands(), Not(Contains(Identify)));
}

TEST_F(Handshake, FailsOnANegativeAnswerToTheSpeed) {
    for (const char* negative : {"FF AA 07 00", "FF AA 08 00"}) {
        Unit.Hears(Probe).Says(Ready);
        Unit.Hears(ProgramMode);
        Unit.Hears(Speed57600).Says(negative);
        RunDownload(UnmarkedImage());
        EXPECT_EQ(Events.Messages.back(), "Transmitting error.") << negative;
    }
}

TEST_F(Handshake, IgnoresAnAcknowledgementBeforeTheUnitIsReady) {
    Unit.SaysUnasked(100ms, Acknowledge);
    Loop.At(1100ms, [this] { Unit.SaysUnasked(0us, Ready); });
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    RunDownload(UnmarkedImage());
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

TEST_F(Handshake, DropsWhatCameWithAnAnswer) {
    Unit.Hears(Probe).Says("FF AA 05 00 FF AA 07 00");
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    RunDownload(UnmarkedImage());
    EXPECT_EQ(Contact(), "Contact established at 57600bps.");
}

}  // namespace burnwick::test
