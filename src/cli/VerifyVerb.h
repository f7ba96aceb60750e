#pragma once

#include "cli/RunOptions.h"
#include "cli/Verb.h"

namespace burnwick::cli {

// Reads a unit's flash memory, and compares it with an image file.
class VerifyVerb final : public Verb {
public:
    CLI::App& AddTo(CLI::App& app) override;
    int Execute(Environment& environment) override;

private:
    std::string Image_;
    RunOptions Options_;
};

}  // namespace burnwick::cli
