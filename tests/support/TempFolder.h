#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/files/Bytes.h"
#include "platform/files/Utf8Path.h"

namespace burnwick::test {

// A folder of one test's own, gone with it. Any user may enter it.
class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    const std::filesystem::path& Path() const { return Path_; }
    // The path of a name in it, as text.
    std::string operator/(std::string_view name) const {
        return Utf8Text((Path_ / Utf8Path(name)).make_preferred());
    }
    // Writes a file, and gives its path.
    std::string Write(std::string_view name, const Bytes& content) const;

private:
    std::filesystem::path Path_;
};

Bytes ReadFile(const std::filesystem::path& path);

}  // namespace burnwick::test
