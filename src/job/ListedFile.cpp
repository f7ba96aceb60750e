#include "job/ListedFile.h"

#include <algorithm>

#include "platform/files/FolderNames.h"
#include "platform/files/Utf8Path.h"

namespace burnwick {

namespace fs = std::filesystem;

namespace {

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

fs::path ListedIn(const fs::path& folder, const std::string& name) {
    const std::string wanted = LowerCase(name);
    std::string found;
    std::error_code error;
    // A folder tells its names in any order.
    for (const fs::path& entry : FolderNames(folder, error)) {
        std::error_code ignored;
        const std::string listed = Utf8Text(entry);
        const bool isNearer = found.empty() || listed == name || (found != name && listed < found);
        if (isNearer && LowerCase(listed) == wanted && fs::is_regular_file(folder / entry, ignored)) {
            found = listed;
        }
    }
    return found.empty() ? fs::path() : folder / Utf8Path(found);
}

}  // namespace

fs::path ListedFile(const std::vector<fs::path>& folders, const std::string& name) {
    for (const fs::path& folder : folders) {
        if (auto file = ListedIn(folder, name); !file.empty()) {
            return file;
        }
    }
    return {};
}

}  // namespace burnwick
