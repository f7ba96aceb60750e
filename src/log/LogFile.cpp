#include "log/LogFile.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <system_error>
#include <utility>

#include "log/LogPaths.h"
#include "platform/files/FileLock.h"
#include "platform/files/ReadWholeFile.h"
#include "platform/files/Utf8Path.h"
#include "platform/process/PlainText.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t LargestShown = 100'000'000;  // bytes; the viewer needs about ten times as much
constexpr std::chrono::milliseconds ReadLockLimit{500};

std::string Told(const fs::path& path) {
    return PlainText(Utf8Text(path), ' ');
}

bool IsSomethingElse(fs::file_type type) {
    return type != fs::file_type::regular && type != fs::file_type::not_found && type != fs::file_type::none;
}

std::string NoFile(fs::file_type type) {
    return type == fs::file_type::directory ? "It is a folder." : "It is not a file.";
}

// Why a file that is there cannot be read.
std::string WhyUnreadable(const fs::path& path) {
    std::error_code error;
    const auto type = fs::status(path, error).type();
    if (IsSomethingElse(type)) {
        return NoFile(type) + "\n\nMove it away, then open the activity log again.";
    }
    errno = 0;
    if (!error && !std::ifstream(path, std::ios::binary).is_open() && errno != 0) {
        error = std::error_code(errno, std::generic_category());
    }
    return (error ? error.message() + "." : "Reading it failed.")
           + "\n\nCheck that you may read it, then open the activity log again.";
}

}  // namespace

LogFile ReadLogFile(const fs::path& folder) {
    const auto path = LogPath(folder);
    std::error_code error;
    const auto size = fs::file_size(path, error);
    if (!error && size > LargestShown) {
        return {{},
                "The activity log is too large to be shown:\n" + Told(path)
                    + "\n\nRead it with another program, or clear it."};
    }
    if (auto content = ReadWholeFile(path)) {
        return {std::move(*content), {}};
    }
    return {{}, "The activity log could not be read:\n" + Told(path) + "\n\n" + WhyUnreadable(path), false};
}

// Who keeps the lock for longer than an entry takes, or a folder without locks, is not waited for.
std::string ClearLogFile(const fs::path& folder) {
    const auto path = LogPath(folder);
    const auto failed = [&path](const std::string& why) {
        return "The activity log could not be deleted:\n" + Told(path) + "\n\n" + why;
    };
    std::error_code error;
    if (fs::status(path, error).type() == fs::file_type::not_found && !fs::is_symlink(path, error)) {
        return {};
    }
    if (const auto type = fs::status(path, error).type(); IsSomethingElse(type)) {
        return failed(NoFile(type) + "\n\nMove it away.");
    }
    const auto lock = LockFile(LogLockPath(folder), ReadLockLimit);
    fs::remove(path, error);
    return error ? failed(error.message() + ".\n\nCheck that you may write to its folder, then try again.")
                 : "";
}

}  // namespace burnwick
