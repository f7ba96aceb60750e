#pragma once

#include <string>

#include "cli/ExitStatus.h"
#include "cli/RunReport.h"
#include "engine/RunResult.h"
#include "image/Image.h"
#include "job/Verification.h"

namespace burnwick::cli {

ExitStatus StatusOf(Outcome outcome);

// Why a transfer failed and what to do, in one line; empty when it succeeded. `portName` as "COM5
// (/dev/ttyUSB0)".
std::string WordFailure(const RunReport& report, const std::string& portName, const RunResult& run);

// One line about a unit whose flash was read back and is not known to be the image.
std::string WordMismatch(const Image& image, const Verdict& verdict);

// Why a file cannot be read; empty when it can.
std::string WordAccessTrouble(const std::string& fileName);

// Why a file is refused as an image.
std::string WordImageRefusal(const std::string& fileName, const modBinFileInfo::ImageRefusal& refusal);

// Why a file of this length is no image to the link.
std::string WordInvalidSize();

}  // namespace burnwick::cli
