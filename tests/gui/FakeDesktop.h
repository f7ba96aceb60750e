#pragma once

#include <functional>
#include <utility>

#include "platform/window/SingleInstance.h"
#include "support/FakeShell.h"

namespace burnwick::test {

class FakeCopies final : public SingleInstance {
public:
    FakeCopies(bool another, bool comes, std::function<void(std::function<void()>)> claim)
        : Another_(another), Comes_(comes), Claim_(std::move(claim)) {}

    bool AnotherRuns() override { return Another_; }
    bool BringForward() override { return Comes_; }
    void Claim(std::function<void()> comeForward) override { Claim_(std::move(comeForward)); }

private:
    bool Another_;
    bool Comes_;
    std::function<void(std::function<void()>)> Claim_;
};

}  // namespace burnwick::test
