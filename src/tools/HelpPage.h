#pragma once

#include <filesystem>
#include <string>

namespace burnwick {

// A help file as the window shows it: one of both is empty.
struct HelpPage {
    std::string Html{};     // UTF-8
    std::string Trouble{};  // in a sentence for a user why there is nothing to show
};

// Reads a help file, whatever it holds: see PageToShow.
HelpPage ReadHelpFile(const std::filesystem::path& file);

// A page without its own looks, which are a browser's, and without its list of contents, which the window
// shows beside it.
HelpPage PageToShow(std::string page);

}  // namespace burnwick
