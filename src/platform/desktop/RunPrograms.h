#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace burnwick {

// Starts programs side by side, each a name (looked for like a shell does) and its arguments, and waits for
// them; who still runs after so long is ended. What they print is lost; one that is missing is no error.
void RunPrograms(const std::vector<std::vector<std::string>>& commands, std::chrono::milliseconds atMost);

}  // namespace burnwick
