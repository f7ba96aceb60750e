#include "job/Product.h"

#include <algorithm>

namespace burnwick {

namespace {

std::string Padded(int number, std::size_t digits) {
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::string Version(const Product& product) {
    return std::to_string(product.Major) + '.' + Padded(product.Minor, 2);
}

}  // namespace

std::string BuildNumber(const Product& product) {
    return Version(product) + '.' + Padded(product.Revision, 4);
}

std::string VersionText(const Product& product) {
    return "Version " + Version(product) + " (Build " + BuildNumber(product) + ")";
}

bool IsOEM(const std::string& folder) {
    return folder.find("OEM") != std::string::npos;
}

}  // namespace burnwick
