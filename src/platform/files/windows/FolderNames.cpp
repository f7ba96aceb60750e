#include "platform/files/FolderNames.h"

#include "platform/process/windows/SystemHeaders.h"

#include <memory>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

struct EndOfSearch {
    void operator()(void* search) const { FindClose(search); }
};

// In the words that all systems have.
std::error_code LastError() {
    const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
    const auto common = error.default_error_condition();
    return common.category() == std::generic_category() ? std::error_code(common.value(), common.category())
                                                        : error;
}

// Set when it is no folder, or not there.
std::error_code TroubleWith(const fs::path& folder) {
    const DWORD attributes = GetFileAttributesW(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return LastError();
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? std::error_code()
                                                        : std::make_error_code(std::errc::not_a_directory);
}

bool IsOfEveryFolder(const std::wstring& name) {
    return name == L"." || name == L"..";
}

}  // namespace

// The standard library's own way takes a path of more than 260 characters for the working folder.
std::vector<fs::path> FolderNames(const fs::path& folder, std::error_code& error) {
    std::vector<fs::path> names;
    error = TroubleWith(folder);
    if (error) {
        return names;
    }
    WIN32_FIND_DATAW found{};
    const HANDLE first = FindFirstFileW((folder / L"*").c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) {
        // A drive's root has not even the names that every folder has.
        error = GetLastError() == ERROR_FILE_NOT_FOUND ? std::error_code() : LastError();
        return names;
    }
    const std::unique_ptr<void, EndOfSearch> search(first);
    do {
        if (const std::wstring name = found.cFileName; !IsOfEveryFolder(name)) {
            names.emplace_back(name);
        }
    } while (FindNextFileW(search.get(), &found) != 0);
    error = GetLastError() == ERROR_NO_MORE_FILES ? std::error_code() : LastError();
    return names;
}

}  // namespace burnwick
