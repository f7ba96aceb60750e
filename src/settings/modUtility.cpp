#include "settings/modUtility.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include "platform/FileLock.h"
#include "platform/ReadWholeFile.h"
#include "platform/ReplaceFile.h"
#include "settings/IniText.h"

namespace burnwick::modUtility {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t LongestValue = 254;
constexpr std::chrono::seconds LongestWait{2};

fs::path& IniPath() {
    static fs::path path;
    return path;
}

fs::path BesideIni(const char* ending) {
    fs::path path = IniPath();
    path += ending;
    return path;
}

// One waits for the lock, the others for its place: were they all to look for the lock now and then, a
// program that writes again and again would have it back before any of them looks.
std::unique_ptr<FileLock> LockIni() {
    using Clock = std::chrono::steady_clock;
    const auto limit = Clock::now() + LongestWait;
    const auto left = [limit] {
        return std::max(std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now()),
                        std::chrono::milliseconds(0));
    };
    const auto place = LockFile(BesideIni(".queue"), left());
    return place ? LockFile(BesideIni(".lock"), left()) : nullptr;
}

}  // namespace

void SetIniPath(const fs::path& path) {
    IniPath() = path;
}

std::string ReadIniValue(const std::string& section, const std::string& key) {
    const IniText ini(ReadWholeFile(IniPath()).value_or(""));
    return ini.Value(section, key).value_or("").substr(0, LongestValue);
}

void WriteIniValue(const std::string& section, const std::string& key, const std::string& value) {
    const auto lock = LockIni();
    if (!lock) {
        return;
    }
    // A file that cannot be read must not be replaced: what is in it would be lost.
    auto text = ReadWholeFile(IniPath());
    if (!text) {
        return;
    }
    IniText ini(std::move(*text));
    if (ini.SetValue(section, key, value)) {
        ReplaceFile(IniPath(), ini.Text());
    }
}

}  // namespace burnwick::modUtility
