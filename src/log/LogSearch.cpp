#include "log/LogSearch.h"

#include <algorithm>
#include <utility>

namespace burnwick {

namespace {

bool IsFirstOfPair(char16_t character) {
    return character >= 0xD800 && character <= 0xDBFF;
}

}  // namespace

LogSearch::LogSearch(std::u16string_view text, std::u16string wanted, std::size_t start, ToLowerCase lower)
    : Text_(text),
      Wanted_(std::move(wanted)),
      Lower_(std::move(lower)),
      Next_(std::min(std::max<std::size_t>(start, 1) - 1, text.size())) {
    if (Lower_) {
        Lower_(Wanted_);
    }
    FindBorders();
}

// Where a match breaks off, the longest beginning that may still become one goes on: no character is read
// twice (Knuth, Morris, Pratt).
void LogSearch::FindBorders() {
    Borders_.assign(Wanted_.size(), 0);
    for (std::size_t at = 1, length = 0; at < Wanted_.size(); ++at) {
        while (length > 0 && Wanted_[at] != Wanted_[length]) {
            length = Borders_[length - 1];
        }
        length += Wanted_[at] == Wanted_[length] ? 1 : 0;
        Borders_[at] = length;
    }
}

bool LogSearch::Read(std::size_t characters) {
    if (Wanted_.empty() || Wanted_.size() > Text_.size()) {
        return true;
    }
    std::u16string slice(Text_.substr(Next_, characters));
    if (slice.size() > 1 && IsFirstOfPair(slice.back())) {
        slice.pop_back();  // half a character has no lower case
    }
    if (Lower_) {
        Lower_(slice);
    }
    for (std::size_t i = 0; i < slice.size() && Found_ == 0; ++i) {
        Take(slice[i]);
    }
    return Found_ != 0 || Next_ == Text_.size();
}

void LogSearch::Take(char16_t character) {
    while (Matching_ > 0 && Wanted_[Matching_] != character) {
        Matching_ = Borders_[Matching_ - 1];
    }
    Matching_ += Wanted_[Matching_] == character ? 1 : 0;
    ++Next_;
    if (Matching_ == Wanted_.size()) {
        Found_ = Next_ - Matching_ + 1;
    }
}

}  // namespace burnwick
