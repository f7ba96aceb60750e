#include <gtest/gtest.h>

#include <iostream>

#include "reliability/Bench.h"
#include "reliability/Kinds.h"

namespace burnwick::test {

namespace {

// Every chip, at the speeds that make a difference to it.
void UploadEverything(Tally& tally) {
    const Kind bootCode = UploadOfBootCode(256, 64);
    for (const auto* const baudRate : {"9600", "57600"}) {
        RunCases(bootCode, baudRate, false, Troubles(AllPlaces(bootCode.Blocks)), tally);
    }
    RunCases(bootCode, "57600", true, Troubles(FewPlaces(bootCode.Blocks)), tally);
    for (const Kind& kind : {UploadOf(300, 128), UploadOf(512, 128), UploadFromSlowUnit(256, 64)}) {
        RunCases(kind, "115200", false, Troubles(AllPlaces(kind.Blocks)), tally);
    }
    for (const Kind& kind : {UploadOf(1, 64), UploadOf(2, 64), UploadOfBootCode(300, 128)}) {
        RunCases(kind, "9600", true, Troubles(FewPlaces(kind.Blocks)), tally);
    }
    const Kind large = UploadOf(1024, 256);
    RunCases(large, "115200", false, Troubles(FewPlaces(large.Blocks)), tally);
}

// The largest chips, and every speed on a line that takes its time.
void UploadTheRest(Tally& tally) {
    const std::vector<Trouble> none = Troubles({});
    for (const auto* const baudRate : {"9600", "57600", "115200"}) {
        RunCases(UploadOf(512, 128), baudRate, true, none, tally);
        RunCases(UploadFromSlowUnit(256, 64), baudRate, true, none, tally);
    }
    RunCases(UploadOf(4096, 1024), "115200", false,
             {{"no fault", std::nullopt},
              {"late@0", simulator::ParseFaultOrder("late@0")},
              {"cut-short@256", simulator::ParseFaultOrder("cut-short@256")},
              {"dead@4095", simulator::ParseFaultOrder("dead@4095")}},
             tally);
}

}  // namespace

TEST(UploadMatrix, ReportsSuccessOnlyWhereTheFileHoldsTheMemory) {
    Tally tally("uploads");
    UploadEverything(tally);
    UploadTheRest(tally);
    std::cout << tally << "\n";
    EXPECT_GE(tally.Total(), Tally::FewestRuns);
    EXPECT_EQ(tally.OtherFalseSuccesses(), 0);
}

}  // namespace burnwick::test
