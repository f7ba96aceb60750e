#pragma once

#include <filesystem>
#include <memory>

namespace burnwick::test {

// While this lives, the file can neither be read nor written nor deleted by this process: "Permission
// denied".
class ShutFile {
public:
    explicit ShutFile(const std::filesystem::path& path);
    ShutFile(const ShutFile&) = delete;
    ShutFile& operator=(const ShutFile&) = delete;
    ~ShutFile();

private:
    class Hold;
    std::unique_ptr<Hold> Hold_;
};

}  // namespace burnwick::test
