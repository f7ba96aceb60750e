#include "image/Languages.h"

#include <algorithm>
#include <array>
#include <span>

#include "image/modBinFileInfo.h"

namespace burnwick::modBinFileInfo {

namespace {

struct Language {
    std::string_view Letter;
    std::string_view Name;
};

// Two languages have no letter of their own: nothing matches theirs. All but the last come second to English.
constexpr std::array<Language, 11> Languages{{
    {"D", "Danish"},
    {NotAvailable, "Dutch"},
    {"N", "Finnish"},
    {"F", "French"},
    {"G", "German"},
    {"I", "Italian"},
    {"P", "Polish"},
    {"R", "Russian"},
    {NotAvailable, "Slovak"},
    {"S", "Spanish"},
    {"E", "English"},
}};

// Of the English letters only, in every locale.
char UpperCase(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

}  // namespace

std::string LanguageFromLetter(char letter) {
    const char upper = UpperCase(letter);
    const auto* row = std::find_if(Languages.begin(), Languages.end(), [upper](const Language& language) {
        return language.Letter == std::string_view(&upper, 1);
    });
    return std::string(row != Languages.end() ? row->Name : NotAvailable);
}

std::string WithEnglish(std::string_view language) {
    const auto second = std::span(Languages).first<Languages.size() - 1>();
    const bool isSecond = std::any_of(second.begin(), second.end(),
                                      [language](const Language& row) { return row.Name == language; });
    return isSecond ? "English/" + std::string(language) : "English";
}

}  // namespace burnwick::modBinFileInfo
