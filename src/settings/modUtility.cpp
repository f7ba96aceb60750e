#include "settings/modUtility.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>

#include "platform/files/FileLock.h"
#include "platform/files/ReadWholeFile.h"
#include "platform/files/ReplaceFile.h"
#include "platform/process/EightBitText.h"
#include "platform/process/Utf16.h"

namespace burnwick::modUtility {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t LongestValue = 254;  // characters

fs::path& IniPath() {
    static fs::path path;
    return path;
}

std::chrono::milliseconds& LockLimit() {
    static std::chrono::milliseconds limit{2000};
    return limit;
}

fs::path BesideIni(const char* ending) {
    fs::path path = IniPath();
    path += ending;
    return path;
}

// One waits for the lock, the others for its place: were they all to look for the lock now and then, a
// program that writes again and again would have it back before any of them looks.
std::unique_ptr<FileLock> LockIni() {
    using Clock = std::chrono::steady_clock;
    const auto limit = Clock::now() + LockLimit();
    const auto left = [limit] {
        return std::max(std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now()),
                        std::chrono::milliseconds(0));
    };
    const auto place = LockFile(BesideIni(".queue"), left());
    return place ? LockFile(BesideIni(".lock"), left()) : nullptr;
}

// A program that knows no UTF-8 may have written it.
std::string AsUtf8(const std::string& value) {
    const bool isUtf8 = Utf8Of(Utf16Of(value)) == value;
    return isUtf8 ? value : FromEightBit(value).value_or(value);
}

// The first of its characters, none of them cut in two.
std::string Cut(std::string value) {
    constexpr std::size_t longestCharacter = 4;
    value.resize(std::min(value.size(), LongestValue * longestCharacter));
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; };
    std::size_t characters = 0;
    const auto end = std::find_if(value.begin(), value.end(), [&](char c) {
        characters += begins(c) ? 1 : 0;
        return characters > LongestValue;
    });
    value.erase(end, value.end());
    return value;
}

}  // namespace

void SetIniPath(const fs::path& path) {
    IniPath() = path;
}

void SetLockLimit(std::chrono::milliseconds limit) {
    LockLimit() = limit;
}

std::string ReadIniValue(const std::string& section, const std::string& key) {
    const IniText ini(ReadWholeFile(IniPath()).value_or(""));
    return Cut(AsUtf8(ini.Value(section, key).value_or("")));
}

void WriteIniValue(const std::string& section, const std::string& key, const std::string& value) {
    ChangeIni([&](IniText& ini) { ini.SetValue(section, key, value); });
}

void ChangeIni(const std::function<void(IniText&)>& change) {
    // The file as it should be. A file that cannot be read must not be replaced: what is in it would be lost.
    const auto changed = [&]() -> std::optional<std::string> {
        const auto text = ReadWholeFile(IniPath());
        IniText ini(text.value_or(""));
        change(ini);
        return text && ini.Text() != *text ? std::optional(ini.Text()) : std::nullopt;
    };
    if (!changed()) {
        return;
    }
    const auto lock = LockIni();
    if (const auto text = lock ? changed() : std::nullopt) {
        ReplaceFile(IniPath(), *text);
    }
}

}  // namespace burnwick::modUtility
