#include "log/ActivityLog.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <fstream>
#include <optional>
#include <string_view>

#include "log/LogPaths.h"
#include "log/LogText.h"
#include "platform/files/FileLock.h"
#include "platform/process/PlainText.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t LongestLog = 16'384;  // bytes; a longer one is archived
constexpr std::size_t KeptRecords = 30;
constexpr std::chrono::seconds WriteLockLimit{2};

// The log's text for a line, whatever is in it: a line break inside would part the record.
std::string Line(const std::string& text) {
    return PlainText(text, ' ').append(LogLineEnd);
}

std::string Formatted(const char* format, const std::tm& time) {
    constexpr std::size_t longest = 64;
    std::array<char, longest> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &time)};
}

// "07/22/2004 3:05:09 PM", in every locale.
std::string TimeStamp(const std::tm& now) {
    constexpr int noon = 12;
    const int hour = now.tm_hour % noon == 0 ? noon : now.tm_hour % noon;
    return Formatted("%m/%d/%Y ", now) + std::to_string(hour) + Formatted(":%M:%S ", now)
           + (now.tm_hour < noon ? "AM" : "PM");
}

std::string RecordText(const ActivityRecord& record, bool full, const std::tm& now) {
    std::string text = Line(record.ImageFileName);
    text += Line((record.IsUpload ? "Uploaded: " : "Flashed: ") + TimeStamp(now));
    if (record.Succeeded) {
        text += Line(record.Timing);
    }
    text += Line("Status: " + record.Status);
    if (!full || !record.Succeeded) {
        return text;
    }
    text += Line("File Information: ");
    text += Line("Checksum: " + record.Checksum);
    text += Line("Version: " + record.Version);
    text += Line("Date Stamp: " + record.DateStamp);
    text += Line("Language: " + record.Language);
    if (!record.Size.empty()) {
        text += Line("Size: " + record.Size);
    }
    if (record.Verifying) {
        text += Line("Verification: " + record.Result);
    }
    return text;
}

// The files in the log's folder.
struct LogFiles {
    explicit LogFiles(const fs::path& folder)
        : Folder(folder),
          Live(LogPath(folder)),
          Scratch(folder / "Burnwick1.log"),
          Lock(LogLockPath(folder)) {}

    fs::path Folder;
    fs::path Live;
    fs::path Scratch;
    fs::path Lock;
};

// A link counts as what it leads to.
fs::file_type TypeOf(const fs::path& path) {
    std::error_code error;
    return fs::status(path, error).type();
}

// Not so for a name that nobody must have: renaming would overwrite a link as well.
bool IsFree(const fs::path& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() == fs::file_type::not_found;
}

// 0 when there is none.
std::uintmax_t SizeOf(const fs::path& file) {
    std::error_code error;
    const auto size = fs::file_size(file, error);
    return error ? 0 : size;
}

// Adds an entry with one write, so that entries of two programs never mix. `locked`: nobody else writes, so
// that half an entry (a full disk) can be taken back.
void Append(const fs::path& live, const std::string& entry, bool locked) {
    const auto type = TypeOf(live);
    if (type != fs::file_type::regular && type != fs::file_type::not_found) {
        return;
    }
    const auto size = SizeOf(live);
    const std::string text = size > 0 ? Line(" ") + entry : entry;
    std::ofstream file(live, std::ios::app | std::ios::binary);
    if (!file) {
        return;
    }
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file && locked && SizeOf(live) > size) {
        std::error_code ignored;
        fs::resize_file(live, size, ignored);
    }
}

// Finds where the last records of a log begin, from its bytes as they come. A record's first line is a path.
class RecordFinder {
public:
    void Take(std::string_view bytes) {
        for (const char c : bytes) {
            IsPath_ = IsPath_ || c == '\\' || (c == '/' && Position_ == LineBegin_);
            ++Position_;
            if (c == '\n') {
                EndLine();
            }
        }
    }

    // The whole log when there are fewer records than are kept.
    std::streamoff Begin() {
        EndLine();
        return Paths_.size() < KeptRecords ? 0 : Paths_.front();
    }

private:
    void EndLine() {
        if (IsPath_) {
            Paths_.push_back(LineBegin_);
            if (Paths_.size() > KeptRecords) {
                Paths_.pop_front();
            }
        }
        IsPath_ = false;
        LineBegin_ = Position_;
    }

    std::streamoff Position_ = 0;
    std::streamoff LineBegin_ = 0;
    bool IsPath_ = false;
    std::deque<std::streamoff> Paths_;  // the last ones
};

// Hands all that is left in the file to `take`, in pieces; false when it cannot be read.
template <typename Take>
bool ReadRest(std::ifstream& file, Take take) {
    constexpr std::size_t chunkSize = 65'536;
    std::array<char, chunkSize> chunk{};
    while (file) {
        file.read(chunk.data(), chunk.size());
        take(std::string_view(chunk.data(), static_cast<std::size_t>(file.gcount())));
    }
    return file.eof() && !file.bad();
}

bool CopyLastRecords(const fs::path& from, const fs::path& to) {
    std::ifstream live(from, std::ios::binary);
    RecordFinder records;
    if (!ReadRest(live, [&records](std::string_view bytes) { records.Take(bytes); })) {
        return false;
    }
    live.clear();
    live.seekg(records.Begin());
    std::ofstream scratch(to, std::ios::trunc | std::ios::binary);
    const bool whole = scratch.is_open() && ReadRest(live, [&scratch](std::string_view bytes) {
                           scratch.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
                       });
    scratch.close();
    return whole && scratch;
}

// The local day of the last write, "yyyymmdd".
std::string DayOf(const fs::path& file) {
    std::error_code error;
    const auto written = fs::last_write_time(file, error);
    const auto system = std::chrono::file_clock::to_sys(written);
    const auto time = std::chrono::system_clock::to_time_t(
        std::chrono::time_point_cast<std::chrono::system_clock::duration>(system));
    const std::tm* const local = error ? nullptr : std::localtime(&time);
    return local == nullptr ? "" : Formatted("%Y%m%d", *local);
}

// A name that is free for the archive of the log; nothing when there is none.
std::optional<fs::path> ArchiveName(const LogFiles& files, const std::tm& now) {
    const auto day = DayOf(files.Live);
    for (const auto& name : {day, day + Formatted("_%H%M", now)}) {
        const auto archive = files.Folder / ("Burnwick" + name + ".log");
        if (!day.empty() && IsFree(archive)) {
            return archive;
        }
    }
    return std::nullopt;
}

// Archives the log, and begins it anew with its last records. Needs the lock: renaming would overwrite the
// archive that another program makes at the same time. Ended between the two renamings, it leaves no log but
// an archive that has every record; the next entry then begins a new log.
void Rotate(const LogFiles& files, const std::tm& now) {
    std::error_code error;
    if (!IsFree(files.Scratch) && TypeOf(files.Scratch) != fs::file_type::regular) {
        return;
    }
    if (!CopyLastRecords(files.Live, files.Scratch)) {
        fs::remove(files.Scratch, error);
        return;
    }
    fs::permissions(files.Scratch, fs::status(files.Live, error).permissions(), error);
    const auto archive = ArchiveName(files, now);
    if (!archive) {
        return;
    }
    fs::rename(files.Live, *archive, error);
    if (!error && IsFree(files.Live)) {
        fs::rename(files.Scratch, files.Live, error);
    }
}

bool MustRotate(const fs::path& live) {
    // A log that may not be written is left as it is, name included.
    return TypeOf(live) == fs::file_type::regular && SizeOf(live) > LongestLog
           && std::ofstream(live, std::ios::app | std::ios::binary).is_open();
}

}  // namespace

void WriteActivityLog(const fs::path& folder, const std::string& logOption, const ActivityRecord& record,
                      const std::tm& now) {
    if (!record.Started || logOption.empty() || logOption == "&Disable") {
        return;
    }
    const LogFiles files(folder);
    const auto lock = LockFile(files.Lock, WriteLockLimit);
    if (lock && MustRotate(files.Live)) {
        Rotate(files, now);
    }
    Append(files.Live, RecordText(record, logOption == "&All", now), lock != nullptr);
}

void LogBaudRateChange(const fs::path& folder, bool to57600, const std::tm& now) {
    const LogFiles files(folder);
    const auto lock = LockFile(files.Lock, WriteLockLimit);
    if (TypeOf(files.Live) != fs::file_type::regular) {
        return;
    }
    const std::string text =
        Line("Baud rate changed:") + Line("Date: " + TimeStamp(now))
        + Line(to57600 ? "Changed: 115200bps to 57600bps." : "Changed: 57600bps to 115200bps.");
    Append(files.Live, text, lock != nullptr);
}

}  // namespace burnwick
