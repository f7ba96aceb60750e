#include "settings/IniText.h"

#include <algorithm>
#include <utility>

#include "platform/files/TextLines.h"

namespace burnwick {

namespace {

using Position = std::string_view::size_type;

constexpr Position None = std::string_view::npos;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view UsualLineEnd = "\r\n";
constexpr std::string_view Breaks{"\r\n\0", 3};

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool IsQuote(char c) {
    return c == '"' || c == '\'';
}

std::string_view WithoutQuotes(std::string_view value) {
    const bool quoted = value.size() > 1 && IsQuote(value.front()) && value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameName(std::string_view one, std::string_view other) {
    return one.size() == other.size()
           && std::equal(one.begin(), one.end(), other.begin(),
                         [](char a, char b) { return Lower(a) == Lower(b); });
}

bool IsComment(std::string_view trimmed) {
    return trimmed.starts_with(';') || trimmed.starts_with('#');
}

// Of a trimmed line; nothing when it begins no section.
std::optional<std::string_view> SectionName(std::string_view trimmed) {
    const auto end = trimmed.starts_with('[') ? trimmed.find(']') : None;
    return end == None ? std::nullopt : std::optional(Trimmed(trimmed.substr(1, end - 1)));
}

std::string OneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return Breaks.find(c) != None; }, ' ');
    return line;
}

std::string NameOf(std::string_view text) {
    return std::string(Trimmed(OneLine(text)));
}

bool CanBeSection(std::string_view name) {
    return !name.empty() && name.find(']') == None;
}

bool CanBeKey(std::string_view name) {
    return !name.empty() && name.find('=') == None && !IsComment(name) && !name.starts_with('[');
}

// As it must be written to be read back the same.
std::string Written(const std::string& value) {
    const auto needsQuotes = [](char c) { return IsBlank(c) || IsQuote(c); };
    const bool quoted = !value.empty() && (needsQuotes(value.front()) || needsQuotes(value.back()));
    return quoted ? '"' + value + '"' : value;
}

// A line's text and, behind it, what ends it: nothing at the end of a file.
struct Line {
    Position Begin = 0;
    Position TextSize = 0;
    Position EndSize = 0;

    Position Behind() const { return Begin + TextSize + EndSize; }
    std::string_view TextOf(std::string_view all) const { return all.substr(Begin, TextSize); }
    std::string_view EndOf(std::string_view all) const { return all.substr(Begin + TextSize, EndSize); }
};

// Goes through a text once, however its lines end.
class LineReader {
public:
    explicit LineReader(std::string_view all)
        : All_(all),
          Begin_(all.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0),
          NextCr_(all.find('\r', Begin_)),
          NextLf_(all.find('\n', Begin_)) {}

    std::optional<Line> Next() {
        if (Begin_ >= All_.size()) {
            return std::nullopt;
        }
        const Position cr = Search('\r', NextCr_);
        const Position lf = Search('\n', NextLf_);
        const Position end = std::min({cr, lf, All_.size()});
        const Position endSize = lf == cr + 1 && end == cr ? 2 : 1;
        const Line line{Begin_, end - Begin_, end == All_.size() ? 0 : endSize};
        Begin_ = line.Behind();
        return line;
    }

private:
    // What lies ahead need not be searched again.
    Position Search(char lineEnd, Position& next) const {
        if (next < Begin_) {
            next = All_.find(lineEnd, Begin_);
        }
        return next;
    }

    std::string_view All_;
    Position Begin_;
    Position NextCr_;
    Position NextLf_;
};

// Where a value stands, or else what it belongs behind.
struct Place {
    std::optional<std::string_view> Value;  // in the text, quotes included
    std::optional<Line> InSection;          // the last line, of those with text, of the first such section
    std::optional<Line> First;              // the first line of the file
    std::optional<Line> Last;               // and its last
};

// Of a trimmed line; nothing when the line does not hold that key.
std::optional<std::string_view> ValueOf(std::string_view trimmed, std::string_view key) {
    const auto equals = IsComment(trimmed) ? None : trimmed.find('=');
    if (equals == None || !SameName(Trimmed(trimmed.substr(0, equals)), key)) {
        return std::nullopt;
    }
    return Trimmed(trimmed.substr(equals + 1));
}

Place Find(std::string_view all, std::string_view section, std::string_view key) {
    Place place;
    bool inSection = false;
    bool inFirst = false;
    LineReader lines(all);
    while (const auto line = lines.Next()) {
        place.First = place.First ? place.First : line;
        place.Last = line;
        const auto text = Trimmed(line->TextOf(all));
        if (const auto name = SectionName(text)) {
            inSection = SameName(*name, section);
            inFirst = inSection && !place.InSection;
        } else if (inSection && (place.Value = ValueOf(text, key))) {
            break;
        }
        if (inFirst && !text.empty()) {
            place.InSection = line;
        }
    }
    return place;
}

std::string Stored(std::string_view value) {
    return OneLine(WithoutQuotes(value));
}

// A new line's end: that of the line it comes behind, or what the file begins with.
std::string LineEnd(std::string_view all, const std::optional<Line>& before, const Place& place) {
    for (const auto& line : {before, place.First}) {
        if (line && line->EndSize > 0) {
            return std::string(line->EndOf(all));
        }
    }
    return std::string(UsualLineEnd);
}

void AddToSection(std::string& all, const Place& place, const std::string& line) {
    const auto end = LineEnd(all, place.InSection, place);
    all.insert(place.InSection->Behind(), (place.InSection->EndSize == 0 ? end : "") + line + end);
}

void AddSection(std::string& all, const Place& place, const std::string& header, const std::string& line) {
    const auto end = LineEnd(all, place.Last, place);
    const bool inLine = place.Last && place.Last->EndSize == 0 && place.Last->TextSize > 0;
    const bool textBefore = place.Last && !Trimmed(place.Last->TextOf(all)).empty();
    all += (inLine ? end : "") + (textBefore ? end : "") + header + end + line + end;
}

}  // namespace

std::optional<std::string> IniText::Value(std::string_view section, std::string_view key) const {
    const auto sectionName = NameOf(section);
    const auto keyName = NameOf(key);
    if (!CanBeSection(sectionName) || !CanBeKey(keyName)) {
        return std::nullopt;
    }
    const Place place = Find(Text_, sectionName, keyName);
    return place.Value ? std::optional(Stored(*place.Value)) : std::nullopt;
}

bool IniText::SetValue(std::string_view section, std::string_view key, std::string_view value) {
    const auto sectionName = NameOf(section);
    const auto keyName = NameOf(key);
    const auto newValue = OneLine(value);
    if (!CanBeSection(sectionName) || !CanBeKey(keyName)) {
        return false;
    }
    const Place place = Find(Text_, sectionName, keyName);
    if (place.Value && Stored(*place.Value) == newValue) {
        return false;
    }
    const auto line = keyName + '=' + Written(newValue);
    if (place.Value) {
        Text_.replace(static_cast<Position>(place.Value->data() - Text_.data()), place.Value->size(),
                      Written(newValue));
    } else if (place.InSection) {
        AddToSection(Text_, place, line);
    } else {
        AddSection(Text_, place, '[' + sectionName + ']', line);
    }
    return true;
}

}  // namespace burnwick
