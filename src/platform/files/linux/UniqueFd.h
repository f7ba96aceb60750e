#pragma once

#include <unistd.h>

#include <utility>

namespace burnwick {

// A file descriptor, closed with its object.
class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : Fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : Fd_(std::exchange(other.Fd_, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        Reset(std::exchange(other.Fd_, -1));
        return *this;
    }
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;
    ~UniqueFd() { Reset(); }

    int Get() const { return Fd_; }
    explicit operator bool() const { return Fd_ >= 0; }

    void Reset(int fd = -1) {
        if (Fd_ >= 0) {
            ::close(Fd_);
        }
        Fd_ = fd;
    }

private:
    int Fd_ = -1;
};

}  // namespace burnwick
