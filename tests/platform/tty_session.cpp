// A short session on the line given as the only argument, as a run does it: opens, sends a frame, discards
// input, changes the speed, closes.

#include <cstdio>
#include <vector>

#include "platform/loop/MessageLoop.h"
#include "platform/serial/MSComm.h"
#include "platform/serial/SerialDevice.h"

int main(int argc, char** argv) {
    using namespace burnwick;
    constexpr std::size_t frameSize = 262;
    if (argc != 2) {
        return 64;
    }
    const std::string path = argv[1];
    const auto loop = NewSystemLoop();
    MSComm comm(*loop, NewSerialDevice(), [&path](int) { return std::string(path); });
    if (const auto error = comm.SetPortOpen(true)) {
        static_cast<void>(std::fprintf(stderr, "%s\n", error->Description.c_str()));
        return 1;
    }
    comm.Output(std::vector<std::byte>(frameSize, std::byte{0x55}));
    comm.ResetOutBufferCount();
    comm.DiscardInput();
    const bool changed = !comm.SetSettings("57600,N,8,1");
    const bool closed = !comm.SetPortOpen(false);
    return changed && closed ? 0 : 1;
}
