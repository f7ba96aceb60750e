#include "platform/files/ReadWholeFile.h"

#include <chrono>
#include <thread>
#include <vector>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

namespace {

// While a file takes the place of another one, for a moment, it can be opened by nobody. Who reads keeps
// nobody from replacing it.
UniqueHandle Opened(const std::filesystem::path& path) {
    using Clock = std::chrono::steady_clock;
    constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr auto longestWait = std::chrono::seconds(1);
    constexpr auto pause = std::chrono::milliseconds(1);
    const auto limit = Clock::now() + longestWait;
    for (;;) {
        UniqueHandle file(CreateFileW(path.c_str(), GENERIC_READ, sharedByAll, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file || GetLastError() != ERROR_SHARING_VIOLATION || Clock::now() >= limit) {
            return file;
        }
        std::this_thread::sleep_for(pause);
    }
}

bool SaysThatNoneIsThere(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path) {
    const auto file = Opened(path);
    if (!file) {
        return SaysThatNoneIsThere(GetLastError()) ? std::optional(std::string()) : std::nullopt;
    }
    // Reading a device or a pipe in the file's place would wait for ever.
    if (GetFileType(file.Get()) != FILE_TYPE_DISK) {
        return std::nullopt;
    }
    constexpr DWORD chunkSize = 65'536;
    std::vector<char> chunk(chunkSize);
    std::string text;
    for (;;) {
        DWORD got = 0;
        if (ReadFile(file.Get(), chunk.data(), chunkSize, &got, nullptr) == 0) {
            return std::nullopt;
        }
        if (got == 0) {
            return text;
        }
        text.append(chunk.data(), got);
    }
}

}  // namespace burnwick
