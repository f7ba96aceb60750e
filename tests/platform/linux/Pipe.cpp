#include "platform/Pipe.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick::test {

struct Pipe::Ends {
    UniqueFd Read;
    UniqueFd Write;
};

Pipe::Pipe() : Ends_(std::make_unique<Ends>()) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    Ends_->Read.Reset(ends[0]);
    Ends_->Write.Reset(ends[1]);
}

Pipe::~Pipe() = default;

WaitHandle Pipe::Handle() const {
    return Ends_->Read.Get();
}

void Pipe::Put() const {
    EXPECT_EQ(write(Ends_->Write.Get(), "x", 1), 1);
}

void Pipe::Take() const {
    char taken = 0;
    EXPECT_EQ(read(Ends_->Read.Get(), &taken, 1), 1);
}

void Pipe::CloseHandle() {
    Ends_->Read.Reset();
}

}  // namespace burnwick::test
