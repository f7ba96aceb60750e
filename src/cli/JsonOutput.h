#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/RunReport.h"
#include "engine/ImageInfo.h"
#include "image/modBinFileInfo.h"
#include "ports/modFindCOMPorts.h"

namespace burnwick::cli {

// What --json prints. Text that is not UTF-8 (a file name may be any bytes) has its bad bytes replaced.

void PrintJson(std::ostream& out, const RunReport& report);

// One line.
void PrintJson(std::ostream& out, const modBinFileInfo::BinFileInfo& info, const ImageInfo& link);

void PrintJson(std::ostream& out, const std::vector<FoundPort>& ports);

struct Comparison {
    std::string Result;                       // "identical", "different" or "error"
    std::optional<std::int32_t> Differences;  // bytes; none when the files could not be compared
    std::string Message;
};
void PrintJson(std::ostream& out, const Comparison& comparison);

}  // namespace burnwick::cli
