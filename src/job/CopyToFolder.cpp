#include "job/CopyToFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <optional>

#include "image/modBinFileInfo.h"
#include "platform/files/FolderNames.h"
#include "platform/files/Utf8Path.h"

namespace burnwick {

namespace fs = std::filesystem;

namespace {

std::optional<std::tm> LocalTime(fs::file_time_type time) {
    using std::chrono::system_clock;
    const auto system = std::chrono::file_clock::to_sys(time);
    const std::time_t seconds =
        system_clock::to_time_t(std::chrono::time_point_cast<system_clock::duration>(system));
    const std::tm* const local = std::localtime(&seconds);
    return local != nullptr ? std::optional(*local) : std::nullopt;
}

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

// What the system said last; `otherwise` when it said nothing.
std::error_code LastError(std::errc otherwise) {
    return errno != 0 ? std::error_code(errno, std::generic_category()) : std::make_error_code(otherwise);
}

// Renaming a new file into the place of one that may not be written would go past what its permissions say.
std::error_code WriteTrouble(const fs::path& file) {
    errno = 0;
    const std::ofstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
    return stream ? std::error_code() : LastError(std::errc::permission_denied);
}

// A new folder for a file on its way: beside the target, so that it can be renamed into its place, and under
// a name that nobody has, for the folder around is the user's. Gone with its file.
class PassingFolder {
public:
    explicit PassingFolder(const fs::path& target) {
        constexpr int mostNames = 100;
        for (int i = 1; i <= mostNames; ++i) {
            Path_ = target.parent_path() / ("Burnwick-copy-" + std::to_string(i) + ".tmp");
            File_ = Path_ / target.filename();
            IsMade_ = fs::create_directory(Path_, Error_);
            if (IsMade_ || (Error_ && Error_ != std::errc::file_exists)) {
                return;
            }
        }
        Error_ = std::make_error_code(std::errc::file_exists);
    }
    PassingFolder(const PassingFolder&) = delete;
    PassingFolder& operator=(const PassingFolder&) = delete;
    ~PassingFolder() {
        std::error_code ignored;
        if (IsMade_) {
            // Not every system removes what may not be written.
            fs::permissions(File_, fs::perms::owner_write, fs::perm_options::add, ignored);
            fs::remove(File_, ignored);
            fs::remove(Path_, ignored);
        }
    }

    const fs::path& File() const { return File_; }
    std::error_code Error() const { return Error_; }

private:
    fs::path Path_;
    fs::path File_;
    bool IsMade_ = false;
    std::error_code Error_;
};

std::error_code WriteCopy(const fs::path& source, const fs::path& fresh) {
    errno = 0;
    std::ifstream from(source, std::ios::binary);
    std::ofstream to(fresh, std::ios::binary);
    std::array<char, 65'536> piece{};
    while (from && to) {
        from.read(piece.data(), piece.size());
        to.write(piece.data(), from.gcount());
    }
    to.close();
    return to && from.eof() ? std::error_code() : LastError(std::errc::io_error);
}

std::error_code Copy(const fs::path& source, const fs::path& target, fs::perms permissions) {
    const PassingFolder passing(target);
    if (passing.Error()) {
        return passing.Error();
    }
    std::error_code error = WriteCopy(source, passing.File());
    if (!error) {
        std::error_code ignored;  // some file systems know no permissions
        fs::permissions(passing.File(), permissions, ignored);
        fs::rename(passing.File(), target, error);
    }
    return error;
}

}  // namespace

fs::path PathIn(const std::string& folder, const std::string& name) {
    fs::path path = Utf8Path(folder);
    path += fs::path::preferred_separator;
    path += Utf8Path(name);
    return path;
}

bool HasFile(const std::string& folder, const std::string& name, std::error_code& error) {
    const fs::path wanted = Utf8Path(name);
    const auto names = FolderNames(Utf8Path(folder), error);
    std::error_code ignored;
    return std::find(names.begin(), names.end(), wanted) != names.end()
           && !fs::is_directory(Utf8Path(folder) / wanted, ignored);
}

std::string SizeAndTime(std::uint64_t bytes, const std::tm& modified) {
    constexpr int firstYear = 1900;
    return modBinFileInfo::FormatFileSize(bytes) + ", " + TwoDigits(modified.tm_mon + 1) + "/"
           + TwoDigits(modified.tm_mday) + "/" + std::to_string(firstYear + modified.tm_year) + " "
           + std::to_string(modified.tm_hour) + ":" + TwoDigits(modified.tm_min) + ":"
           + TwoDigits(modified.tm_sec);
}

std::string SizeAndTimeOf(const fs::path& file) {
    std::error_code error;
    const auto bytes = fs::file_size(file, error);
    const auto written = error ? fs::file_time_type() : fs::last_write_time(file, error);
    const auto modified = error ? std::nullopt : LocalTime(written);
    return modified ? SizeAndTime(bytes, *modified) : modBinFileInfo::NotAvailable;
}

std::string SourceTrouble(const fs::path& source) {
    const std::string trouble = modBinFileInfo::ReadTrouble(Utf8Text(source));
    return trouble.empty() ? "" : "The file cannot be read: " + trouble + ".";
}

std::string CopyWhole(const fs::path& source, const fs::path& target, Existing existing) {
    if (std::string trouble = SourceTrouble(source); !trouble.empty()) {
        return trouble;
    }
    std::error_code error;
    const auto cannotWrite = [&error] { return "The copy cannot be written: " + error.message() + "."; };
    const auto status = fs::status(target, error);
    if (status.type() == fs::file_type::not_found) {
        error = Copy(source, target, fs::status(source, error).permissions());
        return error ? cannotWrite() : "";
    }
    if (error) {
        return cannotWrite();
    }
    if (fs::equivalent(source, target, error)) {
        return "";
    }
    if (!fs::is_regular_file(status)) {
        const char* const kind = fs::is_directory(status) ? "a folder" : "not a file";
        return std::string("What has this name in the folder is ") + kind + ".";
    }
    if (existing == Existing::Keep) {
        return "The folder holds another file that this one would replace.";
    }
    const fs::path replaced = fs::canonical(target, error);
    if (!error) {
        error = WriteTrouble(replaced);
    }
    if (!error) {
        error = Copy(source, replaced, status.permissions());
    }
    return error ? cannotWrite() : "";
}

}  // namespace burnwick
