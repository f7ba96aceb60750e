#include "platform/serial/windows/ComDevice.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <tuple>

#include "Child.h"
#include "TestLine.h"
#include "platform/LoopHelpers.h"
#include "platform/loop/windows/WaitLoop.h"
#include "platform/process/windows/WideText.h"
#include "platform/serial/MSComm.h"
#include "platform/serial/windows/ComErrors.h"
#include "platform/serial/windows/ComLine.h"
#include "support/Elapsed.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using testing::HasSubstr;
using namespace std::chrono_literals;
using Bytes = std::vector<std::byte>;

Bytes AllByteValues() {
    Bytes bytes(256);
    for (std::size_t value = 0; value < bytes.size(); ++value) {
        bytes[value] = static_cast<std::byte>(value);
    }
    return bytes;
}

const CommError success{static_cast<CommErrorNumber>(0), ""};

// Both ends of the line, each as the program has it.
class ComDeviceTest : public testing::Test {
protected:
    void SetUp() override {
        if (!Line_.Exists()) {
            GTEST_SKIP() << test::TestLine::WhyNot;
        }
        ASSERT_EQ(Far_.Open(Line_.Far(), {}).value_or(success).Description, "");
    }

    void OpenNear() { ASSERT_EQ(Near_.Open(Line_.Near(), {}).value_or(success).Description, ""); }

    // What any program is told of the near end, as long as the system hands a port to several.
    DCB NearLine() const {
        const auto path = WideText("\\\\.\\" + Line_.Near());
        const UniqueHandle port(
            CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        return (port ? LineOf(port.Get()) : std::nullopt).value_or(DCB{});
    }

    // The cable takes orders.
    void Order(const std::string& what) {
        Bytes bytes(what.size());
        std::transform(what.begin(), what.end(), bytes.begin(),
                       [](char c) { return static_cast<std::byte>(c); });
        Far_.Write(bytes);
    }

    // Both lines are gone, and new ones are in their place. Ten seconds at most.
    bool HangUp() {
        Order("hang up");
        return IsGone(Far_);
    }

    static bool IsGone(ComDevice& device) {
        std::array<std::byte, 512> room{};
        const auto limit = std::chrono::steady_clock::now() + 10s;
        while (device.Read(room) && std::chrono::steady_clock::now() < limit) {
            WaitForSingleObject(reinterpret_cast<HANDLE>(*device.InputHandle()), 10);
        }
        return !device.Read(room);
    }

    // Waits as a loop does, until so many bytes are there, five seconds at most.
    static Bytes Receive(ComDevice& device, std::size_t count) {
        Bytes bytes;
        std::array<std::byte, 512> room{};
        const auto limit = std::chrono::steady_clock::now() + 5s;
        while (bytes.size() < count && std::chrono::steady_clock::now() < limit) {
            WaitForSingleObject(reinterpret_cast<HANDLE>(*device.InputHandle()), 1000);
            const auto got = device.Read(room);
            if (!got) {
                break;
            }
            bytes.insert(bytes.end(), room.begin(), room.begin() + static_cast<std::ptrdiff_t>(*got));
        }
        return bytes;
    }

    test::TestLine Line_;
    ComDevice Near_;
    ComDevice Far_;
    std::array<std::byte, 512> Room_{};
};

TEST_F(ComDeviceTest, EveryByteValueArrivesUnchangedBothWays) {
    OpenNear();
    Near_.Write(AllByteValues());
    EXPECT_EQ(Receive(Far_, 256), AllByteValues());
    Far_.Write(AllByteValues());
    EXPECT_EQ(Receive(Near_, 256), AllByteValues());
}

TEST_F(ComDeviceTest, ReadingDoesNotWait) {
    OpenNear();
    EXPECT_LT(
        test::Shortest(10, [this] { return test::Elapsed([this] { EXPECT_EQ(Near_.Read(Room_), 0U); }); }),
        500ms);
}

TEST_F(ComDeviceTest, WhatOneReadLeavesIsToldOfAgain) {
    OpenNear();
    Far_.Write(AllByteValues());
    Bytes bytes;
    std::array<std::byte, 7> small{};
    while (bytes.size() < 256) {
        auto* const handle = reinterpret_cast<HANDLE>(*Near_.InputHandle());
        ASSERT_EQ(WaitForSingleObject(handle, 5000), WAIT_OBJECT_0);
        const auto got = Near_.Read(small);
        ASSERT_TRUE(got);
        bytes.insert(bytes.end(), small.begin(), small.begin() + static_cast<std::ptrdiff_t>(*got));
    }
    EXPECT_EQ(bytes, AllByteValues());
}

TEST_F(ComDeviceTest, MessagesKeepTheirOrder) {
    OpenNear();
    Bytes expected;
    for (unsigned message = 0; message < 50; ++message) {
        const Bytes bytes(1 + message, static_cast<std::byte>(message));
        expected.insert(expected.end(), bytes.begin(), bytes.end());
        Near_.Write(bytes);
    }
    EXPECT_EQ(Receive(Far_, expected.size()), expected);
}

TEST_F(ComDeviceTest, WhatWasWrittenLeavesBeforeThePortIsClosed) {
    OpenNear();
    Near_.Write(AllByteValues());
    Near_.Close();
    EXPECT_EQ(Receive(Far_, 256), AllByteValues());
}

TEST_F(ComDeviceTest, WhatArrivedBeforeOpeningIsDropped) {
    Far_.Write(AllByteValues());
    Far_.Close();
    ASSERT_FALSE(Far_.Open(Line_.Far(), {}));
    Sleep(200);
    OpenNear();
    EXPECT_EQ(Near_.Read(Room_), 0U);
}

TEST_F(ComDeviceTest, DiscardingDropsInputAndNotOutput) {
    OpenNear();
    Far_.Write(AllByteValues());
    WaitForSingleObject(reinterpret_cast<HANDLE>(*Near_.InputHandle()), 5000);
    Sleep(200);
    Near_.Write(AllByteValues());
    Near_.DiscardInput();
    EXPECT_EQ(Near_.Read(Room_), 0U);
    EXPECT_EQ(Receive(Far_, 256), AllByteValues());
}

TEST_F(ComDeviceTest, ASecondOpenIsRefusedAsBusy) {
    if (test::TestLine::IsShared()) {
        GTEST_SKIP() << "this system hands a port to whoever asks";
    }
    OpenNear();
    ComDevice other;
    const auto error = other.Open(Line_.Near(), {}).value_or(success);
    EXPECT_EQ(error.Number, CommErrorNumber::Busy);
    EXPECT_THAT(error.Description, HasSubstr(Line_.Near() + " is in use by another program"));
}

TEST_F(ComDeviceTest, CanBeOpenedAgainAfterClosing) {
    for (int round = 0; round < 3; ++round) {
        OpenNear();
        Near_.Close();
        Near_.Close();
    }
}

TEST_F(ComDeviceTest, ChangesTheSpeedWhileOpen) {
    OpenNear();
    EXPECT_TRUE(Near_.Apply({115200, 'N', 8, 1}));
    EXPECT_TRUE(Near_.Apply({57600, 'N', 8, 1}));
    Near_.Write(AllByteValues());
    EXPECT_EQ(Receive(Far_, 256), AllByteValues());
}

TEST_F(ComDeviceTest, ClosingPutsTheLinesSettingsBack) {
    const auto before = NearLine().BaudRate;
    OpenNear();
    EXPECT_TRUE(Near_.Apply({before == 115200 ? 57600U : 115200U, 'N', 8, 1}));
    Near_.Close();
    EXPECT_EQ(NearLine().BaudRate, before);
}

TEST_F(ComDeviceTest, AFrameThatTheLineCannotHaveLeavesTheLine) {
    if (!test::TestLine::HasEightBitsOnly()) {
        GTEST_SKIP() << "this line can have any frame";
    }
    ASSERT_FALSE(Near_.Open(Line_.Near(), {57600, 'N', 8, 1}));
    EXPECT_FALSE(Near_.Apply({9600, 'E', 7, 1}));
    const auto line = NearLine();
    EXPECT_EQ(std::tuple(line.BaudRate, line.ByteSize, line.Parity, line.StopBits),
              std::tuple(57600U, 8, NOPARITY, ONESTOPBIT));
    Near_.Write(AllByteValues());
    EXPECT_EQ(Receive(Far_, 256), AllByteValues());
}

TEST_F(ComDeviceTest, OpeningWithAFrameThatTheLineCannotHaveSaysSoAndPutsTheLineBack) {
    if (!test::TestLine::HasEightBitsOnly()) {
        GTEST_SKIP() << "this line can have any frame";
    }
    const auto before = NearLine();
    const LineSettings other{before.BaudRate == 9600 ? 57600U : 9600U, 'E', 7, 1};
    const auto error = Near_.Open(Line_.Near(), other).value_or(success);
    EXPECT_EQ(error.Number, CommErrorNumber::UnusableSettings);
    EXPECT_THAT(error.Description, HasSubstr(Line_.Near()));
    EXPECT_THAT(error.Description, HasSubstr(ToText(other)));
    const auto after = NearLine();
    EXPECT_EQ(std::tuple(after.BaudRate, after.ByteSize, after.Parity),
              std::tuple(before.BaudRate, before.ByteSize, before.Parity));
    OpenNear();
}

TEST_F(ComDeviceTest, WaitingForInputUsesNextToNoProcessor) {
    WaitLoop loop;
    MSComm comm(loop, std::make_unique<ComDevice>(), [this](int) { return Line_.Near(); });
    ASSERT_FALSE(comm.SetPortOpen(true));
    test::YieldFor(loop, 50ms);
    const auto before = test::ProcessorTime();
    EXPECT_LT(test::YieldFor(loop, 500ms), 5);
    EXPECT_LT(test::ProcessorTime() - before, 100ms);
}

TEST_F(ComDeviceTest, InputEndsTheSleepOfTheLoop) {
    WaitLoop loop;
    MSComm comm(loop, std::make_unique<ComDevice>(), [this](int) { return Line_.Near(); });
    ASSERT_FALSE(comm.SetPortOpen(true));
    for (int round = 0; round < 20; ++round) {
        const auto before = loop.MillisecondClock();
        Far_.Write(Bytes(1));
        while (comm.InBufferCount() == 0 && loop.MillisecondClock() - before < 30s) {
            loop.Yield(60s);
        }
        EXPECT_LT(loop.MillisecondClock() - before, 5s);
        EXPECT_EQ(comm.Input().size(), 1U);
    }
}

TEST_F(ComDeviceTest, AHangUpIsToldAndEverythingElseIsHarmlessAndQuick) {
    OpenNear();
    ASSERT_TRUE(HangUp());
    EXPECT_TRUE(IsGone(Near_));
    EXPECT_EQ(Near_.Read(Room_), std::nullopt);
    const auto use = [this] {
        return test::Elapsed([this] {
            Near_.Write(AllByteValues());
            Near_.Apply({57600, 'N', 8, 1});
            Near_.DiscardInput();
        });
    };
    EXPECT_LT(test::Shortest(10, use), 500ms);
    EXPECT_LT(test::Elapsed([this] { Near_.Close(); }), test::HangLimit);
}

TEST_F(ComDeviceTest, AHangUpDoesNotMakeTheLoopSpin) {
    WaitLoop loop;
    MSComm comm(loop, std::make_unique<ComDevice>(), [this](int) { return Line_.Near(); });
    ASSERT_FALSE(comm.SetPortOpen(true));
    ASSERT_TRUE(HangUp());
    test::YieldFor(loop, 50ms);
    EXPECT_LT(test::YieldFor(loop, 50ms), 5);
}

TEST_F(ComDeviceTest, APortWhoseLineIsGoneCanBeOpenedAgainWhenItIsBack) {
    OpenNear();
    ASSERT_TRUE(HangUp());
    ASSERT_TRUE(IsGone(Near_));
    OpenNear();
    ASSERT_FALSE(Far_.Open(Line_.Far(), {}));
    Near_.Write(AllByteValues());
    EXPECT_EQ(Receive(Far_, 256), AllByteValues());
}

TEST_F(ComDeviceTest, AnOtherEndThatNeverReadsHoldsUpNeitherWriteNorCloseForLong) {
    OpenNear();
    Order("stop reading");
    ASSERT_EQ(Receive(Near_, 12).size(), 12U);
    constexpr std::size_t tooMuch = 1 << 20;
    Near_.Write(Bytes(tooMuch));
    const auto first = std::chrono::steady_clock::now();
    Near_.Write(Bytes(tooMuch));
    const auto second = std::chrono::steady_clock::now();
    EXPECT_LT(second - first, test::HangLimit);
    Near_.Close();
    EXPECT_LT(std::chrono::steady_clock::now() - second, test::HangLimit);
    OpenNear();
    EXPECT_TRUE(HangUp());
}

TEST_F(ComDeviceTest, AWriteThatTheDriverTakesInPartsArrivesWhole) {
    OpenNear();
    constexpr std::size_t size = 1 << 17;
    Near_.Write(Bytes(size, std::byte{0xA5}));
    EXPECT_EQ(Receive(Far_, size), Bytes(size, std::byte{0xA5}));
}

// Without a line.

TEST(ComDeviceWithoutALine, AMissingPortIsNamedAsMissing) {
    ComDevice device;
    const auto error = device.Open("\\\\.\\COM255", {}).value_or(success);
    EXPECT_EQ(error.Number, CommErrorNumber::NotSerial);
    EXPECT_EQ(error.Description, "COM255: no such device: is the adapter plugged in?");
}

// What a driver says to whoever comes second is said of a folder, too; a port that is one is a taken port.
TEST(ComDeviceWithoutALine, APortThatIsDeniedIsBusy) {
    const char* port = std::getenv("BURNWICK_DENIED");
    if (port == nullptr) {
        GTEST_SKIP() << "BURNWICK_DENIED names no port that the system denies";
    }
    ComDevice device;
    const auto error = device.Open(port, {}).value_or(success);
    EXPECT_EQ(error.Number, CommErrorNumber::Busy);
    EXPECT_THAT(error.Description, HasSubstr(std::string(port) + " is in use by another program ("));
}

TEST(ComDeviceWithoutALine, APortThatAnotherProcessHoldsIsBusyUntilThatHasEnded) {
    const char* port = std::getenv("BURNWICK_HELD");
    if (port == nullptr) {
        GTEST_SKIP() << "BURNWICK_HELD names no port that is a file";
    }
    const std::string path = "\\\\.\\" + std::string(port);
    test::Child holder(test::Child::Doing(L"hold " + std::wstring(path.begin(), path.end())));
    ASSERT_EQ(holder.Line(), "held");
    ComDevice device;
    const auto error = device.Open(path, {}).value_or(success);
    EXPECT_EQ(error.Number, CommErrorNumber::Busy);
    EXPECT_EQ(error.Description, std::string(port) + " is in use by another program ("
                                     + SystemMessage(ERROR_SHARING_VIOLATION)
                                     + "): close that program, or choose another port");
    holder.Kill();
    EXPECT_EQ(device.Open(path, {}).value_or(success).Number, CommErrorNumber::NotSerial);
}

TEST(ComDeviceWithoutALine, OtherDevicesAndFoldersAreNoSerialPorts) {
    const test::TempFolder folder;
    for (const std::string& path : {std::string("NUL"), folder.Path().string()}) {
        ComDevice device;
        EXPECT_EQ(device.Open(path, {}).value_or(success).Number, CommErrorNumber::NotSerial) << path;
    }
}

TEST(ComDeviceWithoutALine, AHostilePathIsAnError) {
    for (const std::string& path : {std::string(), std::string(4000, 'x'), std::string("\\\\.\\"),
                                    std::string("a\nb"), std::string("\xFF\xFE\\"), std::string("<&>")}) {
        ComDevice device;
        EXPECT_TRUE(device.Open(path, {})) << path;
        EXPECT_FALSE(device.InputHandle());
    }
}

TEST(ComDeviceWithoutALine, APlainFileIsNoSerialPortAndStaysAsItWas) {
    const test::TempFolder folder;
    const auto path = folder.Path() / "image.bin";
    std::ofstream(path) << "precious";
    const auto before = std::filesystem::last_write_time(path);
    ComDevice device;
    EXPECT_EQ(device.Open(path.string(), {}).value_or(success).Number, CommErrorNumber::NotSerial);
    EXPECT_EQ(std::filesystem::file_size(path), 8U);
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
}

TEST(ComDeviceWithoutALine, AClosedDeviceTakesEverythingWithoutAWord) {
    ComDevice device;
    device.Write(Bytes(1));
    device.DiscardInput();
    device.Close();
    EXPECT_FALSE(device.Apply({}));
    std::array<std::byte, 1> room{};
    EXPECT_EQ(device.Read(room), std::nullopt);
    EXPECT_EQ(device.InputHandle(), std::nullopt);
}

}  // namespace
}  // namespace burnwick
