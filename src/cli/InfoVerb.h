#pragma once

#include <vector>

#include "cli/Verb.h"

namespace burnwick::cli {

// Shows what image files tell of themselves, and what the link makes of them.
class InfoVerb final : public Verb {
public:
    std::string Name() const override { return "info"; }
    std::string Help() const override { return "Show what image files tell of themselves"; }
    void Declare(Arguments& arguments) override;
    int Execute(Environment& environment) override;

private:
    std::vector<std::string> Images_;
    bool Json_ = false;
};

}  // namespace burnwick::cli
