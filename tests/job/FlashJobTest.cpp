#include "job/FlashJob.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <stdexcept>
#include <variant>

#include "simulator/Line.h"
#include "simulator/Unit.h"
#include "support/ReadImage.h"
#include "support/SampleImages.h"
#include "support/SimulatedDevice.h"
#include "support/TempFolder.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace fs = std::filesystem;

constexpr std::size_t Size = 262'144;

}  // namespace

// A whole job against the simulated unit, in virtual time.
class FlashJobTest : public ::testing::Test {
protected:
    FlashJobTest() {
        simulator::UnitOptions options;
        options.Flash = AnyBytes(Size, /*seed=*/7);
        Connect(std::move(options));
        Order.Image = ImageOf(Folder.Write("image.bin", SampleImage(Size)));
        Order.Device = "/dev/unit";
        Order.BaudRate = "115200";
        Order.ProgramFolder = Folder.Path() / "home";
        fs::create_directory(Order.ProgramFolder);
    }

    void Connect(simulator::UnitOptions options) {
        Unit = std::make_unique<simulator::Unit>(std::move(options));
        Line = std::make_unique<simulator::Line>(*Unit, /*paced=*/false);
    }

    const JobResult& Run() {
        auto device = std::make_unique<SimulatedDevice>(Loop, *Line);
        if (PortTrouble) {
            device->RefuseToOpen(*PortTrouble);
        }
        FlashJob job(Loop, std::move(device), Order, [&](const JobEvent& event) { Take(job, event); });
        Job = &job;
        job.Run();
        Job = nullptr;
        return Result;
    }

    // Notes the events that are no lines by their names.
    void Take(FlashJob& job, const JobEvent& event) {
        std::visit(Overloaded{
                       [&](const RunLine& line) { Lines.push_back(line.Text); },
                       [&](const VerificationOffer&) {
                           Steps.emplace_back("offer");
                           OnOffer(job);
                       },
                       [&](const VerificationBegins&) { Steps.emplace_back("read-back"); },
                       [&](const ComparisonBegins&) {
                           Steps.emplace_back("comparison");
                           OnComparison();
                       },
                       [&](const VerificationEnds& end) { Steps.push_back(end.Result); },
                       [&](const JobResult& result) {
                           Steps.emplace_back("result");
                           Result = result;
                       },
                       [&](const BlockProgress& progress) { OnProgress(progress); },
                       [](const auto&) {},
                   },
                   event);
    }

    bool HasVerificationFile() const { return fs::exists(Order.ProgramFolder / "Verify.tmp"); }

    TempFolder Folder;
    VirtualLoop Loop;
    std::unique_ptr<simulator::Unit> Unit;
    std::unique_ptr<simulator::Line> Line;
    std::optional<CommError> PortTrouble;
    FlashOrder Order;
    FlashJob* Job = nullptr;
    std::function<void(FlashJob&)> OnOffer = [](FlashJob& job) { job.Answer(true); };
    std::function<void()> OnComparison = [] {};
    std::function<void(const BlockProgress&)> OnProgress = [](const BlockProgress&) {};
    std::vector<std::string> Lines;
    std::vector<std::string> Steps;
    JobResult Result;
};

TEST_F(FlashJobTest, ADownloadProgramsTheUnit) {
    EXPECT_TRUE(Run().Transfer.Succeeded());
    EXPECT_EQ(Unit->Flash(), SampleImage(Size));
    EXPECT_THAT(Steps, ElementsAre("result"));
}

TEST_F(FlashJobTest, ADownloadThatIsAlwaysVerifiedAsksNobody) {
    Order.Verify = FlashOrder::Verification::Always;
    const JobResult& job = Run();
    EXPECT_THAT(Steps, ElementsAre("read-back", "comparison", "Verifying was successfully.", "result"));
    ASSERT_TRUE(job.Verdict);
    EXPECT_TRUE(job.Verdict->IsMatch());
    EXPECT_FALSE(HasVerificationFile());
}

TEST_F(FlashJobTest, AVerificationThatIsDeclinedIsNotBegun) {
    Order.Verify = FlashOrder::Verification::Ask;
    OnOffer = [](FlashJob& job) { job.Answer(false); };
    EXPECT_FALSE(Run().VerificationBegun);
    EXPECT_THAT(Steps, ElementsAre("offer", "result"));
}

TEST_F(FlashJobTest, AnAnswerMayComeLater) {
    Order.Verify = FlashOrder::Verification::Ask;
    OnOffer = [this](FlashJob& job) { Loop.At(Loop.Time() + 30s, [&job] { job.Answer(true); }); };
    ASSERT_TRUE(Run().Verdict);
    EXPECT_TRUE(Result.Verdict->IsMatch());
}

TEST_F(FlashJobTest, ACancelledQuestionEndsTheJobWithoutAVerification) {
    Order.Verify = FlashOrder::Verification::Ask;
    OnOffer = [this](FlashJob& job) { Loop.At(Loop.Time() + 1s, [&job] { job.Cancel(); }); };
    EXPECT_FALSE(Run().VerificationBegun);
    EXPECT_TRUE(Result.Transfer.Succeeded());
}

TEST_F(FlashJobTest, AFailedProgrammingIsNotVerified) {
    Order.Verify = FlashOrder::Verification::Always;
    simulator::UnitOptions options;
    options.Flash = AnyBytes(Size);
    options.Faults = {{Fault::NoAnswer, 100}};
    Connect(std::move(options));
    EXPECT_EQ(Run().Transfer.Outcome, Outcome::TransmittingError);
    EXPECT_TRUE(Result.Transfer.LeavesFlashIncomplete());
    EXPECT_FALSE(Result.VerificationBegun);
}

TEST_F(FlashJobTest, ACancelledReadBackSaysSo) {
    Order.Verify = FlashOrder::Verification::Always;
    bool readsBack = false;
    OnProgress = [&](const BlockProgress& progress) {
        readsBack = readsBack || (Steps.size() == 1 && progress.Block == 10);
        if (readsBack) {
            Job->Cancel();
        }
    };
    EXPECT_TRUE(Run().Transfer.Succeeded());
    ASSERT_TRUE(Result.ReadBack);
    EXPECT_EQ(Result.ReadBack->Outcome, Outcome::Canceled);
    EXPECT_THAT(Steps, ElementsAre("read-back", "Verifying was canceled.", "result"));
}

TEST_F(FlashJobTest, AnotherContentIsCountedAndIsNoChangeOfTheImage) {
    Order.What = FlashOrder::Kind::Verify;
    Bytes flash = SampleImage(Size);
    flash[Size / 2] ^= std::byte{1};
    simulator::UnitOptions options;
    options.Flash = flash;
    Connect(std::move(options));
    ASSERT_TRUE(Run().Verdict);
    EXPECT_EQ(Result.Verdict->Differences, 1);
    EXPECT_FALSE(Result.ImageChanged);
}

TEST_F(FlashJobTest, AnImageIsReadOnce) {
    fs::remove(Folder.Path() / "image.bin");
    Order.Verify = FlashOrder::Verification::Always;
    EXPECT_TRUE(Run().Transfer.Succeeded());
    EXPECT_EQ(Unit->Flash(), SampleImage(Size));
    EXPECT_TRUE(Result.Verdict && Result.Verdict->IsMatch());
    EXPECT_FALSE(Result.ImageChanged);
}

TEST_F(FlashJobTest, AnImageThatChangedMeanwhileIsToldWhereTheUnitDiffers) {
    Order.What = FlashOrder::Kind::Verify;
    OnComparison = [this] { Folder.Write("image.bin", AnyBytes(Size)); };
    ASSERT_TRUE(Run().Verdict);
    EXPECT_FALSE(Result.Verdict->IsMatch());
    EXPECT_TRUE(Result.ImageChanged);
}

TEST_F(FlashJobTest, AReadBackWithoutAFileIsNotTried) {
    Order.Verify = FlashOrder::Verification::Always;
    Order.ProgramFolder = Folder.Path() / "none";
    EXPECT_TRUE(Run().VerificationBegun);
    EXPECT_FALSE(Result.ReadBack);
    EXPECT_THAT(Steps, ElementsAre("read-back", HasSubstr("no file can be made in"), "result"));
}

TEST_F(FlashJobTest, ABusyPortCostsNoFileThatAnUploadWouldReplace) {
    Order.What = FlashOrder::Kind::Upload;
    Order.Blocks = 2;
    Order.FileName = Order.Image.FileName;
    PortTrouble = CommError{CommErrorNumber::Busy, "in use"};
    EXPECT_EQ(Run().Transfer.Outcome, Outcome::PortError);
    EXPECT_EQ(ReadFile(Order.FileName), SampleImage(Size));
    EXPECT_THAT(Lines, Not(Contains("in use")));
}

TEST_F(FlashJobTest, AnErrorThatNobodyForesawEndsTheJobInOrder) {
    OnProgress = [](const BlockProgress& progress) {
        if (progress.Block == 10) {
            throw std::runtime_error("out of luck");
        }
    };
    EXPECT_EQ(Run().Unforeseen, "out of luck");
    EXPECT_FALSE(Result.Transfer.Succeeded());
    EXPECT_EQ(Result.Transfer.Blocks, 10);
    EXPECT_THAT(Steps, ElementsAre("result"));
}

}  // namespace burnwick::test
