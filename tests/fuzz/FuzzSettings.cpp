#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

#include "fuzz/Input.h"
#include "settings/modUtility.h"
#include "support/TempFolder.h"

// A settings file with any content, and any value for any key.

namespace {

using burnwick::test::Require;

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string OneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
    return text;
}

// A value's first 254 characters.
std::string Shortened(const std::string& text) {
    constexpr std::size_t longestValue = 254;
    std::size_t characters = 0;
    const auto end = std::find_if(text.begin(), text.end(), [&characters](char c) {
        const bool begins = (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
        characters += begins ? 1 : 0;
        return characters > longestValue;
    });
    return {text.begin(), end};
}

std::string Name(const std::string& text) {
    constexpr const char* blanks = " \t";
    const auto line = OneLine(text);
    const auto begin = line.find_first_not_of(blanks);
    return begin == std::string::npos ? "" : line.substr(begin, line.find_last_not_of(blanks) - begin + 1);
}

bool CanBeStored(const std::string& section, const std::string& key) {
    return !section.empty() && section.find(']') == std::string::npos && !key.empty()
           && key.find('=') == std::string::npos
           && std::string_view(";#[").find(key[0]) == std::string_view::npos;
}

// What is not the same stands in one piece, and takes no line's end away.
void RequireOneChange(std::string_view before, std::string_view after) {
    const auto front = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    before.remove_prefix(static_cast<std::size_t>(front.first - before.begin()));
    after.remove_prefix(static_cast<std::size_t>(front.second - after.begin()));
    const auto back = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
    before.remove_suffix(static_cast<std::size_t>(back.first - before.rbegin()));
    Require(before.find_first_of("\r\n") == std::string_view::npos, "one line changes at most");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const burnwick::test::TempFolder folder;
    using burnwick::modUtility::ReadIniValue;
    using burnwick::modUtility::WriteIniValue;
    constexpr std::size_t longestValue = 254 * 4;
    constexpr std::size_t longestName = 15;
    constexpr std::size_t longestInput = 511;

    burnwick::test::Input input(data, size);
    const std::string section = input.TakeText(input.TakeByte() & longestName);
    const std::string key = input.TakeText(input.TakeByte() & longestName);
    const std::string value = input.TakeText(input.TakeNumber(2) & longestInput);
    const auto path = folder.Write("settings.ini", input.TakeRest());
    const auto before = Content(path);
    burnwick::modUtility::SetIniPath(path);

    const auto other = ReadIniValue("Port", "CommPort");
    Require(other.size() <= longestValue, "a value has 254 characters at most");
    Require(ReadIniValue(section, key).size() <= longestValue, "any value has");
    WriteIniValue(section, key, value);
    if (!CanBeStored(Name(section), Name(key))) {
        Require(Content(path) == before, "an unusable name changes nothing");
        return 0;
    }
    const auto after = Content(path);
    Require(ReadIniValue(section, key) == Shortened(OneLine(value)), "what is written is read");
    RequireOneChange(before, after);
    WriteIniValue(section, key, value);
    Require(Content(path) == after, "writing it again changes nothing");
    WriteIniValue("Burnwick", "A key of its own", "1");
    Require(ReadIniValue(section, key) == Shortened(OneLine(value)), "it stays");
    Require(ReadIniValue("Burnwick", "A key of its own") == "1", "so does the other");
    return 0;
}
