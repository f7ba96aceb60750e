#include "platform/SingleInstance.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fstream>
#include <memory>
#include <vector>

#include "platform/EnvironmentVariable.h"
#include "platform/System.h"
#include "platform/WindowLoop.h"
#include "platform/linux/UniqueFd.h"
#include "support/Program.h"

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

const std::string Name = "Burnwick";

// Another running copy.
class Copy {
public:
    explicit Copy(const std::string& name = Name) : Program_({RUNNING_COPY, name}) {
        EXPECT_TRUE(Program_.Prints("running")) << Program_.Err();
    }

    bool CameForward() const { return Program_.Prints("forward"); }
    bool WasAsked() const { return Program_.Out().find("forward") != std::string::npos; }
    void Kill() { End(SIGKILL); }
    void End(int signal) {
        Program_.Signal(signal);
        Program_.Wait();
    }
    void Stop() const {
        Program_.Signal(SIGSTOP);
        EXPECT_TRUE(Eventually([this] { return State() == 'T'; }));
    }
    void Continue() const { Program_.Signal(SIGCONT); }
    // Kilobytes of memory.
    long Memory() const {
        std::ifstream file("/proc/" + std::to_string(Program_.Process()) + "/statm");
        long total = 0;
        long resident = 0;
        file >> total >> resident;
        return resident * 4;
    }

private:
    char State() const {
        std::ifstream file("/proc/" + std::to_string(Program_.Process()) + "/stat");
        std::string process;
        std::string name;
        char state = 0;
        file >> process >> name >> state;
        return state;
    }

    Program Program_;
};

class SingleInstanceTest : public testing::Test {
protected:
    SingleInstanceTest() {
        SurviveFailedWrites();
        fs::permissions(Folder_.Path(), fs::perms::owner_all);
        Copies_ = CopiesNamed(Name);
    }

    bool AnotherRuns() { return Copies_->AnotherRuns(); }
    bool BringForward() { return Copies_->BringForward(); }

    // Connects as any program may, to the only copy.
    UniqueFd Stranger() const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        for (const auto& entry : fs::directory_iterator(Folder_.Path())) {
            if (entry.is_socket()) {
                std::strncpy(address.sun_path, entry.path().c_str(), sizeof address.sun_path - 1);
            }
        }
        UniqueFd stranger(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        EXPECT_EQ(connect(stranger.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        return stranger;
    }
    // Waits until the copy has cut the connection, and tells whether it has said nothing.
    static bool IsCutOff(const UniqueFd& stranger) {
        char answer = 0;
        return read(stranger.Get(), &answer, 1) <= 0;
    }
    static void Say(const UniqueFd& stranger, const std::string& text) {
        EXPECT_EQ(write(stranger.Get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    TempFolder Folder_;
    EnvironmentVariable Runtime_{"XDG_RUNTIME_DIR", Folder_.Path().string()};
    std::unique_ptr<SingleInstance> Copies_;
};

TEST_F(SingleInstanceTest, TheFirstCopyFindsNone) {
    EXPECT_FALSE(AnotherRuns());
    EXPECT_FALSE(BringForward());
}

TEST_F(SingleInstanceTest, ARunningCopyIsFoundAndComesForward) {
    const Copy other;
    EXPECT_TRUE(AnotherRuns());
    EXPECT_TRUE(BringForward());
    EXPECT_TRUE(other.CameForward());
}

TEST_F(SingleInstanceTest, ACopyComesForwardEachTime) {
    const auto loop = NewWindowLoop();
    int times = 0;
    Copies_->Claim([&] { ++times; });
    for (int i = 1; i <= 3; ++i) {
        const UniqueFd later = Stranger();
        Say(later, "come forward\n");
        while (times < i) {
            loop->Yield(60s);
        }
    }
    EXPECT_EQ(times, 3);
}

TEST_F(SingleInstanceTest, ACopyThatWasKilledIsGone) {
    Copy other;
    other.Kill();
    EXPECT_FALSE(AnotherRuns());
    EXPECT_FALSE(BringForward());
}

TEST_F(SingleInstanceTest, WhatAKilledCopyLeftIsInNobodysWay) {
    Copy().Kill();
    const Copy next;
    EXPECT_TRUE(BringForward());
    EXPECT_TRUE(next.CameForward());
}

TEST_F(SingleInstanceTest, ACopyOfAnotherNameIsNotFound) {
    const Copy other("Burnwick-Debug");
    EXPECT_FALSE(AnotherRuns());
    EXPECT_FALSE(BringForward());
    EXPECT_FALSE(other.WasAsked());
}

TEST_F(SingleInstanceTest, ANameMayHoldAnyCharacters) {
    for (const std::string& name :
         {std::string(10'000, 'x'), std::string("a/../b\\c \n\xff"), std::string("Größe"), std::string()}) {
        const Copy other(name);
        EXPECT_TRUE(CopiesNamed(name)->BringForward()) << name;
    }
}

TEST_F(SingleInstanceTest, ACopyDoesNotFindItself) {
    Copies_->Claim([] {});
    EXPECT_FALSE(AnotherRuns());
    EXPECT_FALSE(BringForward());
}

TEST_F(SingleInstanceTest, ACopyThatHasClaimedItsPlaceFindsTheOthers) {
    const Copy other;
    Copies_->Claim([] {});
    EXPECT_TRUE(AnotherRuns());
    EXPECT_TRUE(BringForward());
}

TEST_F(SingleInstanceTest, ThePlaceIsFreeAgainAfterTheCopy) {
    Copies_->Claim([] {});
    Copies_ = CopiesNamed(Name);
    EXPECT_FALSE(AnotherRuns());
}

TEST_F(SingleInstanceTest, TheSecondCopyIsFoundAfterTheFirstHasEnded) {
    Copy first;
    const Copy second;
    first.End(SIGTERM);
    EXPECT_TRUE(AnotherRuns());
    EXPECT_TRUE(BringForward());
    EXPECT_TRUE(second.CameForward());
}

TEST_F(SingleInstanceTest, OneOfSeveralComesForward) {
    const Copy first;
    const Copy second;
    EXPECT_TRUE(BringForward());
    EXPECT_TRUE(first.CameForward());
    EXPECT_FALSE(second.WasAsked());
}

TEST_F(SingleInstanceTest, ACopyThatFoundNoPlaceFindsTheOthers) {
    constexpr int places = 8;
    std::vector<std::unique_ptr<SingleInstance>> others;
    for (int i = 0; i < places; ++i) {
        others.push_back(CopiesNamed(Name));
        others.back()->Claim([] {});
    }
    Copies_->Claim([] {});
    others.erase(others.begin(), others.end() - 1);
    EXPECT_TRUE(AnotherRuns());
}

TEST_F(SingleInstanceTest, ACopyThatHangsCostsHalfASecondAtMost) {
    const Copy other;
    other.Stop();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(AnotherRuns());
    EXPECT_FALSE(BringForward());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 800ms);
}

TEST_F(SingleInstanceTest, ACopyThatHangsDoesNotHideTheOneBehindIt) {
    const Copy first;
    const Copy second;
    first.Stop();
    EXPECT_TRUE(BringForward());
    EXPECT_TRUE(second.CameForward());
}

TEST_F(SingleInstanceTest, ACopyThatHungDoesNotComeForwardForOneThatHasGivenUp) {
    const Copy other;
    other.Stop();
    EXPECT_FALSE(BringForward());
    other.Continue();
    // It takes the connections in turn.
    const UniqueFd stranger = Stranger();
    Say(stranger, "?");
    EXPECT_TRUE(IsCutOff(stranger));
    EXPECT_FALSE(other.WasAsked());
}

TEST_F(SingleInstanceTest, WhoSaysAnythingElseIsCutOff) {
    const Copy other;
    for (const char* const text : {"\n", "come here\n", "COME FORWARD\n", "GET / HTTP/1.1\r\n\r\n"}) {
        const UniqueFd stranger = Stranger();
        Say(stranger, text);
        EXPECT_TRUE(IsCutOff(stranger)) << text;
    }
    EXPECT_FALSE(other.WasAsked());
    EXPECT_TRUE(BringForward());
}

TEST_F(SingleInstanceTest, WhoSaysNothingIsCutOff) {
    const Copy other;
    EXPECT_TRUE(IsCutOff(Stranger()));
    EXPECT_FALSE(other.WasAsked());
    EXPECT_TRUE(BringForward());
}

TEST_F(SingleInstanceTest, ARequestMayComeInPieces) {
    const Copy other;
    const UniqueFd stranger = Stranger();
    Say(stranger, "come ");
    Say(stranger, "forward\n");
    EXPECT_FALSE(IsCutOff(stranger));
    EXPECT_TRUE(other.CameForward());
}

TEST_F(SingleInstanceTest, WhoSaysMegabytesIsCutOffUnread) {
    const Copy other;
    const long before = other.Memory();
    const std::string megabyte(1'000'000, 'x');
    for (int i = 0; i < 20; ++i) {
        const UniqueFd stranger = Stranger();
        EXPECT_LT(write(stranger.Get(), megabyte.data(), megabyte.size()), 1'000'000);
    }
    EXPECT_TRUE(BringForward());
    EXPECT_LT(other.Memory() - before, 4'000);
}

TEST_F(SingleInstanceTest, ManyWhoSayNothingDoNotKeepItFromComingForwardForLong) {
    const Copy other;
    std::vector<UniqueFd> strangers(200);
    std::generate(strangers.begin(), strangers.end(), [this] { return Stranger(); });
    EXPECT_TRUE(Eventually([this] { return BringForward(); }));
    EXPECT_TRUE(other.CameForward());
}

TEST_F(SingleInstanceTest, WithoutAFolderToMeetInEachCopyRunsAlone) {
    const EnvironmentVariable none("XDG_RUNTIME_DIR", std::nullopt);
    const EnvironmentVariable nowhere("TMPDIR", Folder_ / "nowhere");
    const auto copies = CopiesNamed(Name);
    copies->Claim([] {});
    EXPECT_FALSE(copies->AnotherRuns());
    EXPECT_FALSE(copies->BringForward());
}

}  // namespace
}  // namespace burnwick::test
