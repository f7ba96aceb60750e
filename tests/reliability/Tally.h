#pragma once

#include <map>
#include <ostream>
#include <string>
#include <utility>

#include "reliability/Case.h"

namespace burnwick::test {

// What has come of the runs of one direction.
class Tally {
public:
    // With fewer of them, cases have been lost.
    static constexpr int FewestRuns = 500;

    explicit Tally(std::string runs) : Runs_(std::move(runs)) {}

    void CountSuccess() { ++Succeeded_; }
    void CountFailure() { ++Failed_; }
    // Success was reported, and there was none.
    void CountFalseSuccess(const Case& theCase);

    int Total() const;
    int OtherFalseSuccesses() const { return OtherFalse_; }

    // "612 programmings: 380 succeeded, 220 failed honestly; false successes that …"
    friend std::ostream& operator<<(std::ostream& out, const Tally& tally);

private:
    std::string Runs_;
    int Succeeded_ = 0;
    int Failed_ = 0;
    int OtherFalse_ = 0;
    std::map<std::string, int> Unrevealed_;  // by the fault's name
};

}  // namespace burnwick::test
