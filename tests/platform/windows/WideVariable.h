#pragma once

#include <optional>
#include <string>

#include "platform/files/windows/UserFolders.h"

namespace burnwick::test {

// A variable of the environment with another value, or none, until the object ends.
class WideVariable {
public:
    WideVariable(const wchar_t* name, const std::optional<std::wstring>& value)
        : Name_(name), Before_(PathFromEnvironment(name)) {
        SetEnvironmentVariableW(Name_, value ? value->c_str() : nullptr);
    }
    WideVariable(const WideVariable&) = delete;
    WideVariable& operator=(const WideVariable&) = delete;
    ~WideVariable() { SetEnvironmentVariableW(Name_, Before_.empty() ? nullptr : Before_.c_str()); }

private:
    const wchar_t* Name_;
    std::filesystem::path Before_;
};

}  // namespace burnwick::test
