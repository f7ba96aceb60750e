#include "reliability/Tally.h"

#include <numeric>

namespace burnwick::test {

void Tally::CountFalseSuccess(const Case& theCase) {
    if (ExpectedOutcome(theCase) == Outcome::SeemsToSucceed) {
        ++Unrevealed_[theCase.Fault.Name.substr(0, theCase.Fault.Name.find('@'))];
    } else {
        ++OtherFalse_;
    }
}

int Tally::Total() const {
    return std::accumulate(Unrevealed_.begin(), Unrevealed_.end(), Succeeded_ + Failed_ + OtherFalse_,
                           [](int total, const auto& entry) { return total + entry.second; });
}

std::ostream& operator<<(std::ostream& out, const Tally& tally) {
    out << tally.Total() << " " << tally.Runs_ << ": " << tally.Succeeded_ << " succeeded, " << tally.Failed_
        << " failed honestly; false successes that this wire cannot reveal:";
    for (const auto& [fault, count] : tally.Unrevealed_) {
        out << " " << fault << " " << count << ",";
    }
    if (tally.Unrevealed_.empty()) {
        out << " none,";
    }
    return out << " others: " << tally.OtherFalse_;
}

}  // namespace burnwick::test
