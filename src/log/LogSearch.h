#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

// Puts a text into lower case, each character in its place.
using ToLowerCase = std::function<void(std::span<char16_t>)>;

// Finds the first place of a text in a longer one, in steps as long as the caller likes. Text is UTF-16;
// positions count from 1. The time depends on the longer text alone, whatever is looked for.
class LogSearch {
public:
    // `text` must outlive the search. Case matters unless there is a `lower`.
    LogSearch(std::u16string_view text, std::u16string wanted, std::size_t start, ToLowerCase lower = {});

    // Reads about so many more characters; true when the search has ended.
    bool Read(std::size_t characters);

    // Where the text was found; 0 when it was not.
    std::size_t Found() const { return Found_; }

private:
    void Take(char16_t character);
    void FindBorders();

    std::u16string_view Text_;
    std::u16string Wanted_;
    ToLowerCase Lower_;
    std::vector<std::size_t>
        Borders_;               // for each beginning of the wanted text, its longest own beginning at its end
    std::size_t Next_;          // characters read
    std::size_t Matching_ = 0;  // of the wanted text, just before the next one
    std::size_t Found_ = 0;
};

}  // namespace burnwick
