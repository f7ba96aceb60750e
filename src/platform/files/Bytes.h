#pragma once

#include <cstddef>
#include <vector>

namespace burnwick {

// A message on the line, or the content of a file.
using Bytes = std::vector<std::byte>;

}  // namespace burnwick
