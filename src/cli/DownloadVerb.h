#pragma once

#include "cli/FlashRun.h"
#include "cli/Verb.h"

namespace burnwick::cli {

// Programs a unit from an image file.
class DownloadVerb final : public Verb {
public:
    std::string Name() const override { return "download"; }
    std::string Help() const override { return "Program a unit's flash memory from an image file"; }
    bool IsRun() const override { return true; }
    void Declare(Arguments& arguments) override;
    int Execute(Environment& environment) override;

private:
    std::string Image_;
    bool Verify_ = false;
    RunOptions Options_;
};

}  // namespace burnwick::cli
