#include <gmock/gmock.h>
#include <windows.h>
// After it: what this one declares stands on its types.
#include <shellapi.h>

#include <memory>
#include <string>
#include <vector>

// What Windows reads of the program's file.
namespace burnwick::test {

namespace {

// The program stands beside its tests.
std::wstring ProgramPath() {
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\') + 1) + L"burnwick-cli.exe";
}

std::vector<char> VersionResource() {
    DWORD ignored = 0;
    std::vector<char> resource(GetFileVersionInfoSizeW(ProgramPath().c_str(), &ignored));
    if (GetFileVersionInfoW(ProgramPath().c_str(), 0, static_cast<DWORD>(resource.size()), resource.data())
        == 0) {
        resource.clear();
    }
    return resource;
}

std::wstring VersionText(const std::wstring& name) {
    const auto resource = VersionResource();
    void* text = nullptr;
    UINT length = 0;
    if (resource.empty()
        || VerQueryValueW(resource.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &text, &length)
               == 0) {
        return {};
    }
    return static_cast<const wchar_t*>(text);
}

std::string Manifest() {
    const std::unique_ptr<HINSTANCE__, decltype(&FreeLibrary)> file(
        LoadLibraryExW(ProgramPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE), &FreeLibrary);
    const HRSRC found = FindResourceW(file.get(), MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));  // RT_MANIFEST
    if (found == nullptr) {
        return {};
    }
    return {static_cast<const char*>(LockResource(LoadResource(file.get(), found))),
            SizeofResource(file.get(), found)};
}

}  // namespace

TEST(ProgramFile, TellsItsVersion) {
    EXPECT_EQ(VersionText(L"FileVersion"), L"2.08.1000");
    EXPECT_EQ(VersionText(L"ProductVersion"), L"2.08.1000");
    EXPECT_EQ(VersionText(L"ProductName"), L"Burnwick");
    EXPECT_EQ(VersionText(L"OriginalFilename"), L"burnwick-cli.exe");
    EXPECT_THAT(VersionText(L"LegalCopyright"), ::testing::StartsWith(L"Copyright \u00A9 "));
}

TEST(ProgramFile, TellsItsVersionInNumbers) {
    const auto resource = VersionResource();
    void* info = nullptr;
    UINT length = 0;
    ASSERT_FALSE(resource.empty());
    ASSERT_NE(VerQueryValueW(resource.data(), L"\\", &info, &length), 0);
    const auto* const version = static_cast<const VS_FIXEDFILEINFO*>(info);
    EXPECT_EQ(version->dwFileVersionMS, MAKELONG(8, 2));
    EXPECT_EQ(version->dwFileVersionLS, MAKELONG(0, 1000));
}

TEST(ProgramFile, HasAnIcon) {
    EXPECT_EQ(ExtractIconExW(ProgramPath().c_str(), -1, nullptr, nullptr, 0), 1U);
}

TEST(ProgramFile, AsksForUtf8LongPathsAndNoRights) {
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(">UTF-8</activeCodePage>"));
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(">true</longPathAware>"));
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(R"(level="asInvoker")"));
}

}  // namespace burnwick::test
