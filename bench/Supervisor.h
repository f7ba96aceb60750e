#pragma once

#include <filesystem>
#include <functional>

namespace bench {

// Runs `work` with a folder of its own in a process of its own, and gives what it returns. Whichever way that
// ends, by itself or by a signal, the folder and every process that it started go with it.
int Supervise(const std::function<int(const std::filesystem::path& folder)>& work);

}  // namespace bench
