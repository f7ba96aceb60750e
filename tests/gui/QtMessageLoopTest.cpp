#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <memory>

#include "platform/LoopHelpers.h"
#include "platform/Pipe.h"
#include "platform/WindowLoop.h"

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;

// A dialog, or the application: an event loop that is not ours.
class Outside {
public:
    void Run() { Loop_.exec(); }
    void End() { Loop_.quit(); }

private:
    QEventLoop Loop_;
};

class QtMessageLoopTest : public testing::Test {
protected:
    const std::unique_ptr<MessageLoop> Loop_ = NewWindowLoop();
    Outside Outside_;
    int Calls_ = 0;
};

TEST_F(QtMessageLoopTest, APostedEventEndsTheSleep) {
    QObject object;
    QMetaObject::invokeMethod(
        &object, [this] { ++Calls_; }, Qt::QueuedConnection);
    Loop_->Yield(60s);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(QtMessageLoopTest, AnEventThatATickPostsEndsTheNextSleep) {
    QObject object;
    std::unique_ptr<Timer> timer;
    timer = Loop_->NewTimer(1ms, [&] {
        timer->SetEnabled(false);
        QMetaObject::invokeMethod(
            &object, [this] { ++Calls_; }, Qt::QueuedConnection);
    });
    timer->SetEnabled(true);
    while (Calls_ == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_EQ(Calls_, 1);
}

TEST_F(QtMessageLoopTest, AKeyPressIsHandledInAYield) {
    QDialog dialog;
    QObject::connect(&dialog, &QDialog::rejected, &dialog, [this] { ++Calls_; });
    dialog.show();
    QCoreApplication::postEvent(&dialog, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
    while (Calls_ == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(QtMessageLoopTest, AnObjectThatIsToBeDeletedDoesNotKeepTheSleepFromBeingOne) {
    // An event handler in which it is asked for; it is carried out once that is over.
    QTimer::singleShot(0, [this] {
        (new QObject)->deleteLater();
        YieldFor(*Loop_, 1ms);
        const auto before = ProcessorTime();
        EXPECT_LT(YieldFor(*Loop_, 100ms), 5);
        EXPECT_LT(ProcessorTime() - before, 20ms);
        Outside_.End();
    });
    Outside_.Run();
}

TEST_F(QtMessageLoopTest, TimersTickWhileTheApplicationRunsTheEventLoop) {
    const auto timer = Loop_->NewTimer(2ms, [this] {
        if (++Calls_ == 5) {
            Outside_.End();
        }
    });
    timer->SetEnabled(true);
    Outside_.Run();
    EXPECT_EQ(Calls_, 5);
}

TEST_F(QtMessageLoopTest, ATimerThatIsSwitchedOnWhileTheApplicationRunsTheEventLoopTicks) {
    const auto timer = Loop_->NewTimer(2ms, [this] { Outside_.End(); });
    QTimer::singleShot(0, [&] { timer->SetEnabled(true); });
    Outside_.Run();
    SUCCEED();
}

TEST_F(QtMessageLoopTest, ATimerWhoseMissedTicksWereSkippedTicksOn) {
    const auto timer = Loop_->NewTimer(2ms, [this] { Outside_.End(); });
    timer->SetEnabled(true);
    Stall(10ms);
    timer->SkipMissedTicks();
    Outside_.Run();
    SUCCEED();
}

TEST_F(QtMessageLoopTest, TimersTickInADialogThatATickHasOpened) {
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
    while (Calls_ == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_EQ(inDialog, 3);
}

TEST_F(QtMessageLoopTest, TimersTickInADialogThatAnEventInAYieldHasOpened) {
    QDialog dialog;
    const auto timer = Loop_->NewTimer(1ms, [&] { dialog.accept(); });
    QMetaObject::invokeMethod(
        &dialog,
        [&] {
            timer->SetEnabled(true);
            Calls_ += dialog.exec();
        },
        Qt::QueuedConnection);
    Loop_->Yield(60s);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(QtMessageLoopTest, ADialogInAYieldMayRunTheLoopItself) {
    QDialog dialog;
    const auto timer = Loop_->NewTimer(1ms, [&] { ++Calls_; });
    timer->SetEnabled(true);
    QTimer::singleShot(0, &dialog, [&] {
        QTimer::singleShot(0, &dialog, [&] {
            while (Calls_ < 3) {
                Loop_->Yield(60s);
            }
            dialog.accept();
        });
        dialog.exec();
    });
    while (Calls_ < 3) {
        Loop_->Yield(60s);
    }
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(QtMessageLoopTest, InputIsHandledWhileTheApplicationRunsTheEventLoop) {
    const Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        pipe.Take();
        Outside_.End();
    });
    QTimer::singleShot(0, [&] { pipe.Put(); });
    Outside_.Run();
    SUCCEED();
}

TEST_F(QtMessageLoopTest, ARestingApplicationUsesNextToNoProcessor) {
    const auto timer = Loop_->NewTimer(200ms, [this] { Outside_.End(); });
    Loop_->Yield(10ms);
    const auto before = ProcessorTime();
    timer->SetEnabled(true);
    Outside_.Run();
    EXPECT_LT(ProcessorTime() - before, 20ms);
}

}  // namespace
}  // namespace burnwick::test
