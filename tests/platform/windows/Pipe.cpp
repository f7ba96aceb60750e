#include "platform/Pipe.h"

#include <gtest/gtest.h>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick::test {

// An event that stays set while anything is left.
struct Pipe::Ends {
    UniqueHandle Ready{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    int Left = 0;
};

Pipe::Pipe() : Ends_(std::make_unique<Ends>()) {
    EXPECT_TRUE(Ends_->Ready);
}

Pipe::~Pipe() = default;

WaitHandle Pipe::Handle() const {
    return reinterpret_cast<WaitHandle>(Ends_->Ready.Get());
}

void Pipe::Put() const {
    ++Ends_->Left;
    EXPECT_TRUE(SetEvent(Ends_->Ready.Get()));
}

void Pipe::Take() const {
    EXPECT_GT(Ends_->Left, 0);
    if (--Ends_->Left == 0) {
        EXPECT_TRUE(ResetEvent(Ends_->Ready.Get()));
    }
}

void Pipe::CloseHandle() {
    Ends_->Ready.Reset();
}

}  // namespace burnwick::test
