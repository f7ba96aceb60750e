#include "support/Golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "platform/files/Utf8Path.h"

namespace burnwick::test {

namespace {

constexpr const char* Folder = "FOLDER";

void Replace(std::string& text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

}  // namespace

void ExpectGolden(const std::string& name, const std::string& text) {
    const auto path = std::filesystem::path(GOLDEN_FOLDER) / (name + ".txt");
    if (std::getenv("BURNWICK_RECORD") != nullptr) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
        return;
    }
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file) << path;
    std::ostringstream recorded;
    recorded << file.rdbuf();
    EXPECT_EQ(text, recorded.str()) << "If this is as it should be now, run tests/golden/record.sh.";
}

std::string Normalized(std::string text, const std::filesystem::path& folder, const std::string& device) {
    Replace(text, "\r\n", "\n");
    Replace(text, device, "DEVICE");
    // JSON escapes the backslashes of a path.
    Replace(text, "\\\\", "\\");
    Replace(text, Utf8Text(std::filesystem::path(folder).make_preferred()), Folder);
    for (auto at = text.find(Folder); at != std::string::npos; at = text.find(Folder, at + 1)) {
        const auto end = text.find_first_of(" \n\"", at);
        std::replace(text.begin() + static_cast<std::ptrdiff_t>(at),
                     text.begin() + static_cast<std::ptrdiff_t>(std::min(end, text.size())), '\\', '/');
    }
    return text;
}

std::string SettingsText(const std::map<std::string, std::string>& settings) {
    std::string text;
    for (const auto& [name, value] : settings) {
        text += value.empty() ? "" : name + "=" + value + "\n";
    }
    return text;
}

}  // namespace burnwick::test
