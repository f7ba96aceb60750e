#include "platform/process/Interrupt.h"

#include <gtest/gtest.h>

#include "Child.h"

namespace burnwick::test {
namespace {

// Each child has a console of its own: this process must not be asked to end.
class InterruptTest : public testing::Test {
protected:
    static Child Interrupted(const std::wstring& how) { return Child(Child::Doing(how), CREATE_NO_WINDOW); }
};

TEST_F(InterruptTest, EveryArrivalIsHandedOverInsideYield) {
    auto child = Interrupted(L"interrupt-twice");
    EXPECT_EQ(child.Line(), "1");
    EXPECT_EQ(child.Line(), "2");
    EXPECT_EQ(child.ExitCode(), 0U);
}

TEST_F(InterruptTest, ThoseThatCameBeforeWaitToBeCaught) {
    auto child = Interrupted(L"interrupt-held");
    EXPECT_EQ(child.Line(), "3");
    EXPECT_EQ(child.ExitCode(), 0U);
}

TEST_F(InterruptTest, OneThatCameTooLateDoesNotEndTheProcess) {
    auto child = Interrupted(L"interrupt-late");
    EXPECT_EQ(child.Line(), "alive");
    EXPECT_EQ(child.ExitCode(), 7U);
}

TEST_F(InterruptTest, AfterItsEndCtrlCActsAsBefore) {
    auto child = Interrupted(L"interrupt-after");
    EXPECT_EQ(child.Line(), "");
    EXPECT_NE(child.ExitCode(), 7U) << "it has lived on";
}

}  // namespace
}  // namespace burnwick::test
