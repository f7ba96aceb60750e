#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace burnwick::test {

// A new, empty folder that goes with its object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        auto name = (std::filesystem::temp_directory_path() / "burnwick-test-XXXXXX").string();
        Path_ = mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path_, ignored);
    }

    const std::filesystem::path& Path() const { return Path_; }

private:
    std::filesystem::path Path_;
};

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
