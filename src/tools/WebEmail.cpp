#include "tools/WebEmail.h"

#include <QUrl>
#include <algorithm>

namespace burnwick::WebEmail {

namespace {

// An address has neither blanks nor control characters, and no quotes that somebody might take apart.
bool IsPlain(const std::string& link) {
    return std::all_of(link.begin(), link.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        constexpr unsigned char blank = 0x20;
        constexpr unsigned char deleteCharacter = 0x7F;
        return byte > blank && byte < deleteCharacter && byte != '"' && byte != '\'' && byte != '`';
    });
}

}  // namespace

bool MayOpen(const std::string& link) {
    const QUrl url(QString::fromStdString(link), QUrl::StrictMode);
    if (!IsPlain(link) || !url.isValid()) {
        return false;
    }
    const QString scheme = url.scheme();
    return scheme == "mailto" ? url.path().contains('@')
                              : (scheme == "http" || scheme == "https") && !url.host().isEmpty();
}

bool Open(const std::string& link, const OpenLinkFunction& openLink) {
    return MayOpen(link) && openLink(link);
}

}  // namespace burnwick::WebEmail
