#include "platform/window/SingleInstance.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

#include "gui/Await.h"
#include "gui/RunningCopy.h"
#include "platform/process/StandardStreams.h"
#include "support/Elapsed.h"
#include "support/Eventually.h"

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;

const std::string Name = "Burnwick";

struct Copy : RunningCopy {
    explicit Copy(const std::string& name = Name) : RunningCopy(name) {}
};

class SingleInstanceTest : public testing::Test {
protected:
    SingleInstanceTest() { SurviveFailedWrites(); }

    bool AnotherRuns() { return Copies_->AnotherRuns(); }
    bool BringForward() { return Copies_->BringForward(); }

    const MeetingPlace Place_;
    std::unique_ptr<SingleInstance> Copies_ = CopiesNamed(Name);
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
    int times = 0;
    Copies_->Claim([&] { ++times; });
    for (int i = 1; i <= 3; ++i) {
        Stranger later;
        later.Say("come forward\n");
        EXPECT_TRUE(Await([&] { return times >= i; }));
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
         {std::string(10'000, 'x'), std::string("a/../b\\c \n*"), std::string("Größe"), std::string()}) {
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
    first.End();
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

TEST_F(SingleInstanceTest, ACopyThatHangsIsNotWaitedForLong) {
    const Copy other;
    other.Stop();
    EXPECT_LT(test::Elapsed([this] {
                  EXPECT_TRUE(AnotherRuns());
                  EXPECT_FALSE(BringForward());
              }),
              test::HangLimit);
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
    Stranger stranger;
    stranger.Say("?");
    EXPECT_TRUE(stranger.IsCutOff());
    EXPECT_FALSE(other.WasAsked());
}

TEST_F(SingleInstanceTest, WhoSaysAnythingElseIsCutOff) {
    const Copy other;
    for (const char* const text : {"\n", "come here\n", "COME FORWARD\n", "GET / HTTP/1.1\r\n\r\n"}) {
        Stranger stranger;
        stranger.Say(text);
        EXPECT_TRUE(stranger.IsCutOff()) << text;
    }
    EXPECT_FALSE(other.WasAsked());
    EXPECT_TRUE(BringForward());
}

TEST_F(SingleInstanceTest, WhoSaysNothingIsCutOff) {
    const Copy other;
    EXPECT_TRUE(Stranger().IsCutOff());
    EXPECT_FALSE(other.WasAsked());
    EXPECT_TRUE(BringForward());
}

TEST_F(SingleInstanceTest, ARequestMayComeInPieces) {
    const Copy other;
    Stranger stranger;
    stranger.Say("come ");
    stranger.Say("forward\n");
    EXPECT_FALSE(stranger.IsCutOff());
    EXPECT_TRUE(other.CameForward());
}

TEST_F(SingleInstanceTest, WhoSaysMegabytesIsCutOffUnread) {
    const Copy other;
    const long before = other.Memory();
    const std::string megabyte(1'000'000, 'x');
    for (int i = 0; i < 20; ++i) {
        Stranger stranger;
        stranger.Say(megabyte);
        EXPECT_TRUE(stranger.IsCutOff());
    }
    EXPECT_TRUE(BringForward());
    EXPECT_LT(other.Memory() - before, 4'000);
}

TEST_F(SingleInstanceTest, ManyWhoSayNothingDoNotKeepItFromComingForwardForLong) {
    const Copy other;
    const std::vector<Stranger> strangers(200);
    EXPECT_TRUE(Eventually([this] { return BringForward(); }));
    EXPECT_TRUE(other.CameForward());
}

}  // namespace
}  // namespace burnwick::test
