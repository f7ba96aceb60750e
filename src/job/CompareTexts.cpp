#include "job/CompareTexts.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "job/Verification.h"
#include "platform/files/Utf8Path.h"

namespace burnwick {

namespace fs = std::filesystem;

namespace {

CompareRefusal Refusal(int file, const std::string& caption, const std::string& message) {
    return {{caption, message + "\t"}, "Status: " + message, file};
}

// A folder of that name is no file. What cannot be looked at is taken for one: the comparison then tells why.
bool IsThere(const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(Utf8Path(file), error);
    return status.type() != fs::file_type::not_found && !fs::is_directory(status)
           && error != std::errc::filename_too_long;
}

void AppendHex(std::string& text, std::uint64_t number, int digits) {
    constexpr std::string_view hexDigits = "0123456789ABCDEF";
    constexpr int digitBits = 4;
    for (int shift = digitBits * (digits - 1); shift >= 0; shift -= digitBits) {
        text += hexDigits[number >> static_cast<unsigned>(shift) & 0xF];
    }
}

std::string BytesText(const std::string& bytes, std::uint64_t length) {
    std::string text;
    for (const char byte : bytes) {
        text += text.empty() ? "" : " ";
        AppendHex(text, static_cast<unsigned char>(byte), 2);
    }
    return length > bytes.size() ? text + " \u2026" : text;
}

}  // namespace

std::optional<CompareRefusal> RefuseComparison(
    const std::string& file1, const std::string& file2,
    const std::function<std::string(const std::string&)>& lowerCase) {
    if (file1.empty()) {
        return Refusal(1, "File 1", "Select a file for File 1.");
    }
    if (file2.empty()) {
        return Refusal(2, "File 2", "Select a file for File 2.");
    }
    if (!IsThere(file1)) {
        return Refusal(1, "File 1", "File 1 does not exist.");
    }
    if (!IsThere(file2)) {
        return Refusal(2, "File 2", "File 2 does not exist.");
    }
    if (lowerCase(file1) == lowerCase(file2)) {
        return Refusal(0, "Same File Name", "File 1 and File 2 have the same filename.");
    }
    return std::nullopt;
}

std::string CompareStatus(const std::string& compared, std::int32_t differences) {
    return "Status: " + ComparisonStatus(compared, differences);
}

RangeLine RangeHeadings() {
    return {"Offset", "Length", "File 1", "File 2"};
}

RangeLine RangeTexts(const modBinFileInfo::DifferingRange& range) {
    constexpr int offsetDigits = 8;
    std::string offset;
    AppendHex(offset, range.Offset, offsetDigits);
    return {offset, std::to_string(range.Length), BytesText(range.Bytes1, range.Length),
            BytesText(range.Bytes2, range.Length)};
}

std::string TabbedLine(const RangeLine& line) {
    std::string text;
    for (const std::string& column : line) {
        text += text.empty() ? column : "\t" + column;
    }
    return text + "\n";
}

std::string RangesCaption(const modBinFileInfo::DifferingRanges& ranges) {
    const std::size_t count = ranges.Kept().size();
    if (count == 0) {
        return "";
    }
    if (ranges.HasMore()) {
        return "The first " + std::to_string(count) + " ranges. There are more.";
    }
    return count == 1 ? "1 range." : std::to_string(count) + " ranges.";
}

}  // namespace burnwick
