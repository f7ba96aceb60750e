#pragma once

#include <filesystem>

namespace burnwick {

// A folder for locks and sockets that no other user may enter; emptied when the system starts. Made when it
// is missing; empty when there is none that can be trusted.
std::filesystem::path RuntimeFolder();

}  // namespace burnwick
