#include <gtest/gtest.h>

#include <iostream>

#include "reliability/Bench.h"
#include "reliability/Kinds.h"

namespace burnwick::test {

namespace {

// Every image kind, at the speeds that make a difference to it.
void ProgramEverything(Tally& tally) {
    const Kind bootCode = BootCode64KiB();
    for (const auto* const baudRate : {"9600", "57600"}) {
        RunCases(bootCode, baudRate, false, Troubles(AllPlaces(bootCode.Blocks)), tally);
    }
    RunCases(bootCode, "57600", true, Troubles(FewPlaces(bootCode.Blocks)), tally);
    for (const Kind& kind : {ImageOfOddLength(), AnnouncedImage()}) {
        RunCases(kind, "115200", false, Troubles(AllPlaces(kind.Blocks)), tally);
    }
    for (const Kind& kind : {UnmarkedImage(), ImageOfType2(), ImageWithIdentity()}) {
        RunCases(kind, "115200", false, Troubles(FewPlaces(kind.Blocks)), tally);
    }
}

// What the unit is matters more here than what goes wrong.
void ProgramTheRest(Tally& tally) {
    const std::vector<Trouble> none = Troubles({});
    for (const Kind& kind : {ImageForAnotherUnit(), ImageThatNobodyAwaits(), AnnouncedImage(),
                             ImageOfOddLength(), ImageWithIdentity()}) {
        for (const auto* const baudRate : {"9600", "57600", "115200"}) {
            RunCases(kind, baudRate, true, none, tally);
        }
    }
    RunCases(Family1Of1MiB(), "115200", false,
             {{"no fault", std::nullopt},
              {"late@0", simulator::ParseFaultOrder("late@0")},
              {"negative-7@256", simulator::ParseFaultOrder("negative-7@256")},
              {"no-answer@4095", simulator::ParseFaultOrder("no-answer@4095")}},
             tally);
}

}  // namespace

TEST(ProgrammingMatrix, ReportsSuccessOnlyWhereTheUnitHoldsTheImage) {
    Tally tally("programmings");
    ProgramEverything(tally);
    ProgramTheRest(tally);
    std::cout << tally << "\n";
    EXPECT_GE(tally.Total(), Tally::FewestRuns);
    EXPECT_EQ(tally.OtherFalseSuccesses(), 0);
}

}  // namespace burnwick::test
