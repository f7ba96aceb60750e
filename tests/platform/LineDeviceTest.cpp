#include "platform/serial/LineDevice.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace burnwick {
namespace {

using Calls = std::vector<std::string>;

// A device whose calls are written down.
class RecordedDevice final : public LineDevice {
public:
    using LineDevice::Unsent;

    ~RecordedDevice() override { Close(); }

    void DiscardInput() override { Calls_.emplace_back("discard"); }
    std::optional<WaitHandle> InputHandle() const override { return std::nullopt; }

    Calls TakeCalls() { return std::exchange(Calls_, {}); }

    CommResult Trouble;          // what preparing says
    bool CanBeSet = true;        // to any settings
    bool IsThere = true;         // else nothing can be received
    std::vector<Unsent> Output;  // what is unsent, one answer after the other

private:
    CommResult Take(const std::string& /*path*/) override {
        Calls_.emplace_back("take");
        IsOpen_ = true;
        return {};
    }
    CommResult Prepare(const std::string& /*path*/, const LineSettings& settings) override {
        Calls_.emplace_back("prepare");
        Apply(settings);
        return Trouble;
    }
    void Release() override {
        Calls_.emplace_back("release");
        IsOpen_ = false;
    }
    bool IsOpen() const override { return IsOpen_; }
    bool SetTo(const LineSettings& settings) override {
        Calls_.push_back("set " + ToText(settings));
        return CanBeSet;
    }
    std::optional<std::size_t> Receive(std::span<std::byte> room) override {
        Calls_.emplace_back("receive");
        return IsThere ? std::optional(room.size()) : std::nullopt;
    }
    void Send(std::span<const std::byte> bytes) override {
        Calls_.push_back("send " + std::to_string(bytes.size()));
    }
    Unsent UnsentOutput() override {
        Calls_.emplace_back("unsent");
        const Unsent unsent = Output.front();
        Output.erase(Output.begin());
        return unsent;
    }

    bool IsOpen_ = false;
    Calls Calls_;
};

class LineDeviceTest : public testing::Test {
protected:
    void Open() {
        ASSERT_FALSE(Device_.Open("line", {}));
        Device_.TakeCalls();
    }

    RecordedDevice Device_;
    std::array<std::byte, 3> Bytes_{};
};

TEST_F(LineDeviceTest, IsTakenBeforeItIsTouched) {
    EXPECT_FALSE(Device_.Open("line", {57600, 'N', 8, 1}));
    EXPECT_EQ(Device_.TakeCalls(), (Calls{"take", "prepare", "set 57600,N,8,1"}));
}

TEST_F(LineDeviceTest, OneThatCannotBePreparedIsReleased) {
    Device_.Trouble = CommError{CommErrorNumber::Broken, "no"};
    EXPECT_EQ(Device_.Open("line", {}).value_or(CommError{}).Description, "no");
    EXPECT_EQ(Device_.TakeCalls().back(), "release");
    EXPECT_EQ(Device_.Read(Bytes_), std::nullopt);
}

TEST_F(LineDeviceTest, OpeningAnotherReleasesTheOneThatIsOpen) {
    Open();
    EXPECT_FALSE(Device_.Open("other", {}));
    EXPECT_EQ(Device_.TakeCalls().front(), "release");
}

TEST_F(LineDeviceTest, AClosedOneIsNotAskedForAnything) {
    Device_.Write(Bytes_);
    Device_.Close();
    EXPECT_FALSE(Device_.Apply({}));
    EXPECT_EQ(Device_.Read(Bytes_), std::nullopt);
    EXPECT_EQ(Device_.TakeCalls(), Calls{});
}

TEST_F(LineDeviceTest, ALineThatIsGoneIsNeitherReadNorWrittenNorWaitedFor) {
    Open();
    Device_.Write(Bytes_);
    Device_.IsThere = false;
    EXPECT_EQ(Device_.Read(Bytes_), std::nullopt);
    Device_.IsThere = true;
    EXPECT_EQ(Device_.Read(Bytes_), std::nullopt);
    Device_.Write(Bytes_);
    Device_.Close();
    EXPECT_EQ(Device_.TakeCalls(), (Calls{"send 3", "receive", "release"}));
}

TEST_F(LineDeviceTest, ALineThatWasGoneIsThereAgainWhenItIsOpenedAgain) {
    Open();
    Device_.IsThere = false;
    EXPECT_EQ(Device_.Read(Bytes_), std::nullopt);
    Device_.IsThere = true;
    Open();
    EXPECT_EQ(Device_.Read(Bytes_), 3U);
}

TEST_F(LineDeviceTest, NothingAtAllIsNeitherReadNorWritten) {
    Open();
    EXPECT_EQ(Device_.Read({}), 0U);
    Device_.Write({});
    Device_.Close();
    EXPECT_EQ(Device_.TakeCalls(), Calls{"release"});
}

TEST_F(LineDeviceTest, IsReleasedWhenItsOutputHasLeft) {
    using enum RecordedDevice::Unsent;
    Open();
    Device_.Write(Bytes_);
    Device_.Output = {Some, Some, None};
    Device_.Close();
    EXPECT_EQ(Device_.TakeCalls(), (Calls{"send 3", "unsent", "unsent", "unsent", "release"}));
}

TEST_F(LineDeviceTest, ADriverThatDoesNotSeeItsChipIsAskedNoFurther) {
    using enum RecordedDevice::Unsent;
    Open();
    Device_.Write(Bytes_);
    Device_.Output = {Some, Unknown};
    Device_.Close();
    EXPECT_EQ(Device_.TakeCalls(), (Calls{"send 3", "unsent", "unsent", "release"}));
}

TEST_F(LineDeviceTest, OutputThatNeverLeavesIsGivenUp) {
    Open();
    Device_.Write(Bytes_);
    Device_.Output.assign(100'000, RecordedDevice::Unsent::Some);
    Device_.Close();
    EXPECT_EQ(Device_.TakeCalls().back(), "release");
}

}  // namespace
}  // namespace burnwick
