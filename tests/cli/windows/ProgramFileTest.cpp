#include <gmock/gmock.h>
#include <windows.h>
// After it: what this one declares stands on its types.
#include <shellapi.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

// What Windows reads of the programs' files.
namespace burnwick::test {

namespace {

struct Program {
    std::wstring Name;
    bool Console;
};

// Printed in the names of the tests.
void PrintTo(const Program& program, std::ostream* out) {
    *out << (program.Console ? "CommandLine" : "Window");
}

// What this build has made.
std::vector<Program> Programs() {
    std::vector<Program> programs{{L"burnwick-cli.exe", true}};
    if (BURNWICK_WINDOW != 0) {
        programs.push_back({L"Burnwick.exe", false});
    }
    return programs;
}

// They stand beside their tests.
std::wstring ProgramPath(const std::wstring& name) {
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\') + 1) + name;
}

class ProgramFile : public ::testing::TestWithParam<Program> {
protected:
    std::vector<char> VersionResource() const {
        DWORD ignored = 0;
        std::vector<char> resource(GetFileVersionInfoSizeW(Path_.c_str(), &ignored));
        if (GetFileVersionInfoW(Path_.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data())
            == 0) {
            resource.clear();
        }
        return resource;
    }

    std::wstring VersionText(const std::wstring& name) const {
        const auto resource = VersionResource();
        void* text = nullptr;
        UINT length = 0;
        if (resource.empty()
            || VerQueryValueW(resource.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &text,
                              &length)
                   == 0) {
            return {};
        }
        return static_cast<const wchar_t*>(text);
    }

    std::string Manifest() const {
        const std::unique_ptr<HINSTANCE__, decltype(&FreeLibrary)> file(
            LoadLibraryExW(Path_.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE), &FreeLibrary);
        const HRSRC found =
            FindResourceW(file.get(), MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));  // RT_MANIFEST
        if (found == nullptr) {
            return {};
        }
        return {static_cast<const char*>(LockResource(LoadResource(file.get(), found))),
                SizeofResource(file.get(), found)};
    }

    // One of IMAGE_SUBSYSTEM_….
    WORD Subsystem() const {
        std::ifstream file(std::filesystem::path(Path_), std::ios::binary);
        IMAGE_DOS_HEADER dos{};
        IMAGE_NT_HEADERS64 header{};
        file.read(reinterpret_cast<char*>(&dos), sizeof dos);
        file.seekg(dos.e_lfanew);
        file.read(reinterpret_cast<char*>(&header), sizeof header);
        return header.OptionalHeader.Subsystem;
    }

    const std::wstring Path_ = ProgramPath(GetParam().Name);
};

TEST_P(ProgramFile, TellsItsVersion) {
    EXPECT_EQ(VersionText(L"FileVersion"), L"2.08.1000");
    EXPECT_EQ(VersionText(L"ProductVersion"), L"2.08.1000");
    EXPECT_EQ(VersionText(L"ProductName"), L"Burnwick");
    EXPECT_EQ(VersionText(L"OriginalFilename"), GetParam().Name);
    EXPECT_THAT(VersionText(L"LegalCopyright"), ::testing::StartsWith(L"Copyright \u00A9 "));
}

TEST_P(ProgramFile, TellsItsVersionInNumbers) {
    const auto resource = VersionResource();
    void* info = nullptr;
    UINT length = 0;
    ASSERT_FALSE(resource.empty());
    ASSERT_NE(VerQueryValueW(resource.data(), L"\\", &info, &length), 0);
    const auto* const version = static_cast<const VS_FIXEDFILEINFO*>(info);
    EXPECT_EQ(version->dwFileVersionMS, MAKELONG(8, 2));
    EXPECT_EQ(version->dwFileVersionLS, MAKELONG(0, 1000));
}

TEST_P(ProgramFile, HasAnIcon) {
    EXPECT_EQ(ExtractIconExW(Path_.c_str(), -1, nullptr, nullptr, 0), 1U);
}

TEST_P(ProgramFile, AsksForUtf8LongPathsAndNoRights) {
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(">UTF-8</activeCodePage>"));
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(">true</longPathAware>"));
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(R"(level="asInvoker")"));
}

TEST_P(ProgramFile, AsksForTheScreensOwnSizesAndLook) {
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(">PerMonitorV2, PerMonitor</dpiAwareness>"));
    EXPECT_THAT(Manifest(), ::testing::HasSubstr(R"(name="Microsoft.Windows.Common-Controls" version="6.)"));
}

TEST_P(ProgramFile, OpensAConsoleOnlyForTheCommandLine) {
    EXPECT_EQ(Subsystem(), GetParam().Console ? IMAGE_SUBSYSTEM_WINDOWS_CUI : IMAGE_SUBSYSTEM_WINDOWS_GUI);
}

INSTANTIATE_TEST_SUITE_P(, ProgramFile, ::testing::ValuesIn(Programs()), ::testing::PrintToStringParamName());

}  // namespace
}  // namespace burnwick::test
