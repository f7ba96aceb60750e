#include "support/SimulatedDevice.h"

namespace burnwick::test {

SimulatedDevice::SimulatedDevice(VirtualLoop& loop, simulator::Line& line) : FakeDevice(loop), Line_(line) {
    loop.AddSource(this, {[this] { return Line_.NextEvent(); }, [this] { LetHappen(); }});
}

void SimulatedDevice::HearFrame(const Frame& frame) {
    Line_.FromHost(frame.At, frame.Baud, frame.Content);
}

// Bytes that arrive while the port is closed are lost, as on a real line.
void SimulatedDevice::LetHappen() {
    const auto bytes = Line_.ToHost(Loop().Time(), Baud());
    if (IsOpen()) {
        Arrive(bytes);
    }
}

}  // namespace burnwick::test
