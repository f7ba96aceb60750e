#pragma once

#include <utility>

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick {

// A handle of the system, closed with its object.
class UniqueHandle {
public:
    UniqueHandle() = default;
    // Both of the system's signs for "none" count as none.
    explicit UniqueHandle(HANDLE handle) : Handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : Handle_(std::exchange(other.Handle_, nullptr)) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        Reset(std::exchange(other.Handle_, nullptr));
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    HANDLE Get() const { return Handle_; }
    explicit operator bool() const { return Handle_ != nullptr; }

    void Reset(HANDLE handle = nullptr) {
        if (Handle_ != nullptr) {
            CloseHandle(Handle_);
        }
        Handle_ = handle == INVALID_HANDLE_VALUE ? nullptr : handle;
    }

private:
    HANDLE Handle_ = nullptr;
};

}  // namespace burnwick
