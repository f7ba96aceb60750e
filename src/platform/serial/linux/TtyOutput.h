#pragma once

#include <optional>

namespace burnwick {

// What has become of the bytes that a terminal device was given: tcdrain() waits for them, and knows no
// limit.

// A pseudo-terminal delivers what it is given at once.
bool IsPseudoTerminal(int fd);

// True while the driver has bytes that it has not handed on to the chip.
bool DriverHoldsOutput(int fd);

// Nothing when the driver cannot look into its chip.
std::optional<bool> ChipIsEmpty(int fd);

}  // namespace burnwick
