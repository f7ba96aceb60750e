#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): setenv
#include <sys/file.h>

#include <QApplication>
#include <array>
#include <chrono>
#include <ctime>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bench/AwakeCores.h"
#include "bench/ChildProcess.h"
#include "bench/LogCost.h"
#include "bench/Measurements.h"
#include "bench/Peer.h"
#include "bench/TestImage.h"
#include "bench/WindowRun.h"

namespace bench {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double LongestPause = 50;   // milliseconds
constexpr double LongestStart = 400;  // milliseconds
constexpr double LongestSecondCopy = 1000;
constexpr double MostWhileIdle = 0.5;  // % of a core
constexpr double MostWhileWaiting = 2;
constexpr double LongestBusyRun = 1.03;  // times that of an idle window

constexpr std::size_t ImageSize = 1024UL * 1024;
constexpr std::size_t PacedImageSize = 512UL * 256;  // twelve seconds
constexpr int Starts = 10;
constexpr auto IdleTime = 5s;
constexpr auto WaitingTime = 10s;
constexpr auto SettlingTime = 1s;
constexpr auto Patience = 10s;

// Whatever the window does to a desktop, it does to this one.
void EnterEmptyHome(const fs::path& home) {
    const auto runtime = home / "runtime";
    fs::create_directories(runtime);
    fs::permissions(runtime, fs::perms::owner_all);
    for (const char* const name : {"HOME", "BURNWICK_HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
        setenv(name, home.c_str(), 1);
    }
    setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

Figure MeasurePause(const fs::path& folder, const fs::path& image) {
    const UnitProcess unit({"--ident", "I"});
    BenchWindow window(folder / "pause", unit.Device());
    const Heartbeat heartbeat(window);
    static_cast<void>(window.Download(image));
    static_cast<void>(window.Upload(folder / "pause.copy.bin"));
    const auto pause = heartbeat.LongestPause();
    if (!SameContents(image, folder / "pause.copy.bin")) {
        throw std::runtime_error("what the window read back is not what it sent");
    }
    return AtMost("longest time that the window does not answer, unpaced", Milliseconds(pause).count(),
                  LongestPause, {1, " ms"});
}

using Handler = std::function<void(BenchWindow&, const burnwick::JobEvent&)>;

// The time of a download at 115200 on a line of that speed, with a handler called after each event that the
// window has taken.
Seconds PacedDownload(const fs::path& folder, const Handler& handler) {
    const auto image = folder / "paced.bin";
    WriteMarkedImage(image, PacedImageSize);
    const UnitProcess unit({"--pace", "--ident", "I"});
    BenchWindow window(folder / "busy", unit.Device());
    window.AfterEvent = [&](const burnwick::JobEvent& event) { handler(window, event); };
    return window.Download(image);
}

Figures MeasureBusyWindow(const fs::path& folder) {
    const AwakeCores awake;
    const auto idle = PacedDownload(folder, [](BenchWindow&, const burnwick::JobEvent&) {});
    const auto repainted =
        PacedDownload(folder, [](BenchWindow& window, const burnwick::JobEvent&) { window.Repaint(); });
    bool hasSlept = false;
    const auto asleep = PacedDownload(folder, [&](BenchWindow&, const burnwick::JobEvent& event) {
        if (!hasSlept && std::holds_alternative<burnwick::BlockProgress>(event)) {
            hasSlept = true;
            std::this_thread::sleep_for(10s);
        }
    });
    return {AtMost("a download at 115200, window repainted at each event, against an idle one",
                   repainted / idle, LongestBusyRun, {3, " times"}),
            AtMost("a download at 115200, window's thread asleep for 10 s, against it", asleep / idle,
                   LongestBusyRun, {3, " times"})};
}

Seconds ProcessorTime() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

Figure MeasureWaiting(const fs::path& folder, const fs::path& image) {
    const SilentLine line;
    BenchWindow window(folder / "waiting", line.Device());
    const auto before = ProcessorTime();
    window.WaitFor(image, WaitingTime);
    return AtMost("processor of the window while waiting for a unit",
                  100 * (ProcessorTime() - before) / WaitingTime, MostWhileWaiting, {2, " %"});
}

// Runs of the window in this process.
Figures MeasureRuns(const fs::path& folder) {
    // A platform without a screen complains of what it cannot do.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int count = 1;
    std::string name = "burnwick-figures";
    std::array<char*, 2> arguments{name.data(), nullptr};
    const QApplication application(count, arguments.data());
    const auto image = folder / "window.bin";
    WriteMarkedImage(image, ImageSize);
    Figures figures{MeasurePause(folder, image)};
    figures.push_back(MeasureWaiting(folder, image));
    const auto busy = MeasureBusyWindow(folder);
    figures.insert(figures.end(), busy.begin(), busy.end());
    const auto log = MeasureLogCost(folder);
    figures.insert(figures.end(), log.begin(), log.end());
    return figures;
}

// Burnwick, painted for the first time: it is loaded by then, and waits for its user.
class RunningWindow {
public:
    RunningWindow() : Process_(Neighbour("Burnwick"), {}) {
        for (std::string line; line.find("Flushing") == std::string::npos;) {
            line = Process_.ReadLine();
            if (line.empty()) {
                throw std::runtime_error("Burnwick shows no window");
            }
        }
        Ready_ = Clock::now() - Start_;
    }

    Seconds Ready() const { return Ready_; }
    const ChildProcess& Process() const { return Process_.Process(); }

private:
    Clock::time_point Start_ = Clock::now();
    TalkingProcess Process_;
    Seconds Ready_{};
};

// Every port is in use, and so each is tried.
Figure MeasureStart(const fs::path& home) {
    const SilentLine line;
    flock(line.HostEnd(), LOCK_EX);
    std::vector<double> times;
    for (int start = 0; start <= Starts; ++start) {
        LeadAllPortsTo(line, home);
        times.push_back(Milliseconds(RunningWindow().Ready()).count());
    }
    times.erase(times.begin());  // that one has brought the files into memory
    return AtMost("start of the window until it is painted", Median(times), LongestStart, {0, " ms"});
}

Figure MeasureIdle(const RunningWindow& window) {
    std::this_thread::sleep_for(SettlingTime);
    const auto before = window.Process().ProcessorTime();
    std::this_thread::sleep_for(IdleTime);
    return AtMost("processor of the idle window",
                  100 * (window.Process().ProcessorTime() - before) / IdleTime, MostWhileIdle, {2, " %"});
}

Figure MeasureSecondCopy(const RunningWindow& first) {
    std::vector<double> times;
    for (int start = 0; start < Starts; ++start) {
        TalkingProcess second(Neighbour("Burnwick"), {});
        const auto usage = second.Process().Wait(Patience);
        if (usage.ExitStatus != 0 || first.Process().EndsWithin(0ms)) {
            throw std::runtime_error("a second copy does not leave the field to the first one");
        }
        times.push_back(Milliseconds(usage.Wall).count());
    }
    return AtMost("start and end of a second copy", Median(times), LongestSecondCopy, {0, " ms"});
}

// The program itself, seen from outside.
Figures MeasureProgram(const fs::path& home) {
    setenv("QT_LOGGING_RULES", "qt.widgets.painting=true", 1);
    Figures figures{MeasureStart(home)};
    const RunningWindow window;
    figures.push_back(MeasureSecondCopy(window));
    figures.push_back(MeasureIdle(window));
    return figures;
}

}  // namespace

Figures MeasureWindowCost(const fs::path& folder) {
    const auto home = folder / "home";
    EnterEmptyHome(home);
    auto figures = MeasureRuns(folder);
    const auto program = MeasureProgram(home);
    figures.insert(figures.end(), program.begin(), program.end());
    return figures;
}

}  // namespace bench
