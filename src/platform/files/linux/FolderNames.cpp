#include "platform/files/FolderNames.h"

namespace burnwick {

namespace fs = std::filesystem;

std::vector<fs::path> FolderNames(const fs::path& folder, std::error_code& error) {
    std::vector<fs::path> names;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        names.push_back(entry->path().filename());
    }
    return names;
}

}  // namespace burnwick
