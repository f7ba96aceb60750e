#pragma once

#include "cli/FlashRun.h"
#include "cli/Verb.h"

namespace burnwick::cli {

// Programs a unit from an image file.
class DownloadVerb final : public Verb {
public:
    CLI::App& AddTo(CLI::App& app) override;
    int Execute(Environment& environment) override;

private:
    std::string Image_;
    bool Verify_ = false;
    RunOptions Options_;
};

}  // namespace burnwick::cli
