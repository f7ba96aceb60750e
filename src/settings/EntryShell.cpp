#include "settings/EntryShell.h"

#include <chrono>
#include <string>
#include <string_view>

#include "platform/desktop/RunPrograms.h"
#include "platform/files/FileLock.h"
#include "platform/files/ReadWholeFile.h"
#include "platform/files/ReplaceFile.h"
#include "platform/files/Utf8Path.h"
#include "platform/files/XdgFolders.h"
#include "settings/DesktopEntry.h"
#include "settings/MimeDefaults.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

constexpr const char* EntryName = "Burnwick.desktop";

// What the system says of "*.bin" has the weight 50.
constexpr std::string_view MimePackage = R"(<?xml version="1.0" encoding="UTF-8"?>
<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
  <mime-type type="application/x-burnwick-image">
    <comment>Burnwick File</comment>
    <icon name="burnwick"/>
    <sub-class-of type="application/octet-stream"/>
    <glob pattern="*.bin" weight="80"/>
  </mime-type>
</mime-info>
)";

fs::path EntryPath(const UserFolders& folders) {
    return folders.Data / "applications" / EntryName;
}

fs::path PackagePath(const UserFolders& folders) {
    return folders.Data / "mime/packages/burnwick.xml";
}

fs::path DefaultsPath(const UserFolders& folders) {
    return folders.Config / "mimeapps.list";
}

// Empty when there is no desktop.
fs::path LauncherPath(const UserFolders& folders) {
    const auto desktop = DesktopFolder(folders);
    return desktop.empty() ? desktop : desktop / EntryName;
}

std::string TextOf(const fs::path& path) {
    return ReadWholeFile(path).value_or("");
}

// Kept among the program's own files: the folders that are written to belong to all programs.
std::unique_ptr<FileLock> LockDesktop(const UserFolders& folders) {
    constexpr auto longestWait = std::chrono::seconds(1);
    const auto folder = folders.Data / "burnwick";
    std::error_code error;
    fs::create_directories(folder, error);
    return LockFile(folder / "desktop.lock", longestWait);
}

// False when the file does not have the content in the end.
bool Store(const fs::path& path, std::string_view content) {
    if (ReadWholeFile(path) == content) {
        return true;
    }
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    return ReplaceFile(path, content);
}

// `change` gives the new text. A list that cannot be read is left: what other programs have in it would be
// lost.
void ChangeDefaults(const UserFolders& folders,
                    std::string (*change)(std::string list, std::string_view type, std::string_view entry)) {
    if (const auto list = ReadWholeFile(DefaultsPath(folders))) {
        const auto changed = change(*list, ImageMimeType, EntryName);
        if (changed != *list) {
            Store(DefaultsPath(folders), changed);
        }
    }
}

// What desktops look things up in is made from what was written. Where these programs are missing, so is who
// would need it.
void UpdateDatabases(const UserFolders& folders) {
    constexpr auto longestWait = std::chrono::seconds(2);
    RunPrograms({{"update-mime-database", Utf8Text(folders.Data / "mime")},
                 {"update-desktop-database", Utf8Text(folders.Data / "applications")}},
                longestWait);
}

bool AnythingRegistered(const UserFolders& folders) {
    std::error_code error;
    const auto list = TextOf(DefaultsPath(folders));
    return fs::exists(EntryPath(folders), error) || fs::exists(PackagePath(folders), error)
           || WithoutDefault(list, ImageMimeType, EntryName) != list;
}

bool IsLauncher(const fs::path& path, std::string_view content) {
    std::error_code error;
    const auto status = fs::symlink_status(path, error);
    return fs::is_regular_file(status) && (status.permissions() & fs::perms::owner_exec) != fs::perms::none
           && ReadWholeFile(path) == content;
}

// Leaves a folder of this name: the program makes files only.
void RemoveFile(const fs::path& path) {
    std::error_code error;
    if (!fs::is_directory(fs::symlink_status(path, error))) {
        fs::remove(path, error);
    }
}

}  // namespace

fs::path EntryShell::AssociatedProgram() const {
    const auto folders = FoldersOfUser();
    if (!folders || !IsDefault(TextOf(DefaultsPath(*folders)), ImageMimeType, EntryName)) {
        return {};
    }
    return ProgramOf(TextOf(EntryPath(*folders)));
}

void EntryShell::RegisterFileType(const fs::path& program) {
    const auto folders = FoldersOfUser();
    const auto lock = folders ? LockDesktop(*folders) : nullptr;
    if (!lock || !Store(EntryPath(*folders), AssociationEntry(program))
        || !Store(PackagePath(*folders), MimePackage)) {
        return;
    }
    ChangeDefaults(*folders, WithDefault);
    UpdateDatabases(*folders);
}

void EntryShell::UnregisterFileType() {
    const auto folders = FoldersOfUser();
    if (!folders || !AnythingRegistered(*folders)) {
        return;
    }
    if (const auto lock = LockDesktop(*folders)) {
        ChangeDefaults(*folders, WithoutDefault);
        RemoveFile(EntryPath(*folders));
        RemoveFile(PackagePath(*folders));
        UpdateDatabases(*folders);
    }
}

void EntryShell::CreateDesktopShortcut(const fs::path& program) {
    const auto folders = FoldersOfUser();
    const auto path = folders ? LauncherPath(*folders) : fs::path();
    const auto launcher = LauncherEntry(program);
    std::error_code error;
    if (path.empty() || !fs::is_directory(path.parent_path(), error) || IsLauncher(path, launcher)) {
        return;
    }
    const auto lock = LockDesktop(*folders);
    // A link may lead to the entry of the association, which is another one.
    if (lock && fs::is_symlink(path, error)) {
        RemoveFile(path);
    }
    if (lock && ReplaceFile(path, launcher)) {
        constexpr auto executable = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
        fs::permissions(path, executable, fs::perm_options::add, error);
    }
}

void EntryShell::DeleteDesktopShortcut() {
    const auto folders = FoldersOfUser();
    if (const auto path = folders ? LauncherPath(*folders) : fs::path(); !path.empty()) {
        RemoveFile(path);
    }
}

}  // namespace burnwick
