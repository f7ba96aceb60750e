#include "job/RunTexts.h"

#include <gmock/gmock.h>

namespace burnwick::test {

using ::testing::ElementsAre;

namespace {

RunTexts After(std::initializer_list<RunLine> lines) {
    RunTexts texts;
    for (const RunLine& line : lines) {
        texts.TakeMessage(line);
    }
    return texts;
}

}  // namespace

TEST(RunTexts, BeginWithWaitingForTheUnit) {
    EXPECT_EQ(RunTexts().Status, "Waiting for response from Multiplexer...");
}

TEST(RunTexts, CollectEveryMessageInItsOrder) {
    EXPECT_THAT(After({{"Opening a.bin..."}, {" "}, {"Selected baud rate: 57600bps."}}).Display,
                ElementsAre("Opening a.bin...", " ", "Selected baud rate: 57600bps."));
}

TEST(RunTexts, SayInTheStatusThatTheUnitIsBeingMadeReady) {
    EXPECT_EQ(After({{"Getting ready to start programming...", LineKind::GettingReady}}).Status,
              "Getting ready to start programming...");
}

TEST(RunTexts, ShortenTheStatusWhileTheUnitTakesItsTime) {
    EXPECT_EQ(After({{"Please wait for a few seconds...", LineKind::PleaseWait}}).Status, "Please wait...");
}

TEST(RunTexts, SayEachOutcomeInTheStatus) {
    for (const RunLine& outcome : {RunLine{"Timeout.", LineKind::Timeout},
                                   {"Programming was completed successfully.", LineKind::Completed},
                                   {"Uploading was completed successfully.", LineKind::Completed},
                                   {"The software is not compatible.", LineKind::NotCompatible},
                                   {"Transmitting error.", LineKind::TransmittingError},
                                   {"Programming was canceled.", LineKind::Canceled}}) {
        EXPECT_EQ(After({{"Opening a.bin..."}, outcome, {" "}, {"Now rebooting the unit..."}}).Status,
                  outcome.Text);
    }
}

TEST(RunTexts, SayInTheStatusWhyAFileCouldNotBeWritten) {
    EXPECT_EQ(
        After({{"Error: Cannot write to a.bin (No space left on device).", LineKind::FileError}}).Status,
        "Error: Cannot write to a.bin (No space left on device).");
}

TEST(RunTexts, AreNotDeceivedByTheNameOfAFile) {
    EXPECT_EQ(After({{"Opening Error: successfully canceled. Please wait.bin..."}}).Status,
              "Waiting for response from Multiplexer...");
}

TEST(RunTexts, MoveBlocksWhileTheStatusCountsThem) {
    RunTexts texts;
    EXPECT_FALSE(texts.MovesBlocks);
    texts.TakeProgress("Sending block 3 of 256 blocks");
    EXPECT_TRUE(texts.MovesBlocks);
    EXPECT_EQ(texts.Status, "Sending block 3 of 256 blocks");
    texts.TakeMessage({"Transmitting error.", LineKind::TransmittingError});
    EXPECT_FALSE(texts.MovesBlocks);
}

TEST(RunTexts, AskForAPowerCycleWhenTheVerificationBegins) {
    RunTexts texts;
    EXPECT_THAT(texts.BeginVerification(),
                ElementsAre(" ", "Please power off, then power on the unit. Waiting..."));
    EXPECT_TRUE(texts.Verifying);
    EXPECT_EQ(texts.Status, "Waiting...");
}

TEST(RunTexts, SayThatTheUnitIsBeingVerifiedOnceItIsReady) {
    RunTexts texts;
    texts.BeginVerification();
    EXPECT_THAT(texts.TakeMessage({"Getting ready to upload data...", LineKind::GettingReady}),
                ElementsAre("Verifying...Please wait.", "Getting ready to upload data..."));
    EXPECT_EQ(texts.Status, "Waiting...");
}

TEST(RunTexts, RememberThatTheVerificationWasCanceled) {
    RunTexts texts;
    texts.TakeMessage({"Programming was canceled.", LineKind::Canceled});
    EXPECT_FALSE(texts.VerifyCanceled);
    texts.BeginVerification();
    texts.TakeMessage({"Uploading was canceled.", LineKind::Canceled});
    EXPECT_TRUE(texts.VerifyCanceled);
}

TEST(RunTexts, EndTheVerificationWithItsResultAsALine) {
    RunTexts texts;
    texts.BeginVerification();
    EXPECT_THAT(texts.EndVerification("Verifying was successfully."),
                ElementsAre("Verifying was successfully."));
    EXPECT_EQ(texts.Result, "Verifying was successfully.");
    EXPECT_EQ(texts.Display.back(), "Verifying was successfully.");
}

}  // namespace burnwick::test
