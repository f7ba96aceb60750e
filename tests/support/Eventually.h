#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace burnwick::test {

// Waits until the condition holds; false when it does not within some seconds.
inline bool Eventually(const std::function<bool()>& condition) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 30s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

}  // namespace burnwick::test
