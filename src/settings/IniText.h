#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace burnwick {

// The text of a settings file: lines "key=value" under lines "[section]", and comments that begin with ";" or
// "#". Names are compared without regard to ASCII case; blanks and tabs around names and values do not count,
// nor does one pair of quotes around a value. Where a section or a key stands twice, the first that fits
// counts. Lines end in CR LF, LF or CR. Whatever else is in the file is kept, byte for byte.
class IniText {
public:
    explicit IniText(std::string text) : Text_(std::move(text)) {}

    const std::string& Text() const { return Text_; }

    // Nothing when no section of the name holds the key.
    std::optional<std::string> Value(std::string_view section, std::string_view key) const;

    // Changes one line or adds it, with its section when there is none yet. A line break or NUL in a value or
    // name becomes a blank. False when nothing is to be changed: the value is there, or the name is none that
    // could be found again (empty, a section with "]", a key with "=" or one like a comment or section).
    bool SetValue(std::string_view section, std::string_view key, std::string_view value);

private:
    std::string Text_;
};

}  // namespace burnwick
