#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/SerialFlash.h"
#include "simulator/Unit.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

// What one run moves, and between whom.
struct Kind {
    std::string Name;
    burnwick::Method Method = Method::Download;
    Bytes Image;                // a download's file
    bool LengthIsSent = false;  // in the image's first block
    int Blocks = 0;
    simulator::UnitOptions Unit;  // without faults
    // What ends a run without any fault before its first block, as the user is told; empty when nothing does.
    std::string Refusal;
};

// A fault and where it strikes; without a fault, nothing goes wrong.
struct Trouble {
    std::string Name;  // as the simulated unit's orders name it
    std::optional<simulator::FaultOrder> Order;
};

struct Case {
    const Kind& What;
    std::string BaudRate;
    Trouble Fault;
    bool Paced = false;

    std::string Name() const;
    bool IsUpload() const { return What.Method == Method::Upload; }
};

enum class Outcome {
    Succeeds,
    Fails,
    // A success that is none, and that nothing on this wire can tell from one.
    SeemsToSucceed,
};

// What has to come of it.
Outcome ExpectedOutcome(const Case& theCase);

// Long enough for the run in any case, and no longer: each wait with its limit, each block with its time.
Microseconds TimeLimit(const Case& theCase);

// What the unit's memory must hold after a download.
Bytes ProgrammedMemory(const Kind& kind);

// What the file of an upload must hold.
Bytes UploadedFile(const Kind& kind);

// Where faults strike in a run of so many blocks: the set-up, the first two blocks, the middle, where the
// number's low byte runs over, the last two.
std::vector<std::optional<int>> AllPlaces(int blocks);
// The set-up, the first block and the last.
std::vector<std::optional<int>> FewPlaces(int blocks);

// Every fault at every place, and no fault at all.
std::vector<Trouble> Troubles(const std::vector<std::optional<int>>& places);

}  // namespace burnwick::test
