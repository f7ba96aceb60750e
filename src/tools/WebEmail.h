#pragma once

#include <functional>
#include <string>

// Opens addresses of web pages and of mail boxes, and nothing else.
namespace burnwick::WebEmail {

// Hands an address to the desktop; false when that has no program for it.
using OpenLinkFunction = std::function<bool(const std::string& link)>;

// True for a well-formed "http:", "https:" or "mailto:" address.
bool MayOpen(const std::string& link);

// Opens an address; one of any other kind reaches nobody. False when nothing was opened.
bool Open(const std::string& link, const OpenLinkFunction& openLink);

}  // namespace burnwick::WebEmail
