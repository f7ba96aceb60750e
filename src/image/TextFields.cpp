#include "image/TextFields.h"

#include <charconv>

#include "image/BinaryHeader.h"
#include "image/Languages.h"
#include "image/TypeCodes.h"

namespace burnwick::modBinFileInfo {

namespace {

constexpr std::size_t HeaderTextDistance = 19;
constexpr std::size_t HeaderTextLength = 101;
constexpr std::size_t LongestModel = 51;

// The two oldest ways of telling a version are those of kinds 0, 1, 2 and 4.
bool TellsVersionInBytes(int kind) {
    return kind == 3 || kind >= 5;
}

std::string Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

// 0 for what is no number, and the same in every locale.
double NumberFrom(std::string_view text) {
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

void TextFields::Read() {
    Info_.DateStamp = GetDateStamp();
    Info_.Version = GetVersion();
    // Before the language, which may be a letter of it.
    Info_.ImageFileName = GetImageFileName();
    Info_.Language = GetLanguage();
    Info_.Model = GetModel();
}

bool TextFields::IsSmallImage() const {
    return Length_ == SmallImage;
}

std::size_t TextFields::BehindSignature(std::size_t distance) const {
    return Info_.SignaturePos == 0 ? 0 : static_cast<std::size_t>(Info_.SignaturePos) + distance;
}

bool TextFields::HasCreatedHeader() {
    const auto at = BehindSignature(HeaderTextDistance);
    if (HeaderText_.empty() && at != 0) {
        const auto text = Buffer_.TextUntil('!', at, HeaderTextLength);
        HeaderText_ = text.find("Created:") != std::string_view::npos ? text : std::string_view();
    }
    return !HeaderText_.empty();
}

std::string TextFields::HeaderField(std::string_view marker, std::size_t most) const {
    const auto found = HeaderText_.find(marker);
    return found != std::string::npos ? HeaderText_.substr(found + marker.size(), most) : NotAvailable;
}

std::string TextFields::GetDateStamp() {
    constexpr std::size_t headerLength = 19;
    constexpr std::size_t plainLength = 24;
    if (IsSmallImage()) {
        return NotAvailable;
    }
    Info_.SignaturePos = Buffer_.FindText("TALLOW ELECTRONICS");
    if (Info_.SignaturePos == 0) {
        return NotAvailable;
    }
    if (HasCreatedHeader()) {
        return HeaderField("Created:", headerLength);
    }
    return std::string(Buffer_.TextUntil('!', BehindSignature(HeaderTextDistance), plainLength));
}

std::string TextFields::GetVersion() {
    constexpr std::size_t smallImageVersionAt = 0x3004;
    constexpr std::size_t versionAt = 8064;
    constexpr std::size_t headerLength = 4;
    if (!TellsVersionInBytes(Info_.ImageKind)) {
        return HasCreatedHeader() ? HeaderField("Version:", headerLength) : SearchedVersion();
    }
    if (IsSmallImage()) {
        return std::to_string(Buffer_.ByteAt(smallImageVersionAt));
    }
    return Info_.IsBootCode ? NotAvailable : VersionFromBytes(Buffer_, versionAt);
}

std::string TextFields::SearchedVersion() const {
    constexpr std::size_t markerLength = 3;
    constexpr std::size_t versionLength = 6;
    if (IsSmallImage() && Info_.ImageFamily != 2) {
        return NotAvailable;
    }
    const auto found = static_cast<std::size_t>(Buffer_.FindText(IsSmallImage() ? "Ver" : "VER"));
    if (found != 0) {
        const auto version = Buffer_.TextAt(found + markerLength, versionLength);
        if (version.find('.') != std::string_view::npos) {
            return Trimmed(version);
        }
    }
    return VersionBehindSignature();
}

std::string TextFields::VersionBehindSignature() const {
    constexpr std::size_t distance = 48;
    constexpr std::size_t digits = 3;
    const auto at = BehindSignature(distance);
    const auto version = at != 0 ? Buffer_.TextUntil('!', at, digits) : std::string_view();
    if (version.empty()) {
        return NotAvailable;
    }
    const auto minor = version.size() < 2 ? version : version.substr(version.size() - 2);
    return Trimmed(std::string(1, version.front()) + "." + std::string(minor));
}

std::string TextFields::GetImageFileName() {
    constexpr std::size_t distance = 44;
    constexpr std::size_t length = 17;
    if (HasCreatedHeader()) {
        return HeaderFileName();
    }
    const auto at = BehindSignature(distance);
    return at != 0 ? std::string(Buffer_.TextUntil('!', at, length)) : NotAvailable;
}

// The rest of the header text but its last character, which only ends the name.
std::string TextFields::HeaderFileName() const {
    constexpr std::string_view marker = "Filename:";
    const auto found = HeaderText_.find(marker);
    if (found == std::string::npos) {
        return NotAvailable;
    }
    std::string name = HeaderText_.substr(found + marker.size());
    if (!name.empty()) {
        name.pop_back();
    }
    return name;
}

std::string TextFields::GetLanguage() {
    constexpr int firstKindWithLetter = 4;
    constexpr std::size_t letterAt = 8071;
    if (IsSmallImage()) {
        return NotAvailable;
    }
    if (Info_.ImageFamily == 2) {
        const bool hasLetter = !Info_.IsBootCode && Info_.ImageKind >= firstKindWithLetter;
        return hasLetter ? LanguageFromLetter(static_cast<char>(Buffer_.ByteAt(letterAt))) : NotAvailable;
    }
    return WithEnglish(HasCreatedHeader() ? LetterOfFileName() : SearchedLanguage());
}

// "VX16410F.BIN": the letter is the one before the point.
std::string TextFields::LetterOfFileName() const {
    constexpr std::size_t fromTheEnd = 5;
    const std::string& name = Info_.ImageFileName;
    return name.size() < fromTheEnd ? NotAvailable : LanguageFromLetter(name[name.size() - fromTheEnd]);
}

// "English/French": the second language.
std::string TextFields::SearchedLanguage() const {
    constexpr std::size_t distance = 8;
    constexpr std::size_t longestName = 13;
    const auto found = static_cast<std::size_t>(Buffer_.FindText("English"));
    return found != 0 ? std::string(Buffer_.TextUntil('\0', found + distance, longestName)) : NotAvailable;
}

std::string TextFields::GetModel() {
    if (HasCreatedHeader()) {
        return HeaderModel();
    }
    const auto at = Length_ > SmallImage ? ModelPosition() : 0;
    const auto model = at != 0 ? Buffer_.TextUntil('\0', at, LongestModel) : std::string_view();
    return model.empty() ? NotAvailable : std::string(model);
}

// May be longer than the header text, which has no part in where it ends.
std::string TextFields::HeaderModel() const {
    constexpr std::string_view marker = "Model:";
    const auto found = HeaderText_.find(marker);
    if (found == std::string::npos) {
        return NotAvailable;
    }
    const auto at = BehindSignature(HeaderTextDistance + found + marker.size());
    std::string model;
    for (const char character : Buffer_.TextUntil('<', at, LongestModel)) {
        if (character != '>') {
            model += character;
        }
    }
    return model;
}

// In images without a header text; 0 when it is nowhere.
std::size_t TextFields::ModelPosition() const {
    constexpr std::size_t usualPosition = 8073;
    constexpr std::size_t newerPosition = 8066;
    constexpr double firstNewerVersion = 4.04;
    switch (Info_.ImageKind) {
        case 3:
        case 7:
            return usualPosition;
        case 5:
            return NumberFrom(Info_.Version) >= firstNewerVersion ? newerPosition : usualPosition;
        default:
            return 0;
    }
}

}  // namespace burnwick::modBinFileInfo
