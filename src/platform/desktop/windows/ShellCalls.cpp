#include "platform/desktop/ShellCalls.h"

#include "platform/process/windows/SystemHeaders.h"

#include <shlobj.h>

#include <string>

#include "platform/desktop/windows/ComApartment.h"
#include "platform/files/windows/UserFolders.h"
#include "platform/process/windows/WideText.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// More than any path or description of a link.
constexpr int MostCharacters = 32'768;

// Null when the system has none to give.
ComPointer<IShellLinkW> NewLink() {
    IShellLinkW* link = nullptr;
    CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                     reinterpret_cast<void**>(&link));
    return ComPointer<IShellLinkW>(link);
}

ComPointer<IPersistFile> FileOf(IShellLinkW& link) {
    IPersistFile* file = nullptr;
    link.QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file));
    return ComPointer<IPersistFile>(file);
}

class ExplorersCalls final : public ShellCalls {
public:
    fs::path DesktopFolder() const override { return KnownFolder(FOLDERID_Desktop); }

    fs::path WindowsFolder() const override {
        std::wstring folder(MAX_PATH, L'\0');
        folder.resize(GetWindowsDirectoryW(folder.data(), MAX_PATH));
        return folder;
    }

    std::optional<LinkContent> Link(const fs::path& path) const override {
        const ComApartment apartment;
        const auto link = NewLink();
        const auto file = link ? FileOf(*link) : nullptr;
        std::wstring target(MostCharacters, L'\0');
        std::wstring description(MostCharacters, L'\0');
        if (!file || FAILED(file->Load(path.c_str(), STGM_READ))
            || FAILED(link->GetPath(target.data(), MostCharacters, nullptr, SLGP_RAWPATH))
            || FAILED(link->GetDescription(description.data(), MostCharacters))) {
            return std::nullopt;
        }
        return LinkContent{target.c_str(), NarrowText(description.c_str())};
    }

    bool StoreLink(const fs::path& path, const LinkContent& content) override {
        const ComApartment apartment;
        const auto link = NewLink();
        const auto file = link ? FileOf(*link) : nullptr;
        return file && SUCCEEDED(link->SetPath(content.Target.c_str()))
               && SUCCEEDED(link->SetWorkingDirectory(content.Target.parent_path().c_str()))
               && SUCCEEDED(link->SetDescription(WideText(content.Description).c_str()))
               && SUCCEEDED(file->Save(path.c_str(), TRUE));
    }

    void FileTypesChanged() override { SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr); }
};

}  // namespace

std::unique_ptr<ShellCalls> SystemShellCalls() {
    return std::make_unique<ExplorersCalls>();
}

}  // namespace burnwick
