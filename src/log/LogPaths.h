#pragma once

#include <filesystem>

namespace burnwick {

// The activity log in its folder, and what who writes or clears it holds meanwhile.
inline std::filesystem::path LogPath(const std::filesystem::path& folder) {
    return folder / "Burnwick.log";
}

inline std::filesystem::path LogLockPath(const std::filesystem::path& folder) {
    return folder / "Burnwick.log.lock";
}

}  // namespace burnwick
