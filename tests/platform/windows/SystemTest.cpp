#include "platform/loop/MessageLoop.h"
#include "platform/process/StandardStreams.h"
#include "platform/serial/SerialDevice.h"

#include <gtest/gtest.h>

#include "Child.h"

namespace burnwick::test {
namespace {

TEST(SystemTest, HasALoopAndASerialPort) {
    EXPECT_NE(NewSystemLoop(), nullptr);
    EXPECT_NE(NewSerialDevice(), nullptr);
}

TEST(SystemTest, OpensToNowhereWhatACallerHasClosed) {
    EXPECT_EQ(Child(Child::Doing(L"streams")).ExitCode(), 7U);
}

TEST(SystemTest, GivesAWidthInAnyCase) {
    EXPECT_GT(ErrorOutputColumns(), 1);
}

}  // namespace
}  // namespace burnwick::test
