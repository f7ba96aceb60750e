#pragma once

#include <chrono>
#include <deque>
#include <optional>
#include <string>

namespace burnwick {

// How fast a transfer goes, and how long it will still take, from its last seconds.
class TransferRate {
public:
    // So many blocks have gone by this moment; both only rise.
    void Add(std::chrono::milliseconds now, int block, int totalBlock);

    // "11.1 KB/s, 0:42 left"; empty until a second of it has been seen. A KB is 1000 bytes.
    std::string Text() const;

private:
    struct Sample {
        std::chrono::milliseconds Time;
        int Block;
    };

    std::deque<Sample> Samples_;
    int TotalBlock_ = 0;
};

}  // namespace burnwick
