#include "tools/HelpPage.h"

#include <QUtf8StringView>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace burnwick {

namespace fs = std::filesystem;

namespace {

// Many times a manual with its pictures.
constexpr std::uintmax_t LargestFile = std::uintmax_t{8} * 1024 * 1024;

bool HasElement(std::string_view page) {
    for (const std::string_view start : {"<h", "<H", "<p", "<P"}) {
        if (page.find(start) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

// An element with all that is in it, wherever it stands.
void TakeOut(std::string& page, const std::string& element) {
    const std::string end = "</" + element + ">";
    for (std::size_t from = 0; (from = page.find("<" + element + ">", from)) != std::string::npos;) {
        const std::size_t to = page.find(end, from);
        page.erase(from, to == std::string::npos ? to : to + end.size() - from);
    }
}

std::string InWords(const std::error_code& error) {
    return "It cannot be read: " + error.message() + ".";
}

// Empty with a trouble.
std::string Content(const fs::path& file, std::string& trouble) {
    std::error_code error;
    const auto status = fs::status(file, error);
    const auto bytes = fs::is_regular_file(status) ? fs::file_size(file, error) : 0;
    if (error || !fs::is_regular_file(status)) {
        trouble = error ? InWords(error) : "It is not a file.";
        return {};
    }
    if (bytes > LargestFile) {
        trouble = "It is too large for a manual.";
        return {};
    }
    std::string content(static_cast<std::size_t>(bytes), '\0');
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    stream.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (!stream) {
        trouble = errno != 0 ? InWords({errno, std::generic_category()}) : "It cannot be read to its end.";
        return {};
    }
    return content;
}

}  // namespace

HelpPage ReadHelpFile(const fs::path& file) {
    std::string trouble;
    std::string content = Content(file, trouble);
    return trouble.empty() ? PageToShow(std::move(content)) : HelpPage{.Trouble = trouble};
}

HelpPage PageToShow(std::string page) {
    const bool isText = page.find('\0') == std::string::npos && QUtf8StringView(page).isValidUtf8();
    if (!isText || !HasElement(page)) {
        return {.Trouble = page.empty() ? "It is empty." : "It is not a page of text."};
    }
    TakeOut(page, "style");
    TakeOut(page, "nav");
    return {.Html = std::move(page)};
}

}  // namespace burnwick
