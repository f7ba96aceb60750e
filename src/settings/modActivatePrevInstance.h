#pragma once

#include <string>

namespace burnwick {
class SingleInstance;
}

// One copy of the program at a time, unless that one is programming a unit.
namespace burnwick::modActivatePrevInstance {

// Brings a copy that runs already forward; true when it came, and this one is to end at once.
// `programmingStatus` is the stored value of Status/Programming: "Yes" lets this copy run beside the other,
// to program a second unit. To be called before this copy claims its place, so that it cannot find itself.
bool ActivatePrevInstance(SingleInstance& copies, const std::string& programmingStatus);

}  // namespace burnwick::modActivatePrevInstance
