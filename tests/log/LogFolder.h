#pragma once

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

#include "log/ActivityLog.h"
#include "support/TempFolder.h"

namespace burnwick::test {

// Tests on a log in a folder of their own.
class LogFolder : public ::testing::Test {
protected:
    // Thursday, 07/22/2004, 3:05:09 PM.
    static std::tm Afternoon() {
        std::tm time{};
        time.tm_year = 104;
        time.tm_mon = 6;
        time.tm_mday = 22;
        time.tm_hour = 15;
        time.tm_min = 5;
        time.tm_sec = 9;
        time.tm_isdst = -1;
        return time;
    }

    // A run that failed, so that its record is three lines.
    static ActivityRecord Failure(const std::string& image) {
        ActivityRecord record;
        record.Started = true;
        record.ImageFileName = image;
        record.Status = "No response";
        return record;
    }

    static std::string FailureText(const std::string& image) {
        return image + "\r\nFlashed: 07/22/2004 3:05:09 PM\r\nStatus: No response\r\n";
    }

    static std::string NoteText() {
        return "Baud rate changed:\r\nDate: 07/22/2004 3:05:09 PM\r\nChanged: 57600bps to 115200bps.\r\n";
    }

    static void Put(const std::filesystem::path& path, std::string_view content) {
        std::ofstream(path, std::ios::binary) << content;
    }

    static std::string Content(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string Log() const { return Content(Live); }

    void Write(const ActivityRecord& record, const std::string& logOption = "&All") const {
        WriteActivityLog(Folder.Path(), logOption, record, Afternoon());
    }

    // The names in the folder, locks apart.
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Folder.Path())) {
            if (entry.path().extension() != ".lock") {
                names.insert(entry.path().filename().string());
            }
        }
        return names;
    }

    TempFolder Folder;
    std::filesystem::path Live = Folder.Path() / "Burnwick.log";
    std::filesystem::path Scratch = Folder.Path() / "Burnwick1.log";
};

}  // namespace burnwick::test
