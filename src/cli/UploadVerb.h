#pragma once

#include "cli/FlashRun.h"
#include "cli/Verb.h"

namespace burnwick::cli {

// Reads a unit's flash memory into a new file.
class UploadVerb final : public Verb {
public:
    CLI::App& AddTo(CLI::App& app) override;
    int Execute(Environment& environment) override;

private:
    std::string File_;
    std::string Chip_;
    bool Force_ = false;
    RunOptions Options_;
};

}  // namespace burnwick::cli
