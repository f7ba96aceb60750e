#include "log/LogText.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/process/EightBitText.h"
#include "platform/process/PlainText.h"

namespace burnwick {

namespace {

constexpr unsigned FirstBeyondAscii = 0x80;
constexpr unsigned FirstContinuation = 0x80;
constexpr unsigned LastContinuation = 0xBF;

unsigned ByteAt(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

bool IsPrintableAscii(char character) {
    constexpr char lastPrintable = 0x7E;
    return character >= ' ' && character <= lastPrintable;
}

// The bytes of the character that begins with this one; 0 when none does.
std::size_t LengthByLead(unsigned lead) {
    if (lead < FirstBeyondAscii) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

// Some first bytes limit the second one: there are no longer forms than needed, no halves of surrogate pairs,
// and nothing beyond U+10FFFF.
bool IsSecond(unsigned lead, unsigned second) {
    const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : FirstContinuation;
    const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : LastContinuation;
    return second >= least && second <= most;
}

// 0 when no valid character stands there.
std::size_t CharacterLength(std::string_view text, std::size_t at) {
    const unsigned lead = ByteAt(text, at);
    const std::size_t length = LengthByLead(lead);
    if (length == 0 || length > text.size() - at) {
        return 0;
    }
    if (length > 1 && !IsSecond(lead, ByteAt(text, at + 1))) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        const unsigned byte = ByteAt(text, at + i);
        if (byte < FirstContinuation || byte > LastContinuation) {
            return 0;
        }
    }
    return length;
}

bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = CharacterLength(text, at);
        if (length == 0) {
            return false;
        }
        at += length;
    }
    return true;
}

// Those bytes of Windows-1252 that are not Latin-1, from 0x80 on; five mean nothing.
constexpr std::array<std::string_view, 32> Windows1252 = {
    "\u20AC", " ",      "\u201A", "\u0192", "\u201E", "\u2026", "\u2020", "\u2021",
    "\u02C6", "\u2030", "\u0160", "\u2039", "\u0152", " ",      "\u017D", " ",
    " ",      "\u2018", "\u2019", "\u201C", "\u201D", "\u2022", "\u2013", "\u2014",
    "\u02DC", "\u2122", "\u0161", "\u203A", "\u0153", " ",      "\u017E", "\u0178"};

std::string Utf8FromWindows1252(std::string_view text) {
    constexpr unsigned bitsInLast = 6;
    constexpr unsigned leadOfTwo = 0xC0;
    constexpr unsigned lastBits = 0x3F;
    std::string utf8;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const unsigned byte = ByteAt(text, at);
        if (byte < FirstBeyondAscii) {
            utf8 += text[at];
        } else if (byte < FirstBeyondAscii + Windows1252.size()) {
            utf8 += Windows1252.at(byte - FirstBeyondAscii);
        } else {
            utf8 += static_cast<char>(leadOfTwo | byte >> bitsInLast);
            utf8 += static_cast<char>(FirstContinuation | (byte & lastBits));
        }
    }
    return utf8;
}

// What programs that know no UTF-8 have written; where the system does not say in which characters, those
// that most have used.
std::string Utf8FromOlder(std::string_view line) {
    auto text = FromEightBit(line);
    return text ? std::move(*text) : Utf8FromWindows1252(line);
}

void AppendLine(std::string& text, std::string_view line) {
    if (std::all_of(line.begin(), line.end(), IsPrintableAscii)) {
        text += line;
    } else {
        text += PlainText(IsUtf8(line) ? std::string(line) : Utf8FromOlder(line), ' ');
    }
    text += LogLineEnd;
}

std::size_t EndOfLine(std::string_view content, std::size_t begin) {
    while (begin < content.size() && content[begin] != '\r' && content[begin] != '\n') {
        ++begin;
    }
    return begin;
}

}  // namespace

std::uintmax_t LogSizeInKB(std::uintmax_t bytes) {
    constexpr std::uintmax_t bytesInKB = 1024;
    return bytes % bytesInKB == 0 ? 0 : bytes / bytesInKB + 1;
}

std::string LogText(std::string_view content) {
    std::string text;
    text.reserve(content.size() + content.size() / 16);
    for (std::size_t begin = 0; begin < content.size();) {
        const std::size_t end = EndOfLine(content, begin);
        AppendLine(text, content.substr(begin, end - begin));
        begin = end + (content.substr(end).starts_with(LogLineEnd) ? LogLineEnd.size() : 1);
    }
    constexpr std::size_t before = 23;
    constexpr std::size_t after = 22;
    AppendLine(text, std::string(before, '=') + "End of Log" + std::string(after, '='));
    AppendLine(text, "Log file size: " + std::to_string(LogSizeInKB(content.size())) + "KB.");
    return text;
}

BoxText NotFoundBox(std::string_view searchText) {
    constexpr int longest = 150;  // characters, which fit the screen
    std::size_t end = 0;
    for (int count = 0; count < longest && end < searchText.size(); ++count) {
        end += std::max<std::size_t>(CharacterLength(searchText, end), 1);
    }
    const std::string told(searchText.substr(0, end));
    return {"Not Found", "Cannot find \"" + told + (end < searchText.size() ? "\u2026" : "") + "\"."};
}

BoxText ClearLogQuestion() {
    return {"Clear Activity Log", "Are you sure you want to clear the activity log?"};
}

}  // namespace burnwick
