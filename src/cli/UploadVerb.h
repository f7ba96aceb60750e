#pragma once

#include "cli/FlashRun.h"
#include "cli/Verb.h"

namespace burnwick::cli {

// Reads a unit's flash memory into a new file.
class UploadVerb final : public Verb {
public:
    std::string Name() const override { return "upload"; }
    std::string Help() const override { return "Read a unit's flash memory into a new image file"; }
    bool IsRun() const override { return true; }
    void Declare(Arguments& arguments) override;
    int Execute(Environment& environment) override;

private:
    std::string File_;
    std::string Chip_;
    bool Force_ = false;
    RunOptions Options_;
};

}  // namespace burnwick::cli
