#include "settings/KeyFile.h"

#include "platform/files/TextLines.h"

namespace burnwick {

namespace {

// Where a key stands, or else what it belongs behind.
struct KeyPlace {
    std::optional<std::string_view> Line;    // the last one with the key
    std::string_view Value;                  // of that line
    std::optional<std::string_view> Header;  // the first line that begins the group
};

bool IsHeader(std::string_view trimmed) {
    return trimmed.starts_with('[') && trimmed.ends_with(']');
}

KeyPlace FindKey(std::string_view text, std::string_view group, std::string_view key) {
    KeyPlace place;
    bool inGroup = false;
    for (const auto line : LinesOf(text)) {
        const auto trimmed = Trimmed(line);
        const auto equals = trimmed.find('=');
        if (IsHeader(trimmed)) {
            inGroup = trimmed.substr(1, trimmed.size() - 2) == group;
            place.Header = inGroup && !place.Header ? line : place.Header;
        } else if (inGroup && equals != std::string_view::npos && Trimmed(trimmed.substr(0, equals)) == key) {
            place.Line = line;
            place.Value = Trimmed(trimmed.substr(equals + 1));
        }
    }
    return place;
}

}  // namespace

std::string::size_type KeyFile::PositionOf(std::string_view part) const {
    return static_cast<std::string::size_type>(part.data() - Text_.data());
}

std::optional<std::string> KeyFile::Value(std::string_view group, std::string_view key) const {
    const auto place = FindKey(Text_, group, key);
    return place.Line ? std::optional(std::string(place.Value)) : std::nullopt;
}

void KeyFile::SetValue(std::string_view group, std::string_view key, std::string_view value) {
    const auto place = FindKey(Text_, group, key);
    if (place.Line) {
        Text_.replace(PositionOf(place.Value), place.Value.size(), value);
        return;
    }
    const auto headerEnd = place.Header ? PositionOf(*place.Header) + place.Header->size() : Text_.size();
    const auto line = std::string(key) + '=' + std::string(value) + '\n';
    if (!Text_.empty() && !Text_.ends_with('\n')) {
        Text_ += '\n';
    }
    if (place.Header) {
        Text_.insert(headerEnd + 1, line);
    } else {
        Text_ += (Text_.empty() ? "[" : "\n[") + std::string(group) + "]\n" + line;
    }
}

void KeyFile::RemoveKey(std::string_view group, std::string_view key) {
    if (const auto line = FindKey(Text_, group, key).Line) {
        Text_.erase(PositionOf(*line), line->size() + 1);
    }
}

}  // namespace burnwick
