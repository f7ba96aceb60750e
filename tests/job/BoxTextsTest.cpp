#include "job/BoxTexts.h"

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

TEST(BoxTexts, AFileIsReplacedOnlyWhenTheUserSaysSo) {
    const auto box = ReplaceQuestion("unit.bin", "512KB, 07/22/2004 9:05:09", "1,024KB, 11/05/2009 15:00:00");
    EXPECT_EQ(box.Caption, "Confirm File Replace");
    EXPECT_EQ(box.Text,
              "This folder already contains a file named 'unit.bin'    \n"
              " \n"
              "Existing file:  512KB, 07/22/2004 9:05:09\n"
              "Copying file: 1,024KB, 11/05/2009 15:00:00\n"
              "\n"
              "Would you like to replace the existing file?");
}

TEST(BoxTexts, ALineBreakInAFilesNameIsABlankInTheQuestion) {
    EXPECT_TRUE(ReplaceQuestion("a\nb.bin", "", "")
                    .Text.starts_with("This folder already contains a file named 'a b.bin'    \n \n"));
}

TEST(BoxTexts, ACopyThatFailedIsAnError) {
    EXPECT_EQ(CopyErrorBox().Caption, "Copy Error");
    EXPECT_EQ(CopyErrorBox().Text, "Copy file error.");
}

TEST(BoxTexts, AMissingHelpFileIsToldUnderTheProgramsTitle) {
    EXPECT_EQ(HelpFileMissingBox("Burnwick").Caption, "Burnwick");
    EXPECT_EQ(HelpFileMissingBox("Burnwick").Text, "The Burnwick help file does not exist.    ");
}

TEST(BoxTexts, AnyOtherTroubleIsDescribed) {
    EXPECT_EQ(ErrorBox("Out of memory").Caption, "Error");
    EXPECT_EQ(ErrorBox("Out of memory").Text, "Out of memory\n");
}

}  // namespace burnwick::test
