#include "platform/process/Interrupt.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include "ChildProcess.h"
#include "platform/loop/linux/PollLoop.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;

class InterruptTest : public testing::Test {
protected:
    std::unique_ptr<Interrupt> Catch() {
        return CatchInterrupts(Loop_, [this] { ++Requests_; });
    }

    PollLoop Loop_;
    int Requests_ = 0;
};

TEST_F(InterruptTest, EveryArrivalIsHandedOverInsideYield) {
    const auto interrupt = Catch();
    for (const int expected : {1, 2}) {
        ASSERT_EQ(raise(SIGINT), 0);
        EXPECT_EQ(Requests_, expected - 1);
        Loop_.Yield(60s);
        EXPECT_EQ(Requests_, expected);
    }
}

TEST_F(InterruptTest, AllWaysToEndTheProcessAreCaught) {
    const auto interrupt = Catch();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        ASSERT_EQ(raise(signal), 0);
    }
    Loop_.Yield(60s);
    EXPECT_EQ(Requests_, 3);
}

TEST_F(InterruptTest, AClosedTerminalStaysIgnoredWhereItWas) {
    ASSERT_NE(std::signal(SIGHUP, SIG_IGN), SIG_ERR);
    {
        const auto interrupt = Catch();
        ASSERT_EQ(raise(SIGHUP), 0);
        Loop_.Yield(5ms);
    }
    EXPECT_NE(std::signal(SIGHUP, SIG_DFL), SIG_ERR);
    EXPECT_EQ(Requests_, 0);
}

TEST_F(InterruptTest, OneThatCameTooLateDoesNotEndTheProcess) {
    {
        const auto interrupt = Catch();
        ASSERT_EQ(raise(SIGINT), 0);
    }
    Loop_.Yield(0us);
    EXPECT_EQ(Requests_, 0);
}

TEST_F(InterruptTest, AThreadThatWasThereBeforeDoesNotEndTheProcess) {
    const pid_t child = fork();
    if (child == 0) {
        HoldInterrupts();
        std::thread([] { pause(); }).detach();
        const auto interrupt = Catch();
        kill(getpid(), SIGTERM);
        Loop_.Yield(60s);
        _exit(Requests_);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

TEST_F(InterruptTest, AfterItsEndSignalsActAsBefore) {
    sigset_t before;
    sigset_t after;
    pthread_sigmask(SIG_BLOCK, nullptr, &before);
    Catch().reset();
    pthread_sigmask(SIG_BLOCK, nullptr, &after);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EQ(sigismember(&before, signal), sigismember(&after, signal));
    }

    const pid_t child = fork();
    if (child == 0) {
        static_cast<void>(std::signal(SIGINT, SIG_DFL));
        Catch().reset();
        raise(SIGINT);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
}

}  // namespace
}  // namespace burnwick
