#include "support/ShutFile.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace burnwick::test {

// A file that is open for one alone.
class ShutFile::Hold {
public:
    explicit Hold(const std::filesystem::path& path)
        : File_(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(File_, INVALID_HANDLE_VALUE) << GetLastError();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() { CloseHandle(File_); }

private:
    HANDLE File_;
};

ShutFile::ShutFile(const std::filesystem::path& path) : Hold_(std::make_unique<Hold>(path)) {}
ShutFile::~ShutFile() = default;

}  // namespace burnwick::test
