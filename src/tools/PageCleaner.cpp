#include "tools/PageCleaner.h"

#include <algorithm>
#include <array>

namespace burnwick {

namespace {

constexpr auto None = std::string_view::npos;

// No manual reaches these limits, and below them a page is laid out in a second or two, whatever is in it: a
// unit that is being programmed does not wait longer than that.
constexpr std::size_t LargestText = std::size_t{512} * 1024;  // bytes, without pictures
constexpr std::size_t LongestWord = 8'000;
constexpr std::size_t MostBlocks = 8'000;
constexpr std::size_t MostItems = 3'000;
constexpr std::size_t MostRows = 2'000;
constexpr std::size_t MostCells = 12;  // in a row
constexpr std::size_t MostPictures = 200;
constexpr std::size_t DeepestElement = 32;

constexpr std::array<std::string_view, 14> InlineElements{"a", "b",      "code", "del", "em", "i", "kbd",
                                                          "s", "strong", "sub",  "sup", "tt", "u", "var"};
constexpr std::array<std::string_view, 24> BlockElements{
    "blockquote", "br", "dd", "div", "dl",  "dt",    "h1",    "h2", "h3", "h4",    "h5", "h6",
    "hr",         "li", "ol", "p",   "pre", "table", "tbody", "td", "th", "thead", "tr", "ul"};
constexpr std::array<std::string_view, 2> EmptyElements{"br", "hr"};
// Another one after them ends them.
constexpr std::array<std::string_view, 7> OpenEndedElements{"dd", "dt", "li", "p", "td", "th", "tr"};
// What is in these is no text of the page.
constexpr std::array<std::string_view, 5> HiddenElements{"iframe", "script", "style", "textarea", "title"};

template <typename Names>
std::string_view Listed(const Names& names, std::string_view name) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? std::string_view() : *found;
}

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

bool IsId(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return IsLetter(c) || IsDigit(c) || c == '-' || c == '_' || c == '.';
    });
}

bool IsPicture(std::string_view source) {
    return source.starts_with("data:image/png;base64,") || source.starts_with("data:image/jpeg;base64,");
}

}  // namespace

HelpPage PageCleaner::Clean() {
    while (!Rest_.empty() && Trouble_.empty()) {
        const auto start = std::min(Rest_.find('<'), Rest_.size());
        TakeText(Rest_.substr(0, start));
        Rest_.remove_prefix(start);
        if (!Rest_.empty()) {
            TakeMarkUp();
        }
    }
    while (!Open_.empty()) {
        Close();
    }
    return Trouble_.empty() ? HelpPage{.Html = std::move(Out_)} : HelpPage{.Trouble = std::move(Trouble_)};
}

void PageCleaner::TakeText(std::string_view text) {
    for (const char c : text) {
        Word_ = IsBlank(c) ? 0 : Word_ + 1;
        Text_ += 1;
        if (Word_ > LongestWord || Text_ > LargestText) {
            Trouble_ = PageTooLarge;
            return;
        }
        if (c == '>') {
            Out_ += "&gt;";
        } else {
            Out_ += static_cast<unsigned char>(c) < ' ' && !IsBlank(c) ? ' ' : c;
        }
    }
}

void PageCleaner::TakeMarkUp() {
    const char next = Rest_.size() > 1 ? Rest_[1] : ' ';
    if (Rest_.starts_with("<!--")) {
        SkipPast("-->");
    } else if (next == '!' || next == '?') {
        SkipPast(">");
    } else if (next == '/' || IsLetter(next)) {
        TakeElement();
    } else {
        Rest_.remove_prefix(1);
        Out_ += "&lt;";
    }
}

void PageCleaner::TakeElement() {
    const bool isEnd = Rest_[1] == '/';
    Rest_.remove_prefix(isEnd ? 2 : 1);
    const std::string name = LowerCase(TakeName());
    const Attributes attributes = TakeAttributes();
    if (!isEnd && !Listed(HiddenElements, name).empty()) {
        SkipContent(name);
    } else if (name == "img") {
        TakePicture(attributes);
    } else if (const auto text = Listed(InlineElements, name); !text.empty()) {
        isEnd ? TakeEnd(text) : TakeStart(text, attributes);
    } else if (const auto block = Listed(BlockElements, name); !block.empty()) {
        Word_ = 0;
        isEnd ? TakeEnd(block) : TakeStart(block, attributes);
    }
}

void PageCleaner::TakeEnd(std::string_view name) {
    if (Listed(Open_, name).empty()) {
        return;
    }
    while (Open_.back() != name) {
        Close();
    }
    Close();
}

void PageCleaner::TakeStart(std::string_view name, const Attributes& attributes) {
    if (!Open_.empty() && Open_.back() == name && !Listed(OpenEndedElements, name).empty()) {
        Close();
    }
    Count(name);
    Out_.append("<").append(name);
    if (IsId(attributes.Id)) {
        Out_.append(" id=\"").append(attributes.Id).append("\"");
    }
    if (name == "a" && !attributes.Target.empty()) {
        Out_.append(" href=\"").append(attributes.Target).append("\"");
    }
    Out_ += ">";
    if (Listed(EmptyElements, name).empty()) {
        Open_.push_back(name);
    }
}

void PageCleaner::TakePicture(const Attributes& attributes) {
    Pictures_ += 1;
    if (Pictures_ > MostPictures) {
        Trouble_ = PageTooLarge;
    } else if (IsPicture(attributes.Source)) {
        Out_.append("<img src=\"").append(attributes.Source).append("\">");
    } else {
        TakeText(attributes.Description);
    }
}

PageCleaner::Attributes PageCleaner::TakeAttributes() {
    Attributes attributes;
    for (SkipBlanks(); !Rest_.empty() && Rest_[0] != '>'; SkipBlanks()) {
        const std::string name = LowerCase(TakeName());
        SkipBlanks();
        if (!Rest_.starts_with("=")) {
            // What is no attribute is passed over.
            Rest_.remove_prefix(name.empty() && !Rest_.empty() && Rest_[0] != '>' ? 1 : 0);
            continue;
        }
        Rest_.remove_prefix(1);
        SkipBlanks();
        const std::string_view value = TakeValue();
        if (name == "id") {
            attributes.Id = value;
        } else if (name == "href") {
            attributes.Target = value;
        } else if (name == "src") {
            attributes.Source = value;
        } else if (name == "alt") {
            attributes.Description = value;
        }
    }
    Rest_.remove_prefix(Rest_.empty() ? 0 : 1);
    return attributes;
}

std::string_view PageCleaner::TakeName() {
    const auto end = std::find_if_not(
        Rest_.begin(), Rest_.end(), [](char c) { return IsLetter(c) || IsDigit(c) || c == '-' || c == ':'; });
    const std::string_view name = Rest_.substr(0, static_cast<std::size_t>(end - Rest_.begin()));
    Rest_.remove_prefix(name.size());
    return name;
}

// Empty when it could not stand in quotes again.
std::string_view PageCleaner::TakeValue() {
    const char quote = !Rest_.empty() && (Rest_[0] == '"' || Rest_[0] == '\'') ? Rest_[0] : ' ';
    if (quote != ' ') {
        Rest_.remove_prefix(1);
    }
    const auto end = quote != ' ' ? Rest_.find(quote) : Rest_.find_first_of(" \t\n\v\f\r>");
    const std::string_view value = Rest_.substr(0, end);
    Rest_.remove_prefix(value.size());
    if (quote != ' ' && !Rest_.empty()) {
        Rest_.remove_prefix(1);
    }
    return value.find_first_of("\"<>") == None ? value : std::string_view();
}

void PageCleaner::SkipBlanks() {
    Rest_.remove_prefix(
        static_cast<std::size_t>(std::find_if_not(Rest_.begin(), Rest_.end(), IsBlank) - Rest_.begin()));
}

void PageCleaner::SkipPast(std::string_view end) {
    const auto at = Rest_.find(end);
    Rest_.remove_prefix(at == None ? Rest_.size() : at + end.size());
}

void PageCleaner::SkipContent(std::string_view name) {
    const std::string end = "</" + std::string(name);
    while (!Rest_.empty() && LowerCase(Rest_.substr(0, end.size())) != end) {
        const auto next = Rest_.find("</", 1);
        Rest_.remove_prefix(std::min(next, Rest_.size()));
    }
    SkipPast(">");
}

// Refuses what takes longer to lay out than its size lets one think.
void PageCleaner::Count(std::string_view name) {
    Blocks_ += Listed(BlockElements, name).empty() ? 0 : 1;
    Items_ += name == "li" ? 1 : 0;
    Rows_ += name == "tr" ? 1 : 0;
    Cells_ = name == "tr" ? 0 : Cells_ + (name == "td" || name == "th" ? 1 : 0);
    const bool isTooDeep =
        Open_.size() >= DeepestElement || (name == "table" && !Listed(Open_, name).empty());
    if (Blocks_ > MostBlocks || Items_ > MostItems || Rows_ > MostRows || Cells_ > MostCells || isTooDeep) {
        Trouble_ = PageTooLarge;
    }
}

void PageCleaner::Close() {
    // The line end that ends the last line of code would begin an empty one.
    if ((Open_.back() == "code" || Open_.back() == "pre") && Out_.ends_with('\n')) {
        Out_.pop_back();
    }
    Out_.append("</").append(Open_.back()).append(">");
    Open_.pop_back();
}

}  // namespace burnwick
