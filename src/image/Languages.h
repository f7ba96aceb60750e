#pragma once

#include <string>
#include <string_view>

namespace burnwick::modBinFileInfo {

// The language that a letter of either case stands for; "N/A" for other characters.
std::string LanguageFromLetter(char letter);

// "English/" and the language when it is one that comes second to English; else "English".
std::string WithEnglish(std::string_view language);

}  // namespace burnwick::modBinFileInfo
