#include "platform/loop/WindowLoop.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <memory>

#include "gui/Await.h"
#include "platform/LoopHelpers.h"
#include "platform/Pipe.h"

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;

class QtEventLoopTest : public testing::Test {
protected:
    void AwaitCalls(int calls) const {
        EXPECT_TRUE(Await([this, calls] { return Calls_ >= calls; }));
    }

    const std::unique_ptr<EventLoop> Loop_ = NewWindowLoop();
    int Calls_ = 0;
};

TEST_F(QtEventLoopTest, ATimerTicksOnceItIsSwitchedOn) {
    const auto timer = Loop_->NewTimer(1ms, [this] { ++Calls_; });
    QTest::qWait(20);
    EXPECT_EQ(Calls_, 0);
    timer->SetEnabled(true);
    AwaitCalls(3);
}

TEST_F(QtEventLoopTest, ATimerThatIsSwitchedOffTicksNoMore) {
    std::unique_ptr<Timer> timer;
    timer = Loop_->NewTimer(1ms, [&] {
        ++Calls_;
        timer->SetEnabled(false);
    });
    timer->SetEnabled(true);
    AwaitCalls(1);
    QTest::qWait(20);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(QtEventLoopTest, TimersTickInADialogThatATickHasOpened) {
    QDialog dialog;
    int inDialog = 0;
    const auto often = Loop_->NewTimer(1ms, [&] {
        if (dialog.isVisible() && ++inDialog == 3) {
            dialog.accept();
        }
    });
    std::unique_ptr<Timer> opens;
    opens = Loop_->NewTimer(5ms, [&] {
        opens->SetEnabled(false);
        Calls_ += dialog.exec();
    });
    often->SetEnabled(true);
    opens->SetEnabled(true);
    AwaitCalls(1);
    EXPECT_EQ(inDialog, 3);
}

TEST_F(QtEventLoopTest, AWatchCallsForEachInput) {
    const Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        pipe.Take();
        ++Calls_;
    });
    for (int i = 1; i <= 20; ++i) {
        pipe.Put();
        AwaitCalls(i);
    }
    EXPECT_EQ(Calls_, 20);
}

TEST_F(QtEventLoopTest, AWatchCallsForInputThatWasThereBeforeIt) {
    const Pipe pipe;
    pipe.Put();
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        pipe.Take();
        ++Calls_;
    });
    AwaitCalls(1);
}

TEST_F(QtEventLoopTest, AWatchMayEndItself) {
    const Pipe pipe;
    std::unique_ptr<Watch> watch;
    watch = Loop_->WatchInput(pipe.Handle(), [&] {
        ++Calls_;
        watch.reset();
    });
    pipe.Put();
    AwaitCalls(1);
    QTest::qWait(20);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(QtEventLoopTest, AnApplicationThatWaitsUsesNextToNoProcessor) {
    const Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [] {});
    const auto timer = Loop_->NewTimer(300ms, [this] { ++Calls_; });
    QCoreApplication::processEvents();
    const auto before = ProcessorTime();
    timer->SetEnabled(true);
    while (Calls_ == 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_LT(ProcessorTime() - before, 60ms);
}

TEST_F(QtEventLoopTest, ItsClockIsTheSystems) {
    const auto before = Loop_->MillisecondClock();
    Stall(20ms);
    EXPECT_GE(Loop_->MillisecondClock() - before, 20ms);
    EXPECT_GE(Loop_->Now().tm_year, 2026 - 1900);
}

}  // namespace
}  // namespace burnwick::test
