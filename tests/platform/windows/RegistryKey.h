#pragma once

#include <string>
#include <utility>

#include "platform/process/windows/SystemHeaders.h"

#include <aclapi.h>

namespace burnwick::test {

// A key as another program makes it; gone with its object, and all below it.
class ForeignKey {
public:
    ForeignKey(HKEY root, std::wstring path, const std::wstring& text) : Root_(root), Path_(std::move(path)) {
        Put(L"", L"", text);
    }
    ForeignKey(const ForeignKey&) = delete;
    ForeignKey& operator=(const ForeignKey&) = delete;
    ~ForeignKey() { Remove(); }

    void Put(const std::wstring& below, const std::wstring& name, const std::wstring& text) const {
        RegSetKeyValueW(Root_, (Path_ + below).c_str(), name.c_str(), REG_SZ, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }

    void Remove() const {
        RegDeleteTreeW(Root_, Path_.c_str());
        RegDeleteKeyW(Root_, Path_.c_str());
    }

private:
    HKEY Root_;
    std::wstring Path_;
};

// A key that can be read and not written, by nobody, until the object ends.
class RefusingKey {
public:
    RefusingKey(HKEY root, const wchar_t* path) {
        RegOpenKeyExW(root, path, 0, READ_CONTROL | WRITE_DAC, &Key_);
        EXPLICIT_ACCESSW reading{};
        std::wstring everybody = L"EVERYONE";
        BuildExplicitAccessWithNameW(&reading, everybody.data(), KEY_READ, SET_ACCESS, NO_INHERITANCE);
        Allow(reading);
    }
    RefusingKey(const RefusingKey&) = delete;
    RefusingKey& operator=(const RefusingKey&) = delete;
    ~RefusingKey() {
        EXPLICIT_ACCESSW all{};
        std::wstring everybody = L"EVERYONE";
        BuildExplicitAccessWithNameW(&all, everybody.data(), KEY_ALL_ACCESS, SET_ACCESS, NO_INHERITANCE);
        Allow(all);
        RegCloseKey(Key_);
    }

private:
    void Allow(EXPLICIT_ACCESSW& access) {
        PACL list = nullptr;
        SetEntriesInAclW(1, &access, nullptr, &list);
        SetSecurityInfo(Key_, SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr, nullptr, list, nullptr);
        LocalFree(list);
    }

    HKEY Key_ = nullptr;
};

}  // namespace burnwick::test
