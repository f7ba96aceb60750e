#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace burnwick {

// The text of a file in which desktops keep what they know: lines "key=value" under lines "[group]", and
// comments that begin with "#". Of a key that stands twice in its group the last one counts. Values are as
// the file has them, escapes included. Whatever else is in the text is kept, byte for byte.
class KeyFile {
public:
    explicit KeyFile(std::string text) : Text_(std::move(text)) {}

    const std::string& Text() const { return Text_; }

    std::optional<std::string> Value(std::string_view group, std::string_view key) const;

    // Changes one line or adds it, with its group when there is none yet. No line breaks in any of the three.
    void SetValue(std::string_view group, std::string_view key, std::string_view value);

    // Takes the one line away; its group stays, empty or not.
    void RemoveKey(std::string_view group, std::string_view key);

private:
    std::string::size_type PositionOf(std::string_view part) const;

    std::string Text_;
};

}  // namespace burnwick
