#pragma once

#include <chrono>
#include <string>

#include "engine/SerialFlash.h"

namespace bench {

struct LinkJob {
    burnwick::Method Method;
    std::string Device;
    std::string Baud;
    std::string File;
    int UploadBlocks = 0;
};

using Seconds = std::chrono::duration<double>;

struct LinkTime {
    int Blocks = 0;
    Seconds Transfer{};  // from the sending of the first block to the last answer
};

// A run of the real link over the system's serial device and message loop, in this process. Throws, with what
// the link had to say, when it fails or does not reach its speed.
LinkTime RunLink(const LinkJob& job);

}  // namespace bench
