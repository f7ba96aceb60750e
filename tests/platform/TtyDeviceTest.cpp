#include "platform/serial/linux/TtyDevice.h"

#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "ChildProcess.h"
#include "PseudoTerminal.h"
#include "platform/loop/linux/PollLoop.h"
#include "platform/serial/MSComm.h"
#include "support/Elapsed.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::AllByteValues;
using test::ChildProcess;
using test::PseudoTerminal;
using test::TempFolder;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const CommError success{static_cast<CommErrorNumber>(0), "success"};

class TtyDeviceTest : public testing::Test {
protected:
    CommError Failure(const std::string& path) {
        TtyDevice device;
        auto error = device.Open(path, {}).value_or(success);
        EXPECT_THAT(error.Description, StartsWith(path));
        EXPECT_THAT(error.Description, Not(EndsWith(".")));
        EXPECT_THAT(error.Description, Not(HasSubstr("\n")));
        EXPECT_EQ(device.InputHandle(), std::nullopt);
        return error;
    }

    // What arrives, until it is so much or five seconds are over.
    std::vector<std::byte> ReadAll(std::size_t count) {
        std::vector<std::byte> bytes(count);
        std::size_t have = 0;
        pollfd input{static_cast<int>(Device_.InputHandle().value_or(-1)), POLLIN, 0};
        while (have < count && poll(&input, 1, 5000) > 0) {
            const auto got = Device_.Read(std::span(bytes).subspan(have));
            if (!got) {
                break;
            }
            have += *got;
        }
        bytes.resize(have);
        return bytes;
    }

    void WaitUntilReady() {
        pollfd input{static_cast<int>(Device_.InputHandle().value_or(-1)), POLLIN, 0};
        EXPECT_EQ(poll(&input, 1, 5000), 1);
    }

    PseudoTerminal Pty_;
    TtyDevice Device_;
    std::array<std::byte, 64> Room_{};
};

TEST_F(TtyDeviceTest, EveryByteValueLeavesUnchanged) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    Device_.Write(AllByteValues());
    EXPECT_EQ(Pty_.Receive(256), AllByteValues());
    EXPECT_TRUE(Pty_.Silent());
}

TEST_F(TtyDeviceTest, EveryByteValueArrivesUnchangedAndIsNotEchoed) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    Pty_.Send(AllByteValues());
    EXPECT_EQ(ReadAll(256), AllByteValues());
    EXPECT_TRUE(Pty_.Silent());
}

TEST_F(TtyDeviceTest, ReadingDoesNotWait) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    EXPECT_EQ(Device_.Read(Room_), 0U);
}

TEST_F(TtyDeviceTest, SetsTheSpeedOfTheLine) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {9600, 'N', 8, 1}));
    auto line = Pty_.Line();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B9600));
    EXPECT_TRUE(Device_.Apply({115200, 'N', 8, 1}));
    line = Pty_.Line();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B115200));
    EXPECT_EQ(cfgetispeed(&line), static_cast<speed_t>(B115200));
}

TEST_F(TtyDeviceTest, UsesNoFlowControlAndIgnoresModemLines) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    const auto line = Pty_.Line();
    EXPECT_EQ(line.c_cflag & (CLOCAL | CREAD | CRTSCTS), static_cast<tcflag_t>(CLOCAL | CREAD));
    EXPECT_EQ(line.c_iflag & (IXON | IXOFF | IXANY), 0U);
}

TEST_F(TtyDeviceTest, AnUnusableSpeedLeavesTheLine) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {57600, 'N', 8, 1}));
    EXPECT_FALSE(Device_.Apply({12345, 'N', 8, 1}));
    const auto line = Pty_.Line();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B57600));
}

TEST_F(TtyDeviceTest, AFrameThatTheLineCannotHaveLeavesTheLine) {
    // A pseudo-terminal has eight bits without parity, and takes the other half of such a change silently.
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {57600, 'N', 8, 1}));
    EXPECT_FALSE(Device_.Apply({9600, 'E', 7, 1}));
    const auto line = Pty_.Line();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B57600));
}

TEST_F(TtyDeviceTest, OpeningWithAnUnusableSpeedSaysSoAndPutsTheLineBack) {
    const auto error = Device_.Open(Pty_.Path(), {12345, 'N', 8, 1}).value_or(success);
    EXPECT_EQ(error.Number, CommErrorNumber::UnusableSettings);
    EXPECT_THAT(error.Description, HasSubstr("12345,N,8,1"));
    EXPECT_NE(Pty_.Line().c_lflag & ICANON, 0U);
    EXPECT_FALSE(TtyDevice().Open(Pty_.Path(), {}));
}

TEST_F(TtyDeviceTest, ClosingPutsTheLinesSettingsBack) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    EXPECT_EQ(Pty_.Line().c_lflag & (ICANON | ECHO), 0U);
    Device_.Close();
    const auto line = Pty_.Line();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B19200));
    EXPECT_NE(line.c_lflag & ICANON, 0U);
    EXPECT_NE(line.c_lflag & ECHO, 0U);
}

TEST_F(TtyDeviceTest, EndingPutsTheLinesSettingsBack) {
    {
        TtyDevice device;
        ASSERT_FALSE(device.Open(Pty_.Path(), {}));
    }
    const auto line = Pty_.Line();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B19200));
    EXPECT_NE(line.c_lflag & ICANON, 0U);
}

TEST_F(TtyDeviceTest, CanBeOpenedAgainAfterClosing) {
    for (int round = 0; round < 3; ++round) {
        ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
        Device_.Close();
        Device_.Close();
    }
}

TEST_F(TtyDeviceTest, WhatArrivedBeforeOpeningIsDropped) {
    Pty_.Send(AllByteValues());
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    EXPECT_EQ(Device_.Read(Room_), 0U);
}

TEST_F(TtyDeviceTest, DiscardingDropsInputAndNotOutput) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    Device_.Write(AllByteValues());
    Pty_.Send(AllByteValues());
    WaitUntilReady();
    Device_.DiscardInput();
    EXPECT_EQ(Device_.Read(Room_), 0U);
    EXPECT_EQ(Pty_.Receive(256), AllByteValues());
}

TEST_F(TtyDeviceTest, ASecondOpenIsRefusedAndNamesTheHolder) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    const auto error = Failure(Pty_.Path());
    EXPECT_EQ(error.Number, CommErrorNumber::Busy);
    EXPECT_THAT(error.Description,
                HasSubstr("is in use by platform_tests (process " + std::to_string(getpid()) + ")"));
    EXPECT_EQ(Device_.Read(Room_), 0U);
}

TEST_F(TtyDeviceTest, IsRefusedToTheUserAsToTheSystemsOwn) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "another user can only be taken on by root";
    }
    ASSERT_EQ(chmod(Pty_.Path().c_str(), 0666), 0);
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    ASSERT_EQ(seteuid(65534), 0);
    const auto error = Failure(Pty_.Path());
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_EQ(error.Number, CommErrorNumber::Busy);
}

TEST_F(TtyDeviceTest, ADeviceThatAnotherProcessLockedIsBusy) {
    const ChildProcess holder([this] {
        const int fd = open(Pty_.Path().c_str(), O_RDWR | O_NOCTTY);
        flock(fd, LOCK_EX);
    });
    const auto error = Failure(Pty_.Path());
    EXPECT_EQ(error.Number, CommErrorNumber::Busy);
    EXPECT_THAT(error.Description, HasSubstr("(process " + std::to_string(holder.Process()) + ")"));
}

TEST_F(TtyDeviceTest, AMissingDeviceIsNamedAsMissing) {
    const auto error = Failure("/dev/ttyUSB-none");
    EXPECT_EQ(error.Number, CommErrorNumber::NotSerial);
    EXPECT_THAT(error.Description, HasSubstr("no such device: is the adapter plugged in?"));
}

TEST_F(TtyDeviceTest, ADirectoryIsNoSerialPort) {
    const auto error = Failure("/tmp");
    EXPECT_EQ(error.Number, CommErrorNumber::NotSerial);
    EXPECT_THAT(error.Description, HasSubstr("is not a serial port"));
}

TEST_F(TtyDeviceTest, AnotherDeviceIsNoSerialPort) {
    EXPECT_EQ(Failure("/dev/null").Number, CommErrorNumber::NotSerial);
}

TEST_F(TtyDeviceTest, APlainFileIsNoSerialPortAndStaysAsItWas) {
    const TempFolder folder;
    const auto path = folder.Path() / "image.bin";
    std::ofstream(path) << "precious";
    const auto before = std::filesystem::last_write_time(path);
    EXPECT_EQ(Failure(path).Number, CommErrorNumber::NotSerial);
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    EXPECT_EQ(text.str(), "precious");
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
}

TEST_F(TtyDeviceTest, AMissingFileIsNotMade) {
    const TempFolder folder;
    EXPECT_EQ(Failure(folder.Path() / "none").Number, CommErrorNumber::NotSerial);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "none"));
}

TEST_F(TtyDeviceTest, AMissingPermissionNamesTheGroupToJoin) {
    const auto user = geteuid();
    // As its owner, who is kept out though the group may use it; as root, in somebody else's place, the group
    // being one that nobody here is in.
    constexpr gid_t anyGroup = 20;
    ASSERT_EQ(user == 0 ? chown(Pty_.Path().c_str(), user, anyGroup) : 0, 0);
    ASSERT_EQ(chmod(Pty_.Path().c_str(), 0060), 0);
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
    const auto error = Failure(Pty_.Path());
    ASSERT_EQ(seteuid(user), 0);
    EXPECT_EQ(error.Number, CommErrorNumber::NotPermitted);
    EXPECT_THAT(error.Description, HasSubstr("permission denied: add yourself to the group that owns it ("));
}

TEST_F(TtyDeviceTest, AMissingPermissionThatNoGroupHasSaysSo) {
    const auto user = geteuid();
    ASSERT_EQ(chmod(Pty_.Path().c_str(), user == 0 ? 0600 : 0), 0);
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
    const auto error = Failure(Pty_.Path());
    ASSERT_EQ(seteuid(user), 0);
    EXPECT_EQ(error.Number, CommErrorNumber::NotPermitted);
    EXPECT_THAT(error.Description, HasSubstr("permission denied: only its owner may use it"));
}

TEST_F(TtyDeviceTest, AHangUpIsToldAndStays) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    Pty_.HangUp();
    WaitUntilReady();
    EXPECT_EQ(Device_.Read(Room_), std::nullopt);
    EXPECT_EQ(Device_.Read(Room_), std::nullopt);
}

TEST_F(TtyDeviceTest, AfterAHangUpWritesSettingsAndClosingAreHarmlessAndQuick) {
    EXPECT_LT(test::Shortest(10,
                             [] {
                                 PseudoTerminal pty;
                                 TtyDevice device;
                                 EXPECT_FALSE(device.Open(pty.Path(), {}));
                                 pty.HangUp();
                                 return test::Elapsed([&device] {
                                     device.Write(AllByteValues());
                                     device.Apply({57600, 'N', 8, 1});
                                     device.DiscardInput();
                                     device.Close();
                                 });
                             }),
              500ms);
}

TEST_F(TtyDeviceTest, AHangUpDoesNotMakeTheLoopSpin) {
    PollLoop loop;
    MSComm comm(loop, std::make_unique<TtyDevice>(), [this](int) { return Pty_.Path(); });
    ASSERT_FALSE(comm.SetPortOpen(true));
    Pty_.HangUp();
    int yields = 0;
    const auto end = loop.MillisecondClock() + 50ms;
    for (; loop.MillisecondClock() < end; ++yields) {
        loop.Yield(end - loop.MillisecondClock());
    }
    EXPECT_LT(yields, 5);
    EXPECT_EQ(comm.InBufferCount(), 0U);
}

TEST_F(TtyDeviceTest, AnOtherEndThatNeverReadsHoldsUpNeitherWriteNorCloseForLong) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    const auto writing = test::Elapsed([this] { Device_.Write(std::vector<std::byte>(1 << 20)); });
    EXPECT_GE(writing, 900ms);
    EXPECT_LT(writing, test::HangLimit);
    EXPECT_LT(test::Elapsed([this] { Device_.Close(); }), test::HangLimit);
}

TEST_F(TtyDeviceTest, AWriteThatTheDriverTakesInPartsArrivesWhole) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    constexpr std::size_t size = 1 << 17;
    const std::jthread writer([this] { Device_.Write(std::vector<std::byte>(size, std::byte{0xA5})); });
    EXPECT_EQ(Pty_.Receive(size), std::vector<std::byte>(size, std::byte{0xA5}));
}

TEST_F(TtyDeviceTest, IsNotHandedToOtherPrograms) {
    ASSERT_FALSE(Device_.Open(Pty_.Path(), {}));
    EXPECT_EQ(fcntl(static_cast<int>(*Device_.InputHandle()), F_GETFD), FD_CLOEXEC);
}

}  // namespace
}  // namespace burnwick
