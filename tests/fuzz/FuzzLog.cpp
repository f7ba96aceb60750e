#include <ctime>
#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

#include "fuzz/Input.h"
#include "log/ActivityLog.h"
#include "support/TempFolder.h"

// A log with any content, which is archived when it is long, and a record with any texts.

namespace {

namespace fs = std::filesystem;
using burnwick::test::Require;

constexpr std::size_t LongestLog = 16'384;

std::string Content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What is left of a log: its last 30 records, or all of it.
std::string LastRecords(const std::string& log) {
    constexpr std::size_t kept = 30;
    std::vector<std::size_t> paths;
    for (std::size_t begin = 0; begin < log.size();) {
        const auto end = std::min(log.find('\n', begin), log.size());
        const auto line = log.substr(begin, end - begin);
        if (line.starts_with('/') || line.find('\\') != std::string::npos) {
            paths.push_back(begin);
        }
        begin = end + 1;
    }
    return paths.size() < kept ? log : log.substr(paths[paths.size() - kept]);
}

std::optional<std::string> Archive(const fs::path& folder) {
    std::optional<std::string> content;
    for (const auto& file : fs::directory_iterator(folder)) {
        const auto name = file.path().filename().string();
        if (name.starts_with("Burnwick2") && name.ends_with(".log")) {
            Require(!content, "there is one archive");
            content = Content(file.path());
            fs::remove(file.path());
        }
    }
    return content;
}

void RequireRecord(const std::string& entry, std::size_t lines) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < entry.size(); ++i) {
        const bool isEnd = entry[i] == '\n' && i > 0 && entry[i - 1] == '\r';
        const bool isReturn = entry[i] == '\r' && i + 1 < entry.size() && entry[i + 1] == '\n';
        const auto value = static_cast<unsigned char>(entry[i]);
        Require(isEnd || isReturn || (value >= 0x20 && value != 0x7F), "no text breaks its line");
        count += isEnd ? 1 : 0;
    }
    Require(count == lines && entry.ends_with("\r\n"), "a record has its lines");
}

burnwick::ActivityRecord TakeRecord(burnwick::test::Input& input) {
    constexpr std::size_t longest = 31;
    const auto text = [&input] { return input.TakeText(input.TakeByte() & longest); };
    burnwick::ActivityRecord record;
    record.Started = true;
    record.Succeeded = true;
    record.ImageFileName = text();
    record.Status = text();
    record.Timing = text();
    record.Version = text();
    record.Size = "1KB" + text();
    record.Verifying = true;
    record.Result = text();
    return record;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const burnwick::test::TempFolder folder;
    constexpr std::size_t linesOfFullRecord = 11;
    constexpr std::tm now{};

    burnwick::test::Input input(data, size);
    const bool isLong = (input.TakeByte() & 1U) != 0;
    const auto record = TakeRecord(input);
    std::string before = input.TakeText(data == nullptr ? 0 : size);
    while (isLong && !before.empty() && before.size() <= LongestLog) {
        before += before;
    }
    const auto live = folder.Path() / "Burnwick.log";
    std::ofstream(live, std::ios::binary) << before;

    WriteActivityLog(folder.Path(), "&All", record, now);
    const auto after = Content(live);
    const auto archive = Archive(folder.Path());
    Require(archive.has_value() == (before.size() > LongestLog), "a long log is archived");
    Require(!archive || *archive == before, "an archive has all of the log");
    Require(!fs::exists(folder.Path() / "Burnwick1.log"), "no scratch file is left");
    const auto kept = archive ? LastRecords(before) : before;
    const auto front = kept.empty() ? kept : kept + " \r\n";
    Require(after.starts_with(front), "the last records are kept");
    RequireRecord(after.substr(front.size()), linesOfFullRecord);
    return 0;
}
