#include "platform/windows/ComDevice.h"

#include <gmock/gmock.h>

#include <array>
#include <fstream>

#include "TestLine.h"
#include "platform/LoopHelpers.h"
#include "platform/MSComm.h"
#include "platform/windows/ComLine.h"
#include "platform/windows/WaitLoop.h"
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
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(Near_.Read(Room_), 0U);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 500ms);
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
    const auto name = Line_.Near();
    const auto path = L"\\\\.\\" + std::wstring(name.begin(), name.end());
    const auto speed = [&path] {
        const UniqueHandle port(
            CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        const auto line = port ? LineOf(port.Get()) : std::nullopt;
        return line ? line->BaudRate : 0;
    };
    const auto before = speed();
    OpenNear();
    EXPECT_TRUE(Near_.Apply({before == 115200 ? 57600U : 115200U, 'N', 8, 1}));
    Near_.Close();
    EXPECT_EQ(speed(), before);
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

// The last of all: the line is gone when it is over.
TEST_F(ComDeviceTest, ZAHangUpIsToldAndEverythingElseIsHarmlessAndQuick) {
    OpenNear();
    const std::string order = "hang up";
    Bytes bytes;
    for (const char c : order) {
        bytes.push_back(static_cast<std::byte>(c));
    }
    Far_.Write(bytes);
    const auto limit = std::chrono::steady_clock::now() + 5s;
    std::optional<std::size_t> got = 0;
    while (got && std::chrono::steady_clock::now() < limit) {
        WaitForSingleObject(reinterpret_cast<HANDLE>(*Near_.InputHandle()), 100);
        got = Near_.Read(Room_);
    }
    EXPECT_EQ(got, std::nullopt);
    EXPECT_EQ(Near_.Read(Room_), std::nullopt);
    const auto before = std::chrono::steady_clock::now();
    Near_.Write(AllByteValues());
    Near_.Apply({57600, 'N', 8, 1});
    Near_.DiscardInput();
    Near_.Close();
    EXPECT_LT(std::chrono::steady_clock::now() - before, 500ms);
}

}  // namespace
}  // namespace burnwick
