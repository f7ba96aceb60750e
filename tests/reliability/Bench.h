#pragma once

#include <string>

#include "reliability/Case.h"
#include "reliability/Tally.h"
#include "support/LinkTest.h"
#include "support/SimulatedDevice.h"

namespace burnwick::test {

// A link, a cable and a simulated unit for the runs of one case.
class Bench {
public:
    // `path` is the image, or the file that the upload shall create.
    Bench(const Case& theCase, const std::string& path);
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;
    ~Bench() = default;

    // One run with the case's fault, held to everything that every run is held to.
    void RunWithFault(Tally& tally);

    // A second run over the same link, without any fault, with a unit that has been switched off and on.
    void RunAgainWithoutFault(Tally& tally);

private:
    void Run(const Case& theCase, Tally& tally);
    bool Execute();
    void CheckTime(const Case& theCase, Microseconds taken) const;
    void CheckClosing() const;
    void CheckFailure(const Case& theCase) const;
    bool IsDataRight() const;
    void CheckFileAfterwards(bool succeeded) const;

    const Case& Case_;
    std::string Path_;
    Bytes Expected_;
    VirtualLoop Loop_;
    simulator::Unit Unit_;
    simulator::Line Line_;
    SimulatedDevice& Device_;
    MSComm Port_;
    SerialFlash Flash_;
    Raised Events_;
};

// Runs each case in surroundings of its own, and a fault-free one after every few of them.
void RunCases(const Kind& kind, const std::string& baudRate, bool paced, const std::vector<Trouble>& troubles,
              Tally& tally);

}  // namespace burnwick::test
