#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace burnwick::test {

// While this lives, no file has room for more, as on a disk that is full.
class LittleRoom {
public:
    explicit LittleRoom(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &Before_);
        const rlimit little{bytes, Before_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    }
    LittleRoom(const LittleRoom&) = delete;
    LittleRoom& operator=(const LittleRoom&) = delete;
    ~LittleRoom() {
        setrlimit(RLIMIT_FSIZE, &Before_);
        std::signal(SIGXFSZ, Handler_);
    }

private:
    rlimit Before_{};
    void (*Handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

}  // namespace burnwick::test
