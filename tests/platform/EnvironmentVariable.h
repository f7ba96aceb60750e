#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace burnwick::test {

// A variable of the environment with another value, or none, until the object ends.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const std::optional<std::string>& value) : Name_(name) {
        if (const char* const before = std::getenv(name)) {
            Before_ = before;
        }
        Set(value);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { Set(Before_); }

private:
    void Set(const std::optional<std::string>& value) {
        if (value) {
            setenv(Name_, value->c_str(), 1);
        } else {
            unsetenv(Name_);
        }
    }

    const char* Name_;
    std::optional<std::string> Before_;
};

}  // namespace burnwick::test
