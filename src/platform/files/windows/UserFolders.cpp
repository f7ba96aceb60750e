#include "platform/files/windows/UserFolders.h"

#include "platform/process/windows/SystemHeaders.h"

#include <shlobj.h>

#include <memory>
#include <string>

namespace burnwick {

namespace fs = std::filesystem;

namespace {

struct TaskMemory {
    void operator()(wchar_t* memory) const { CoTaskMemFree(memory); }
};

}  // namespace

fs::path KnownFolder(const GUID& folder) {
    wchar_t* text = nullptr;
    const HRESULT result = SHGetKnownFolderPath(folder, KF_FLAG_DEFAULT, nullptr, &text);
    const std::unique_ptr<wchar_t, TaskMemory> kept(text);
    return SUCCEEDED(result) ? fs::path(text) : fs::path();
}

fs::path ExecutablePath() {
    constexpr DWORD longestPath = 32'768;
    std::wstring path(longestPath, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), longestPath);
    path.resize(length < longestPath ? length : 0);
    return path;
}

fs::path PathFromEnvironment(const wchar_t* variable) {
    constexpr DWORD longestValue = 32'767;
    std::wstring value(longestValue, L'\0');
    const DWORD length = GetEnvironmentVariableW(variable, value.data(), longestValue);
    value.resize(length < longestValue ? length : 0);
    return value;
}

}  // namespace burnwick
