#pragma once

#include <array>

namespace burnwick::test {

// Folders that a program may be put in, each with something that means more than itself to somebody.
inline constexpr std::array HostileFolders{"with blanks  in it",
                                           R"(a "quoted" one)",
                                           "the user's",
                                           "100%",
                                           "%f %u %% %",
                                           "$HOME and $(touch X)",
                                           "`touch X`",
                                           R"(back\slash\\es \n \s \")",
                                           "a;b|c&d>e<f",
                                           "(x) [y] {z} * ? ~ # !",
                                           "equals=sign",
                                           "%=",
                                           "line\nbreak",
                                           "tab\tand\rreturn",
                                           "\xC3\x9Cml\xC3\xA4ut",
                                           " at the ends ",
                                           "--option",
                                           R"(\\)",
                                           "[Desktop Entry]",
                                           "\"; touch X; \""};

}  // namespace burnwick::test
