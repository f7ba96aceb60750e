#include <fcntl.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/ChildProcess.h"
#include "bench/Measurements.h"
#include "bench/Peer.h"
#include "bench/TestImage.h"

namespace bench {

namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int Starts = 30;
constexpr double LongestStart = 20;  // milliseconds
constexpr double LongestPortSearch = 200;
constexpr double LargestMemory = 16;    // MiB
constexpr double MostWhileWaiting = 1;  // % of a core
constexpr double MostWhilePaced = 5;

constexpr double Mebibyte = 1024 * 1024;
constexpr std::size_t MemoryImage = 1024UL * 1024;
constexpr std::size_t PacedImage = 256UL * 256 + 4096;  // six seconds at 115200
constexpr auto WaitingTime = 10s;
constexpr auto Patience = 60s;

constexpr int ExitDone = 0;
constexpr int ExitCanceled = 4;

// burnwick-cli with what it prints kept in a file.
class CliRun {
public:
    CliRun(const std::filesystem::path& folder, const std::vector<std::string>& arguments)
        : Said_(folder / "cli.txt"),
          Output_(open(Said_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600)),
          Process_(Neighbour("burnwick-cli"), arguments, Output_.Get()) {}

    const ChildProcess& Process() const { return Process_; }

    Usage Wait(int expected) {
        const auto usage = Process_.Wait(Patience);
        if (usage.ExitStatus != expected) {
            Fail("burnwick-cli ends with status " + std::to_string(usage.ExitStatus));
        }
        return usage;
    }

    [[noreturn]] void Fail(const std::string& what) const {
        std::ifstream said(Said_);
        throw std::runtime_error(what + ":\n" + std::string(std::istreambuf_iterator<char>(said), {}));
    }

private:
    std::filesystem::path Said_;
    burnwick::UniqueFd Output_;
    ChildProcess Process_;
};

double Share(const Usage& usage) {
    return 100 * usage.Processor / usage.Wall;
}

Figures MeasureStart(const std::filesystem::path& folder) {
    static_cast<void>(CliRun(folder, {"--version"}).Wait(ExitDone));  // brings the files into memory
    std::vector<double> walls;
    std::vector<double> processors;
    for (int i = 0; i < Starts; ++i) {
        const auto usage = CliRun(folder, {"--version"}).Wait(ExitDone);
        walls.push_back(Milliseconds(usage.Wall).count());
        processors.push_back(Milliseconds(usage.Processor).count());
    }
    return {AtMost("start of burnwick-cli --version", Median(walls), LongestStart, {1, " ms"}),
            Told("  its processor time", Median(processors), {1, " ms"})};
}

// Every port opens.
Figure MeasurePorts(const std::filesystem::path& folder) {
    const SilentLine line;
    LeadAllPortsTo(line, folder);
    std::vector<double> walls;
    walls.reserve(Starts);
    for (int i = 0; i < Starts; ++i) {
        walls.push_back(Milliseconds(CliRun(folder, {"ports"}).Wait(ExitDone).Wall).count());
    }
    std::filesystem::remove(folder / "Burnwick.ini");
    return AtMost("sixteen ports tried", Median(walls), LongestPortSearch, {1, " ms"});
}

Usage Download(const std::filesystem::path& folder, const std::filesystem::path& image,
               const std::vector<std::string>& unitArguments) {
    const UnitProcess unit(unitArguments);
    return CliRun(folder, {"download", image.string(), "--port", unit.Device(), "--baud", "115200"})
        .Wait(ExitDone);
}

Figure MeasureMemory(const std::filesystem::path& folder) {
    const auto image = folder / "memory.bin";
    WriteUnmarkedImage(image, MemoryImage);
    const auto usage = Download(folder, image, {});
    return AtMost("memory of a download of 1 MiB", static_cast<double>(usage.PeakMemory) / Mebibyte,
                  LargestMemory, {1, " MiB"});
}

Figure MeasureWaiting(const std::filesystem::path& folder) {
    const auto image = folder / "waiting.bin";
    WriteUnmarkedImage(image, PacedImage - 4096);
    const SilentLine line;
    CliRun run(folder, {"download", image.string(), "--port", line.Device()});
    if (run.Process().EndsWithin(WaitingTime)) {
        run.Fail("burnwick-cli does not wait for its unit");
    }
    run.Process().Signal(SIGINT);
    return AtMost("processor while waiting for a unit", Share(run.Wait(ExitCanceled)), MostWhileWaiting,
                  {2, " %"});
}

Figure MeasurePaced(const std::filesystem::path& folder) {
    const auto image = folder / "paced.bin";
    WriteMarkedImage(image, PacedImage);
    const auto usage = Download(folder, image, {"--pace", "--ident", "I"});
    return AtMost("processor during a download at 115200", Share(usage), MostWhilePaced, {2, " %"});
}

}  // namespace

Figures MeasureProgramCost(const std::filesystem::path& folder) {
    auto figures = MeasureStart(folder);
    figures.push_back(MeasurePorts(folder));
    figures.push_back(MeasureMemory(folder));
    figures.push_back(MeasureWaiting(folder));
    figures.push_back(MeasurePaced(folder));
    return figures;
}

}  // namespace bench
