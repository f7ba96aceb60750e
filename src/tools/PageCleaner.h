#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/HelpPage.h"

namespace burnwick {

inline constexpr const char* PageTooLarge = "It is too large for a manual.";

// Goes through a page once, and writes down what may be shown.
class PageCleaner {
public:
    explicit PageCleaner(std::string_view page) : Rest_(page) {}

    HelpPage Clean();

private:
    struct Attributes {
        std::string_view Id;
        std::string_view Target;       // of a link
        std::string_view Source;       // of a picture
        std::string_view Description;  // of a picture
    };

    void TakeText(std::string_view text);
    void TakeMarkUp();
    void TakeElement();
    void TakeEnd(std::string_view name);
    void TakeStart(std::string_view name, const Attributes& attributes);
    void TakePicture(const Attributes& attributes);
    Attributes TakeAttributes();
    std::string_view TakeName();
    std::string_view TakeValue();
    void SkipBlanks();
    void SkipPast(std::string_view end);
    void SkipContent(std::string_view name);
    void Count(std::string_view name);
    void Close();

    std::string_view Rest_;
    std::string Out_;
    std::vector<std::string_view> Open_;
    std::string Trouble_;
    std::size_t Text_ = 0;
    std::size_t Word_ = 0;
    std::size_t Blocks_ = 0;
    std::size_t Items_ = 0;
    std::size_t Rows_ = 0;
    std::size_t Cells_ = 0;  // of this row
    std::size_t Pictures_ = 0;
};

}  // namespace burnwick
