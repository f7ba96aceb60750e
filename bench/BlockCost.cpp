#include <poll.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bench/LinkRun.h"
#include "bench/Measurements.h"
#include "bench/OneCore.h"
#include "bench/Peer.h"
#include "bench/TestImage.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

constexpr int Rounds = 15;
constexpr auto RestBefore = std::chrono::milliseconds(500);
constexpr std::size_t ImageSize = 1024UL * 1024;
constexpr std::size_t AnswerLength = 4;
constexpr double HighestRatio = 1.3;
constexpr int Patience = 5000;  // milliseconds

void ReadAnswer(int line) {
    std::array<std::byte, AnswerLength> room{};
    for (std::size_t has = 0; has < room.size();) {
        pollfd watched{line, POLLIN, 0};
        const auto got =
            poll(&watched, 1, Patience) > 0 ? read(line, room.data() + has, room.size() - has) : 0;
        if (got <= 0) {
            throw std::runtime_error("the bare loop gets no answer");
        }
        has += static_cast<std::size_t>(got);
    }
}

// The least that moves blocks over a line: write, poll, read.
Clock::duration RunBareLoop(int line, int blocks) {
    const auto message = burnwick::BlockDataMessage(0, {});
    const auto start = Clock::now();
    for (int block = 0; block < blocks; ++block) {
        if (write(line, message.data(), message.size()) != static_cast<ssize_t>(message.size())) {
            throw std::runtime_error("the bare loop's line takes no message");
        }
        ReadAnswer(line);
    }
    return Clock::now() - start;
}

struct Pair {
    double Link;  // microseconds a block
    double Bare;
};

Pair MeasurePair(const std::string& image) {
    // On waking, the system puts a process on the core that has the least to do: one to stay on.
    std::this_thread::sleep_for(RestBefore);
    const OneCore oneCore;
    const Peer peer;
    const auto run = RunLink({burnwick::Method::Download, peer.Line().Device(), "9600", image, 0});
    // The link has waited for its unit, and who comes out of a sleep is served first: equal for both.
    std::this_thread::sleep_for(RestBefore);
    const auto bare = RunBareLoop(peer.Line().HostEnd(), run.Blocks);
    return {Microseconds(run.Transfer).count() / run.Blocks, Microseconds(bare).count() / run.Blocks};
}

}  // namespace

Figures MeasureBlockCost(const std::filesystem::path& folder) {
    const auto image = folder / "block-cost.bin";
    WriteUnmarkedImage(image, ImageSize);
    std::vector<double> link;
    std::vector<double> bare;
    std::vector<double> ratios;
    // What else the machine does disturbs both of a pair alike; the median drops the pairs where it did not.
    for (int round = 0; round < Rounds; ++round) {
        const auto pair = MeasurePair(image.string());
        link.push_back(pair.Link);
        bare.push_back(pair.Bare);
        ratios.push_back(pair.Link / pair.Bare);
    }
    return {AtMost("a block of a download, unpaced, against a bare loop", Median(ratios), HighestRatio,
                   {2, " times"}),
            Told("  the link", Median(link), {1, " us"}), Told("  the bare loop", Median(bare), {1, " us"})};
}

}  // namespace bench
