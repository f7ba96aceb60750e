#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace burnwick {

// A help file as the window shows it: one of both is empty.
struct HelpPage {
    std::string Html{};     // UTF-8
    std::string Trouble{};  // in a sentence for a user why there is nothing to show
};

// Reads a help file, which may hold anything: see CleanedPage.
HelpPage ReadHelpFile(const std::filesystem::path& file);

// Takes from a page what a manual is made of: headings, paragraphs, lists, tables, links and pictures that
// are in the page itself. Scripts, styles and whatever else there is are left out, and every element is
// closed. What would take long to show is refused.
HelpPage CleanedPage(std::string_view page);

}  // namespace burnwick
