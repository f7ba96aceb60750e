#pragma once

#include <cstdlib>
#include <string>

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick::test {

// Two COM ports with a cable between them, which whoever runs the tests has laid: BURNWICK_LINE is their
// names
// ("COM7,COM8").
class TestLine {
public:
    static constexpr const char* WhyNot = "BURNWICK_LINE names no two ports that are joined";

    TestLine() {
        const char* names = std::getenv("BURNWICK_LINE");
        Names_ = names != nullptr ? names : "";
    }

    bool Exists() const { return Names_.find(',') != std::string::npos; }
    // A compatibility layer may hand a port to as many programs as ask for it. Windows never does.
    static bool IsShared() {
        return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    }

    // What it has for lines then has but one frame.
    static bool HasEightBitsOnly() { return IsShared(); }

    std::string Near() const { return Names_.substr(0, Names_.find(',')); }
    std::string Far() const { return Names_.substr(Names_.find(',') + 1); }

private:
    std::string Names_;
};

}  // namespace burnwick::test
