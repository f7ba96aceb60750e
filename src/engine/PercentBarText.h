#pragma once

#include <string>

namespace burnwick {

// How many percent of the bar a value covers: a fraction counts as a whole one, and a value above `max` as
// `max`. 0 for a negative value, and where there is nothing to reach.
int BarPercent(int value, int max);

// What stands in the bar: "34%" as long as its caption contains "Bar", else the caption itself.
std::string BarText(const std::string& caption, int percent);

}  // namespace burnwick
