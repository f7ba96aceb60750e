#include "platform/files/XdgFolders.h"

#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/files/ReadWholeFile.h"
#include "platform/files/TextLines.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// By the convention of these variables a relative path counts as none.
std::optional<fs::path> FolderIn(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value == '/' ? std::optional(fs::path(value)) : std::nullopt;
}

std::string WithoutBackslashes(std::string_view quoted) {
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        i += quoted[i] == '\\' && i + 1 < quoted.size() ? 1 : 0;
        text += quoted[i];
    }
    return text;
}

// Of a line `XDG_DESKTOP_DIR="$HOME/Desktop"`; nothing when it is another one.
std::optional<fs::path> DesktopOf(std::string_view line, const fs::path& home) {
    constexpr std::string_view key = "XDG_DESKTOP_DIR";
    constexpr std::string_view inHome = "$HOME";
    auto value = Trimmed(line);
    if (!value.starts_with(key)) {
        return std::nullopt;
    }
    value = Trimmed(value.substr(key.size()));
    if (!value.starts_with('=')) {
        return std::nullopt;
    }
    value = Trimmed(value.substr(1));
    if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"')) {
        return std::nullopt;
    }
    value = value.substr(1, value.size() - 2);
    if (value.starts_with('/')) {
        return WithoutBackslashes(value);
    }
    if (value == inHome || value.starts_with("$HOME/")) {
        return home.string() + WithoutBackslashes(value.substr(inHome.size()));
    }
    return std::nullopt;
}

bool SameFolder(const fs::path& one, const fs::path& other) {
    return (one / "").lexically_normal() == (other / "").lexically_normal();
}

}  // namespace

std::optional<UserFolders> FoldersOfUser() {
    const auto home = FolderIn("HOME");
    if (!home) {
        return std::nullopt;
    }
    return UserFolders{*home, DataFolder(*home), FolderIn("XDG_CONFIG_HOME").value_or(*home / ".config")};
}

fs::path DataFolder(const fs::path& home) {
    return FolderIn("XDG_DATA_HOME").value_or(home / ".local/share");
}

fs::path DesktopFolder(const UserFolders& folders) {
    fs::path desktop = folders.Home / "Desktop";
    const auto list = ReadWholeFile(folders.Config / "user-dirs.dirs").value_or("");
    for (const auto line : LinesOf(list)) {
        desktop = DesktopOf(line, folders.Home).value_or(desktop);
    }
    // The home itself in its place means: none.
    return SameFolder(desktop, folders.Home) ? fs::path() : desktop;
}

}  // namespace burnwick
