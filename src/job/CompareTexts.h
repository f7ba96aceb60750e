#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "image/DifferingRanges.h"
#include "platform/window/BoxText.h"

// What the compare dialog says. Texts are UTF-8.
namespace burnwick {

inline constexpr const char* IdleStatus = "Status:";
inline constexpr const char* ComparingStatus = "Status: Comparing...";

// Why two files are not even compared.
struct CompareRefusal {
    BoxText Box;
    std::string Status;
    int File;  // which of the two has to be another one; 0: either
};

// The first of the checks that two paths fail; nothing when the files can be compared.
std::optional<CompareRefusal> RefuseComparison(
    const std::string& file1, const std::string& file2,
    const std::function<std::string(const std::string&)>& lowerCase);

// The status after a comparison, from what CompareImages gave.
std::string CompareStatus(const std::string& compared, std::int32_t differences);

// A line of the list of differing ranges: where, how many bytes, and the first of them in each file.
inline constexpr std::size_t RangeColumns = 4;
using RangeLine = std::array<std::string, RangeColumns>;

RangeLine RangeHeadings();
// "0000FF00", "3", "01 02 03", "0A 0B 0C"; bytes that are not shown are told by an ellipsis.
RangeLine RangeTexts(const modBinFileInfo::DifferingRange& range);

// A line as text, with tabs between its columns and an end.
std::string TabbedLine(const RangeLine& line);

// What stands below the list; empty for an empty one.
std::string RangesCaption(const modBinFileInfo::DifferingRanges& ranges);

}  // namespace burnwick
