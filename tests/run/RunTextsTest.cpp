#include "run/RunTexts.h"

#include <gmock/gmock.h>

namespace burnwick::test {

using ::testing::ElementsAre;

namespace {

RunTexts After(std::initializer_list<const char*> messages) {
    RunTexts texts;
    for (const char* message : messages) {
        texts.TakeMessage(message);
    }
    return texts;
}

}  // namespace

TEST(RunTexts, BeginWithWaitingForTheUnit) {
    EXPECT_EQ(RunTexts().Status, "Waiting for response from Multiplexer...");
}

TEST(RunTexts, CollectEveryMessageInItsOrder) {
    EXPECT_THAT(After({"Opening a.bin...", " ", "Selected baud rate: 57600bps."}).Display,
                ElementsAre("Opening a.bin...", " ", "Selected baud rate: 57600bps."));
}

TEST(RunTexts, SayInTheStatusThatTheUnitIsBeingMadeReady) {
    EXPECT_EQ(After({"Getting ready to start programming..."}).Status,
              "Getting ready to start programming...");
}

TEST(RunTexts, ShortenTheStatusWhileTheUnitTakesItsTime) {
    EXPECT_EQ(After({"Please wait for a few seconds..."}).Status, "Please wait...");
}

TEST(RunTexts, SayEachOutcomeInTheStatus) {
    for (const char* outcome :
         {"Timeout.", "Programming was completed successfully.", "Uploading was completed successfully.",
          "The software is not compatible.", "Transmitting error.", "Programming was canceled."}) {
        EXPECT_EQ(After({"Opening a.bin...", outcome, " ", "Now rebooting the unit..."}).Status, outcome);
    }
}

TEST(RunTexts, SayInTheStatusWhyAFileCouldNotBeWritten) {
    EXPECT_EQ(After({"Error: Cannot write to a.bin (No space left on device)."}).Status,
              "Error: Cannot write to a.bin (No space left on device).");
}

TEST(RunTexts, AreNotDeceivedByTheNameOfAFile) {
    EXPECT_EQ(After({"Opening successfully canceled.bin..."}).Status,
              "Waiting for response from Multiplexer...");
    EXPECT_EQ(After({"Error: Cannot access to successfully.bin (Permission denied)."}).Status,
              "Error: Cannot access to successfully.bin (Permission denied).");
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
    EXPECT_THAT(texts.TakeMessage("Getting ready to upload data..."),
                ElementsAre("Verifying...Please wait.", "Getting ready to upload data..."));
    EXPECT_EQ(texts.Status, "Waiting...");
}

TEST(RunTexts, RememberThatTheVerificationWasCanceled) {
    RunTexts texts;
    texts.TakeMessage("Programming was canceled.");
    EXPECT_FALSE(texts.VerifyCanceled);
    texts.BeginVerification();
    texts.TakeMessage("Uploading was canceled.");
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
