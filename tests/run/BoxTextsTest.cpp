#include "run/BoxTexts.h"

#include <gtest/gtest.h>

namespace burnwick::test {

TEST(BoxTexts, ATransmittingErrorPointsToTheCable) {
    EXPECT_EQ(TransmittingErrorBox().Caption, "Transmitting Error");
    EXPECT_EQ(TransmittingErrorBox().Text,
              "There is a communication error.        \nCheck the serial cable and try again.");
}

TEST(BoxTexts, APortThatDoesNotOpenIsNamed) {
    EXPECT_EQ(CommPortErrorBox(12).Caption, "CommPort Error");
    EXPECT_EQ(CommPortErrorBox(12).Text, "COM12 is not available. \nPlease try to select another CommPort.");
}

TEST(BoxTexts, AVerificationIsAskedForBehindATab) {
    EXPECT_EQ(VerificationQuestion().Caption, "Verification");
    EXPECT_EQ(VerificationQuestion().Text, "\tDo you want to verify the last programming?");
}

TEST(BoxTexts, AFileThatIsGoneIsQuoted) {
    EXPECT_EQ(FileNotFoundBox("C:\\a.bin").Caption, "File Not Found");
    EXPECT_EQ(FileNotFoundBox("C:\\a.bin").Text,
              "\"C:\\a.bin\" could not be found.\nCheck the spelling of the file, and verify that the file "
              "location is correct.");
}

TEST(BoxTexts, AnyOtherTroubleIsDescribed) {
    EXPECT_EQ(ErrorBox("Out of memory").Caption, "Error");
    EXPECT_EQ(ErrorBox("Out of memory").Text, "Out of memory\n");
}

}  // namespace burnwick::test
