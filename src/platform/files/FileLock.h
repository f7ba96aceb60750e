#pragma once

#include <chrono>
#include <filesystem>
#include <memory>

namespace burnwick {

// A lock that at most one process holds, kept as a file beside what it guards. Ends with its object, and with
// its process however that ends.
class FileLock {
public:
    virtual ~FileLock() = default;
};

// Waits at most so long for the lock; gives none when another process kept it or the file cannot be made.
std::unique_ptr<FileLock> LockFile(const std::filesystem::path& path, std::chrono::milliseconds atMost);

}  // namespace burnwick
