#include "platform/files/RuntimeFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

bool IsOursAlone(const fs::path& folder) {
    struct stat status {};
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid()
           && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

}  // namespace

fs::path RuntimeFolder() {
    const char* const given = std::getenv("XDG_RUNTIME_DIR");
    // A program that was started by way of another user has that user's.
    if (given != nullptr && IsOursAlone(given)) {
        return given;
    }
    std::error_code error;
    fs::path own = fs::temp_directory_path(error) / ("burnwick-" + std::to_string(geteuid()));
    mkdir(own.c_str(), S_IRWXU);
    // Anyone may make anything in the folder for temporary files.
    return !error && IsOursAlone(own) ? own : fs::path();
}

}  // namespace burnwick
