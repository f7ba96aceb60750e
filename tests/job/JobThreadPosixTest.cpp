#include "job/JobThread.h"

#include <gmock/gmock.h>
#include <poll.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <stdexcept>
#include <thread>

#include "platform/loop/MessageLoop.h"
#include "simulator/Line.h"
#include "simulator/Unit.h"
#include "support/Eventually.h"
#include "support/ReadImage.h"
#include "support/SampleImages.h"
#include "support/SimulatedDevice.h"
#include "support/TempFolder.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t Size = 65'536;

// Virtual time for a thread that is spoken to by another one: each Yield looks at the handles, too.
class ThreadLoop final : public MessageLoop {
public:
    explicit ThreadLoop(VirtualLoop& loop, std::atomic<bool>& ended) : Loop_(loop), Ended_(ended) {}
    ThreadLoop(const ThreadLoop&) = delete;
    ThreadLoop& operator=(const ThreadLoop&) = delete;
    ~ThreadLoop() override { Ended_ = true; }

    void Yield(Microseconds atMost) override {
        const auto before = Loop_.Time();
        Loop_.Yield(atMost);
        // Where nothing happens in virtual time either, the other thread gets some real time.
        const bool isIdle = atMost >= 100ms && Loop_.Time() - before == atMost;
        pollfd input{static_cast<int>(Handle_), POLLIN, 0};
        if (Ready_ && poll(&input, 1, isIdle ? 1 : 0) > 0) {
            Ready_();
        }
    }
    std::chrono::milliseconds MillisecondClock() const override { return Loop_.MillisecondClock(); }
    std::tm Now() const override { return Loop_.Now(); }
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
        return Loop_.NewTimer(interval, std::move(tick));
    }
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override {
        class Nothing final : public Watch {};
        Handle_ = handle;
        Ready_ = std::move(ready);
        return std::make_unique<Nothing>();
    }

private:
    VirtualLoop& Loop_;
    std::atomic<bool>& Ended_;
    WaitHandle Handle_ = -1;
    std::function<void()> Ready_;
};

}  // namespace

// A job on a thread of its own, in virtual time there, and its owner on a real loop.
class JobThreadTest : public ::testing::Test {
protected:
    JobThreadTest() {
        Order.Image = ImageOf(Folder.Write("image.bin", AnyBytes(Size)));
        Order.Device = "/dev/unit";
        Order.BaudRate = "115200";
        Order.ProgramFolder = Folder.Path();
        Reset();
    }

    // A unit with other contents, and a clock that begins anew.
    void Reset() {
        simulator::UnitOptions options;
        options.Flash = AnyBytes(Size, /*seed=*/7);
        Unit = std::make_unique<simulator::Unit>(std::move(options));
        Line = std::make_unique<simulator::Line>(*Unit, /*paced=*/true);
        Clock = std::make_unique<VirtualLoop>();
        Ended = false;
        Result.reset();
    }

    std::unique_ptr<JobThread> NewJob(JobEvents take) {
        const JobTools tools{
            [this] { return std::make_unique<ThreadLoop>(*Clock, Ended); },
            [this](MessageLoop&) { return std::make_unique<SimulatedDevice>(*Clock, *Line); }};
        return std::make_unique<JobThread>(*Owner, tools, Order, [this, take](const JobEvent& event) {
            if (const auto* const result = std::get_if<JobResult>(&event)) {
                Result = *result;
            }
            take(event);
        });
    }
    const JobResult& AwaitResult() {
        while (!Result) {
            Owner->Yield(1h);
        }
        return *Result;
    }
    bool UnitHoldsImage() const { return Unit->Flash() == *Order.Image.Content; }

    TempFolder Folder;
    std::unique_ptr<MessageLoop> Owner = NewSystemLoop();
    std::unique_ptr<simulator::Unit> Unit;
    std::unique_ptr<simulator::Line> Line;
    std::unique_ptr<VirtualLoop> Clock;
    std::atomic<bool> Ended = false;
    FlashOrder Order;
    std::optional<JobResult> Result;
};

TEST_F(JobThreadTest, ProgramsTheUnitAndTellsItsOwnerOnTheOwnersThread) {
    const auto owner = std::this_thread::get_id();
    std::vector<std::string> lines;
    const auto job = NewJob([&](const JobEvent& event) {
        EXPECT_EQ(std::this_thread::get_id(), owner);
        if (const auto* const line = std::get_if<RunLine>(&event)) {
            lines.push_back(line->Text);
        }
    });
    job->Start();
    EXPECT_TRUE(AwaitResult().Transfer.Succeeded());
    EXPECT_TRUE(UnitHoldsImage());
    EXPECT_EQ(lines.front(), "Opening " + Order.Image.FileName + "...");
    EXPECT_EQ(lines.back(), "Now rebooting the unit...");
}

TEST_F(JobThreadTest, ServesTheUnitWhileItsOwnerSleeps) {
    std::vector<int> blocks;
    const auto job = NewJob([&](const JobEvent& event) {
        if (const auto* const progress = std::get_if<BlockProgress>(&event)) {
            blocks.push_back(progress->Block);
        }
    });
    job->Start();
    ASSERT_TRUE(Eventually([this] { return Ended.load(); }));
    EXPECT_TRUE(UnitHoldsImage());
    EXPECT_TRUE(blocks.empty());
    EXPECT_TRUE(AwaitResult().Transfer.Succeeded());
    // Of what came meanwhile, only the first, the last, and the latest between two other events.
    EXPECT_EQ(blocks.front(), 0);
    EXPECT_EQ(blocks.back(), 256);
    EXPECT_LT(blocks.size(), 50U);
    EXPECT_TRUE(std::is_sorted(blocks.begin(), blocks.end()));
}

TEST_F(JobThreadTest, AnswersReachTheJob) {
    for (const bool yes : {true, false}) {
        Reset();
        Order.Verify = FlashOrder::Verification::Ask;
        Job* asked = nullptr;
        const auto job = NewJob([&](const JobEvent& event) {
            if (std::holds_alternative<VerificationOffer>(event)) {
                asked->Answer(yes);
            }
        });
        asked = job.get();
        job->Start();
        EXPECT_EQ(AwaitResult().VerificationBegun, yes);
    }
}

TEST_F(JobThreadTest, ACancelThatComesBeforeTheStartIsNotLost) {
    const auto job = NewJob([](const JobEvent&) {});
    job->Cancel();
    job->Start();
    EXPECT_EQ(AwaitResult().Transfer.Outcome, Outcome::Canceled);
}

TEST_F(JobThreadTest, IsCancelledAndWaitedForWhenItsOwnerLeaves) {
    bool begun = false;
    {
        const auto job = NewJob(
            [&](const JobEvent& event) { begun = begun || std::holds_alternative<BlockProgress>(event); });
        job->Start();
        while (!begun) {
            Owner->Yield(1h);
        }
    }
    EXPECT_TRUE(Ended);
}

TEST_F(JobThreadTest, AnExceptionOfItsOwnersHandlerCancelsIt) {
    const auto job = NewJob([](const JobEvent& event) {
        if (std::holds_alternative<BlockProgress>(event)) {
            throw std::runtime_error("out of luck");
        }
    });
    job->Start();
    EXPECT_EQ(AwaitResult().Unforeseen, "out of luck");
}

TEST_F(JobThreadTest, AnExceptionOfItsToolsIsItsResult) {
    JobThread job(*Owner, {[]() -> std::unique_ptr<MessageLoop> { throw std::runtime_error("no loop"); }, {}},
                  Order, [this](const JobEvent& event) { Result = std::get<JobResult>(event); });
    job.Start();
    EXPECT_EQ(AwaitResult().Unforeseen, "no loop");
    EXPECT_FALSE(Result->Transfer.Succeeded());
}

// 200 runs, each cancelled at another moment: whatever the moment, success means that the unit holds the
// image.
TEST_F(JobThreadTest, EndsInOrderWheneverItIsCancelled) {
    constexpr unsigned runs = 200;
    for (unsigned seed = 0; seed < runs; ++seed) {
        Reset();
        std::mt19937 random(seed);
        auto events = std::uniform_int_distribution<int>(0, 40)(random);
        Job* cancelled = nullptr;
        const auto job = NewJob([&](const JobEvent&) {
            if (events-- == 0) {
                cancelled->Cancel();
            }
        });
        cancelled = job.get();
        job->Start();
        const RunResult& run = AwaitResult().Transfer;
        ASSERT_TRUE(run.Succeeded() || run.Outcome == Outcome::Canceled) << seed;
        ASSERT_TRUE(Eventually([this] { return Ended.load(); }));
        ASSERT_TRUE(!run.Succeeded() || UnitHoldsImage()) << seed;
    }
}

}  // namespace burnwick::test
