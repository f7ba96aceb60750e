#pragma once

#include <chrono>

#include "log/LogFolder.h"

namespace burnwick::test {

// Tests on a log that has grown too long.
class BigLog : public LogFolder {
protected:
    static constexpr std::size_t Longest = 16'384;

    // Record number `n`, `size` bytes long with the line in front that parts it from the one before.
    static std::string Record(int n, std::size_t size) {
        std::string text = n > 1 ? " \r\n" : "";
        text += "/images/" + std::to_string(n) + ".bin\r\nFlashed: 07/21/2004 1:00:00 AM\r\nStatus: ";
        text += std::string(size - text.size() - 2, 'x');
        return text + "\r\n";
    }

    static std::string Records(int first, int last, std::size_t size = 500) {
        std::string text;
        for (int n = first; n <= last; ++n) {
            text += Record(n, size);
        }
        return text;
    }

    // What the copy begins with: a record's own line, without the one that parted it.
    static std::string FromItsPath(const std::string& records) { return records.substr(3); }

    // The local time at which the log was written last.
    static void SetLastWrite(const std::filesystem::path& path, int year, int month, int day, int hour = 12) {
        std::tm time{};
        time.tm_year = year - 1900;
        time.tm_mon = month - 1;
        time.tm_mday = day;
        time.tm_hour = hour;
        time.tm_isdst = -1;
        const auto moment = std::chrono::system_clock::from_time_t(std::mktime(&time));
        std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(moment));
    }

    // Written last on 07/21/2004.
    void LogHolds(std::string_view text) const {
        Put(Live, text);
        SetLastWrite(Live, 2004, 7, 21);
    }

    std::filesystem::path Archive = Folder.Path() / "Burnwick20040721.log";
    std::filesystem::path SecondArchive = Folder.Path() / "Burnwick20040721_1505.log";
};

}  // namespace burnwick::test
