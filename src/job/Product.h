#pragma once

#include <string>

namespace burnwick {

// What the program says of itself. Texts are UTF-8.
struct Product {
    std::string Title{};
    int Major = 0;
    int Minor = 0;
    int Revision = 0;
    std::string Comments{};
    std::string LegalNotice{};
    std::string WebSite{};  // an address to open
};

// "2.08.1000"
std::string BuildNumber(const Product& product);

// "Version 2.08 (Build 2.08.1000)"
std::string VersionText(const Product& product);

// True for a folder (its path) that marks the program in it as one of an equipment maker's.
bool IsOEM(const std::string& folder);

}  // namespace burnwick
