#include "bench/Supervisor.h"

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp

#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <system_error>

#include "bench/ChildProcess.h"

namespace bench {

namespace {

using namespace std::chrono_literals;

class TemporaryFolder {
public:
    TemporaryFolder() {
        auto name = (std::filesystem::temp_directory_path() / "burnwick-figures-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), "cannot make a temporary folder");
        }
        Path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path_, ignored);
    }

    const std::filesystem::path& Path() const { return Path_; }

private:
    std::filesystem::path Path_;
};

sigset_t WatchedSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGCHLD}) {
        sigaddset(&signals, number);
    }
    return signals;
}

}  // namespace

int Supervise(const std::function<int(const std::filesystem::path& folder)>& work) {
    static_cast<void>(std::signal(SIGCHLD, SIG_DFL));
    const auto signals = WatchedSignals();
    sigset_t before{};
    sigprocmask(SIG_BLOCK, &signals, &before);
    const TemporaryFolder folder;
    ChildProcess worker([&work, &folder, &before] {
        sigprocmask(SIG_SETMASK, &before, nullptr);
        return work(folder.Path());
    });
    for (;;) {
        int number = 0;
        sigwait(&signals, &number);
        if (number != SIGCHLD) {
            constexpr int endedBySignal = 128;
            return endedBySignal + number;
        }
        if (worker.EndsWithin(0ms)) {
            return worker.Wait(0s).ExitStatus == 0 ? 0 : 1;
        }
    }
}

}  // namespace bench
