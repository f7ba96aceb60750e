#include "bench/Measurements.h"

namespace bench {

Figures MeasureWindowCost(const std::filesystem::path& /*folder*/) {
    return {};
}

}  // namespace bench
