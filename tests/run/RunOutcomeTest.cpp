#include "run/RunOutcome.h"

#include <gtest/gtest.h>

#include <vector>

namespace burnwick::test {

namespace {

RunOutcome Outcome(const std::vector<std::string>& messages) {
    return OutcomeOf(messages);
}

}  // namespace

TEST(RunOutcome, OfACompletedRunIsOk) {
    EXPECT_EQ(Outcome({"Programming was completed successfully.", "Now rebooting the unit..."}),
              RunOutcome::Ok);
    EXPECT_EQ(Outcome({"Uploading was completed successfully."}), RunOutcome::Ok);
}

TEST(RunOutcome, OfEachFailureIsItsOwn) {
    EXPECT_EQ(Outcome({" ", "No response from the unit.", "Timeout."}), RunOutcome::NoResponse);
    EXPECT_EQ(Outcome({" ", "Transmitting error."}), RunOutcome::TransmittingError);
    EXPECT_EQ(Outcome({" ", "The software is not compatible."}), RunOutcome::NotCompatible);
    EXPECT_EQ(Outcome({" ", "Programming was canceled."}), RunOutcome::Canceled);
    EXPECT_EQ(Outcome({" ", "Uploading was canceled."}), RunOutcome::Canceled);
    EXPECT_EQ(Outcome({"Error: Invalid file size."}), RunOutcome::FileError);
}

TEST(RunOutcome, OfARunThatSaysNothingIsAFailure) {
    EXPECT_EQ(Outcome({}), RunOutcome::TransmittingError);
    EXPECT_EQ(Outcome({"Opening image.bin...", "Sending data to the unit..."}),
              RunOutcome::TransmittingError);
}

TEST(RunOutcome, IsNeverOkBesideAFailure) {
    const std::string success = "Programming was completed successfully.";
    for (const std::string failure :
         {"Transmitting error.", "Programming was canceled.", "Error: Cannot write."}) {
        EXPECT_NE(Outcome({success, failure}), RunOutcome::Ok);
        EXPECT_NE(Outcome({failure, success}), RunOutcome::Ok);
    }
}

TEST(RunOutcome, IsNotReadFromTheFilesName) {
    EXPECT_EQ(Outcome({"Opening Error: it was canceled. Transmitting error..."}),
              RunOutcome::TransmittingError);
    EXPECT_EQ(
        Outcome({"Opening Error: was canceled. was completed successfully.", "No response from the unit."}),
        RunOutcome::NoResponse);
}

}  // namespace burnwick::test
