#pragma once

#include <vector>

#include "cli/Verb.h"

namespace burnwick::cli {

// Shows what image files tell of themselves, and what the link makes of them.
class InfoVerb final : public Verb {
public:
    CLI::App& AddTo(CLI::App& app) override;
    int Execute(Environment& environment) override;

private:
    std::vector<std::string> Images_;
    bool Json_ = false;
};

}  // namespace burnwick::cli
