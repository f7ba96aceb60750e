#include "app/DirFile.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "image/modBinFileInfo.h"
#include "platform/files/Utf8Path.h"

namespace burnwick::DirFile {

namespace {

constexpr std::string_view Blanks = " \t";

std::string Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(Blanks);
    const auto last = text.find_last_not_of(Blanks);
    return first == std::string_view::npos ? "" : std::string(text.substr(first, last - first + 1));
}

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Where the drive or the network share of a text begins; its start when it has neither.
std::size_t RootOf(std::string_view text) {
    const auto drive = text.find(":\\");
    if (drive != std::string_view::npos && drive > 0 && IsLetter(text[drive - 1])) {
        return drive - 1;
    }
    const auto share = text.find("\\\\");
    return share == std::string_view::npos ? 0 : share;
}

bool Exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(Utf8Path(path), ignored);
}

}  // namespace

std::string CleanPath(const std::string& argument) {
    if (Exists(argument)) {
        return argument;
    }
    std::string text = argument;
    std::erase(text, '"');
    text = Trimmed(text);
    text.erase(0, RootOf(text));
    return text;
}

std::string FileName(const std::string& path) {
    return modBinFileInfo::FileNameOf(path);
}

std::string Folder(const std::string& path) {
    return modBinFileInfo::FolderOf(path);
}

}  // namespace burnwick::DirFile
