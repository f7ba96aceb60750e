#pragma once

#include <filesystem>

#include "bench/Figure.h"

namespace bench {

// The viewer of an activity log of 20 MB: how soon it is there, how fast it finds that there is nothing, and
// how it answers meanwhile. Needs an application.
Figures MeasureLogCost(const std::filesystem::path& folder);

}  // namespace bench
