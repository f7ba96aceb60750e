#include "platform/serial/MSComm.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <deque>

namespace burnwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::byte> BytesOf(const std::string& text) {
    std::vector<std::byte> bytes(text.size());
    std::transform(text.begin(), text.end(), bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    return bytes;
}

// What became of the device, and what it is to do; outlives it.
struct DeviceRecord {
    std::string OpenedAs;
    bool Open = false;
    LineSettings Line;
    bool RefusesSettings = false;
    CommResult OpenError;
    std::vector<std::byte> Arrived;
    bool Gone = false;
    std::vector<std::vector<std::byte>> Written;
};

class FakeDevice final : public SerialDevice {
public:
    explicit FakeDevice(DeviceRecord& record) : Record_(record) {}

    CommResult Open(const std::string& path, const LineSettings& settings) override {
        Record_.OpenedAs = path;
        Record_.Line = settings;
        Record_.Open = !Record_.OpenError;
        return Record_.OpenError;
    }
    void Close() override { Record_.Open = false; }
    bool Apply(const LineSettings& settings) override {
        if (!Record_.RefusesSettings) {
            Record_.Line = settings;
        }
        return !Record_.RefusesSettings;
    }
    std::optional<std::size_t> Read(std::span<std::byte> room) override {
        if (Record_.Gone && Record_.Arrived.empty()) {
            return std::nullopt;
        }
        const auto count = std::min(room.size(), Record_.Arrived.size());
        const auto end = Record_.Arrived.begin() + static_cast<std::ptrdiff_t>(count);
        std::copy(Record_.Arrived.begin(), end, room.begin());
        Record_.Arrived.erase(Record_.Arrived.begin(), end);
        return count;
    }
    void Write(std::span<const std::byte> bytes) override {
        Record_.Written.emplace_back(bytes.begin(), bytes.end());
    }
    void DiscardInput() override { Record_.Arrived.clear(); }
    std::optional<WaitHandle> InputHandle() const override { return 7; }

private:
    DeviceRecord& Record_;
};

// A loop that holds one watch, and calls it back when told to.
class FakeLoop final : public MessageLoop {
public:
    void Yield(std::chrono::microseconds) override {
        if (Watching()) {
            Ready_();
        }
    }
    std::chrono::milliseconds MillisecondClock() const override { return {}; }
    std::tm Now() const override { return {}; }
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds, std::function<void()>) override {
        return nullptr;
    }
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override {
        auto watch = std::make_unique<FakeWatch>(Handle_);
        Handle_ = handle;
        Ready_ = std::move(ready);
        return watch;
    }

    bool Watching() const { return Handle_ != 0; }

private:
    struct FakeWatch final : Watch {
        explicit FakeWatch(WaitHandle& handle) : Handle(handle) {}
        FakeWatch(const FakeWatch&) = delete;
        FakeWatch& operator=(const FakeWatch&) = delete;
        ~FakeWatch() override { Handle = 0; }
        WaitHandle& Handle;
    };

    WaitHandle Handle_ = 0;
    std::function<void()> Ready_;
};

class MSCommTest : public testing::Test {
protected:
    MSCommTest() { NewControl(); }

    void NewControl() {
        Comm_ = std::make_unique<MSComm>(Loop_, std::make_unique<FakeDevice>(Device_),
                                         [](int port) { return "/dev/line" + std::to_string(port); });
    }

    static CommErrorNumber NumberOf(const CommResult& result) {
        return result ? result->Number : static_cast<CommErrorNumber>(0);
    }

    DeviceRecord Device_;
    FakeLoop Loop_;
    std::unique_ptr<MSComm> Comm_;
};

TEST_F(MSCommTest, OpensTheDeviceOfItsNumberWithItsSettings) {
    EXPECT_FALSE(Comm_->SetCommPort(16));
    EXPECT_FALSE(Comm_->SetSettings("57600,N,8,1"));
    EXPECT_FALSE(Comm_->SetPortOpen(true));
    EXPECT_TRUE(Comm_->PortOpen());
    EXPECT_EQ(Device_.OpenedAs, "/dev/line16");
    EXPECT_EQ(Device_.Line, (LineSettings{57600, 'N', 8, 1}));
}

TEST_F(MSCommTest, StartsOnCom1At9600InTextMode) {
    EXPECT_EQ(Comm_->CommPort(), 1);
    EXPECT_EQ(Comm_->Settings(), "9600,N,8,1");
    EXPECT_EQ(Comm_->InputMode(), InputMode::Text);
    EXPECT_FALSE(Comm_->PortOpen());
}

TEST_F(MSCommTest, RefusesNumbersThatNoPortHas) {
    for (const int port : {0, -1, 17}) {
        EXPECT_EQ(NumberOf(Comm_->SetCommPort(port)), CommErrorNumber::InvalidPortNumber);
    }
    EXPECT_EQ(Comm_->CommPort(), 1);
}

TEST_F(MSCommTest, RefusesAnotherNumberWhileThePortIsOpen) {
    Comm_->SetPortOpen(true);
    EXPECT_EQ(NumberOf(Comm_->SetCommPort(2)), CommErrorNumber::NotWhileOpen);
    EXPECT_EQ(Comm_->CommPort(), 1);
}

TEST_F(MSCommTest, RefusesToOpenOrCloseTwice) {
    EXPECT_EQ(NumberOf(Comm_->SetPortOpen(false)), CommErrorNumber::NotOpen);
    Comm_->SetPortOpen(true);
    EXPECT_EQ(NumberOf(Comm_->SetPortOpen(true)), CommErrorNumber::NotWhileOpen);
    EXPECT_TRUE(Comm_->PortOpen());
}

TEST_F(MSCommTest, GivesTheDevicesOwnErrorAndStaysClosed) {
    Device_.OpenError = CommError{CommErrorNumber::Busy, "/dev/line1 is in use"};
    const auto result = Comm_->SetPortOpen(true);
    EXPECT_EQ(NumberOf(result), CommErrorNumber::Busy);
    EXPECT_FALSE(Comm_->PortOpen());
    EXPECT_FALSE(Loop_.Watching());
}

TEST_F(MSCommTest, AnUnreadableSettingsTextLeavesTextAndLine) {
    Comm_->SetPortOpen(true);
    const auto result = Comm_->SetSettings("quickly");
    EXPECT_EQ(NumberOf(result), CommErrorNumber::UnusableSettings);
    EXPECT_THAT(result.value_or(CommError{}).Description, HasSubstr("quickly"));
    EXPECT_EQ(Comm_->Settings(), "9600,N,8,1");
    EXPECT_EQ(Device_.Line, LineSettings{});
}

TEST_F(MSCommTest, SettingsThatTheLineRefusesLeaveTheText) {
    Comm_->SetPortOpen(true);
    Device_.RefusesSettings = true;
    EXPECT_EQ(NumberOf(Comm_->SetSettings("115200,N,8,1")), CommErrorNumber::UnusableSettings);
    EXPECT_EQ(Comm_->Settings(), "9600,N,8,1");
}

TEST_F(MSCommTest, ChangesTheSpeedOfAnOpenLineAtOnce) {
    Comm_->SetPortOpen(true);
    EXPECT_FALSE(Comm_->SetSettings("115200,N,8,1"));
    EXPECT_EQ(Device_.Line.Baud, 115200U);
    EXPECT_EQ(Comm_->Settings(), "115200,N,8,1");
}

TEST_F(MSCommTest, InputSurvivesAChangeOfSettingsAndManyCounts) {
    Comm_->SetPortOpen(true);
    Device_.Arrived = BytesOf("abc");
    EXPECT_EQ(Comm_->InBufferCount(), 3U);
    Comm_->SetSettings("57600,N,8,1");
    Device_.Arrived = BytesOf("de");
    EXPECT_EQ(Comm_->InBufferCount(), 5U);
    EXPECT_EQ(Comm_->Input(), BytesOf("abcde"));
    EXPECT_EQ(Comm_->InBufferCount(), 0U);
}

TEST_F(MSCommTest, TakesMoreThanTheDeviceGivesAtOnce) {
    Comm_->SetPortOpen(true);
    Device_.Arrived = BytesOf(std::string(5000, 'x'));
    EXPECT_EQ(Comm_->InBufferCount(), 5000U);
}

TEST_F(MSCommTest, DiscardingDropsWhatWasTakenAndWhatStillWaits) {
    Comm_->SetPortOpen(true);
    Device_.Arrived = BytesOf("taken");
    Comm_->InBufferCount();
    Device_.Arrived = BytesOf("waiting");
    Comm_->DiscardInput();
    EXPECT_THAT(Comm_->Input(), IsEmpty());
}

TEST_F(MSCommTest, EachMessageIsOneWrite) {
    Comm_->SetPortOpen(true);
    Comm_->Output(BytesOf("one"));
    Comm_->Output(BytesOf("two"));
    EXPECT_THAT(Device_.Written, ElementsAre(BytesOf("one"), BytesOf("two")));
}

TEST_F(MSCommTest, TheOutputCountIsBookkeepingAlone) {
    Comm_->SetPortOpen(true);
    Comm_->Output(BytesOf("12345"));
    Comm_->Output(BytesOf("678"));
    EXPECT_EQ(Comm_->OutBufferCount(), 8U);
    Comm_->ResetOutBufferCount();
    EXPECT_EQ(Comm_->OutBufferCount(), 0U);
    EXPECT_THAT(Device_.Written, ElementsAre(BytesOf("12345"), BytesOf("678")));
}

TEST_F(MSCommTest, OutputOnAClosedPortIsLost) {
    Comm_->Output(BytesOf("x"));
    EXPECT_THAT(Device_.Written, IsEmpty());
    EXPECT_EQ(Comm_->OutBufferCount(), 0U);
}

TEST_F(MSCommTest, OldInputIsGoneWhenThePortOpensAgain) {
    Comm_->SetPortOpen(true);
    Device_.Arrived = BytesOf("old");
    Comm_->InBufferCount();
    Comm_->SetPortOpen(false);
    Comm_->SetPortOpen(true);
    EXPECT_EQ(Comm_->InBufferCount(), 0U);
}

TEST_F(MSCommTest, IsWatchedForInputWhileOpen) {
    Comm_->SetPortOpen(true);
    EXPECT_TRUE(Loop_.Watching());
    Device_.Arrived = BytesOf("x");
    Loop_.Yield({});
    EXPECT_THAT(Device_.Arrived, IsEmpty());
    EXPECT_EQ(Comm_->InBufferCount(), 1U);
    Comm_->SetPortOpen(false);
    EXPECT_FALSE(Loop_.Watching());
}

TEST_F(MSCommTest, ALineThatIsGoneIsWatchedNoMoreButItsLastBytesAreKept) {
    Comm_->SetPortOpen(true);
    Device_.Arrived = BytesOf("last");
    Device_.Gone = true;
    Loop_.Yield({});
    Loop_.Yield({});
    EXPECT_FALSE(Loop_.Watching());
    EXPECT_EQ(Comm_->Input(), BytesOf("last"));
    EXPECT_TRUE(Comm_->PortOpen());
}

TEST_F(MSCommTest, ClosesItsDeviceWithItself) {
    Comm_->SetPortOpen(true);
    Comm_.reset();
    EXPECT_FALSE(Device_.Open);
    EXPECT_FALSE(Loop_.Watching());
}

}  // namespace
}  // namespace burnwick
