#pragma once

#include "cli/RunOptions.h"
#include "cli/Verb.h"

namespace burnwick::cli {

// Reads a unit's flash memory, and compares it with an image file.
class VerifyVerb final : public Verb {
public:
    std::string Name() const override { return "verify"; }
    std::string Help() const override { return "Compare a unit's flash memory with an image file"; }
    bool IsRun() const override { return true; }
    void Declare(Arguments& arguments) override;
    int Execute(Environment& environment) override;

private:
    std::string Image_;
    RunOptions Options_;
};

}  // namespace burnwick::cli
