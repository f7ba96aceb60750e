#pragma once

#include "simulator/Line.h"
#include "simulator/Unit.h"
#include "support/FakeDevice.h"

namespace burnwick::test {

// The simulated unit at the other end of a line in virtual time.
class SimulatedDevice final : public FakeDevice {
public:
    SimulatedDevice(VirtualLoop& loop, simulator::Line& line);

private:
    void HearFrame(const Frame& frame) override;
    void LetHappen() override;

    simulator::Line& Line_;
};

}  // namespace burnwick::test
