#pragma once

#include <span>
#include <string>

#include "cli/ExitStatus.h"
#include "cli/RunReport.h"
#include "run/RunOutcome.h"
#include "run/Verification.h"

namespace burnwick::cli {

ExitStatus StatusOf(RunOutcome outcome);

// One line about a transfer that ended so; empty when all went well. `portName` as "COM5 (/dev/ttyUSB0)",
// `said` the lines of the transfer.
std::string WordFailure(const RunReport& report, const std::string& portName,
                        std::span<const std::string> said);

// One line about a unit whose flash was read back and is not known to be the image.
std::string WordMismatch(const std::string& image, const Verdict& verdict);

// Why a file cannot be read; empty when it can.
std::string WordAccessTrouble(const std::string& fileName);

// Why a file is refused as an image; empty when it is not.
std::string WordImageRefusal(const std::string& fileName);

// Why a file of this length is no image to the link.
std::string WordInvalidSize();

}  // namespace burnwick::cli
