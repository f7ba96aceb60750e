#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <vector>

namespace burnwick::test {

// What the fuzzer gives, taken from the front; zeros when there is no more.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : Rest_(data, size) {}

    bool IsEmpty() const { return Rest_.empty(); }

    std::uint8_t TakeByte() {
        if (Rest_.empty()) {
            return 0;
        }
        const std::uint8_t value = Rest_.front();
        Rest_ = Rest_.subspan(1);
        return value;
    }

    std::uint64_t TakeNumber(std::size_t bytes) {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < bytes; ++i) {
            number = number << 8 | TakeByte();
        }
        return number;
    }

    // So many bytes, or those that are left.
    std::vector<std::byte> TakeBytes(std::size_t most) {
        const auto taken = Rest_.first(std::min(most, Rest_.size()));
        Rest_ = Rest_.subspan(taken.size());
        std::vector<std::byte> bytes(taken.size());
        std::transform(taken.begin(), taken.end(), bytes.begin(),
                       [](std::uint8_t value) { return std::byte{value}; });
        return bytes;
    }

    std::vector<std::byte> TakeRest() { return TakeBytes(Rest_.size()); }

    std::string TakeText(std::size_t most) {
        std::string text;
        for (const std::byte value : TakeBytes(most)) {
            text += static_cast<char>(value);
        }
        return text;
    }

private:
    std::span<const std::uint8_t> Rest_;
};

// Ends the program, as a finding, when something that must hold does not.
inline void Require(bool holds, const char* what) {
    if (!holds) {
        std::cerr << "Broken: " << what << "\n";
        std::abort();
    }
}

}  // namespace burnwick::test
