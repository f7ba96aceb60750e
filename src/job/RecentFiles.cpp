#include "job/RecentFiles.h"

#include <algorithm>
#include <cctype>

namespace burnwick {

namespace {

bool SamePath(const std::string& one, const std::string& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](unsigned char a, unsigned char b) { return std::toupper(a) == std::toupper(b); });
}

// The place of a path, the last one of several; the last place of all when it is not there, for that entry
// then falls off.
std::size_t PlaceOf(const RecentFiles& files, const std::string& path) {
    for (std::size_t i = files.size(); i-- > 0;) {
        if (SamePath(files.at(i), path)) {
            return i;
        }
    }
    return files.size() - 1;
}

}  // namespace

RecentFiles ReadRecentFiles(const SettingValues& settings) {
    RecentFiles files;
    for (std::size_t i = 0; i < files.size(); ++i) {
        files.at(i) = settings.Stored(Setting::RecentFile(i + 1));
    }
    return files;
}

void AddRecentFile(const std::string& path, SettingStore& settings) {
    settings.Change([&path](SettingValues& values) {
        RecentFiles files = ReadRecentFiles(values);
        const auto place = static_cast<std::ptrdiff_t>(PlaceOf(files, path));
        std::rotate(files.begin(), files.begin() + place, files.begin() + place + 1);
        files.front() = path;
        for (std::size_t i = 0; i < files.size(); ++i) {
            values.Store(Setting::RecentFile(i + 1), files.at(i));
        }
    });
}

std::string RecentCaption(int index, const std::string& path) {
    std::string caption = "&" + std::to_string(index) + " ";
    for (const char character : path) {
        caption += character == '&' ? "&&" : std::string(1, character);
    }
    return caption;
}

std::string PathOfCaption(const std::string& caption) {
    constexpr std::size_t prefix = 3;
    std::string path;
    for (std::size_t i = prefix; i < caption.size(); ++i) {
        path += caption[i];
        i += caption.compare(i, 2, "&&") == 0 ? 1 : 0;
    }
    return path;
}

bool LeavesRecentFile(const RunResult& run, bool isUpload) {
    return !isUpload || run.Outcome != Outcome::Canceled;
}

}  // namespace burnwick
