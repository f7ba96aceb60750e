#pragma once

#include "cli/Verb.h"

namespace burnwick::cli {

// Tells whether two image files are the same, or in how many bytes they differ.
class CompareVerb final : public Verb {
public:
    std::string Name() const override { return "compare"; }
    std::string Help() const override { return "Compare two image files of one type and size"; }
    void Declare(Arguments& arguments) override;
    int Execute(Environment& environment) override;

private:
    int Refuse(Environment& environment, int status, const std::string& why) const;

    std::string File1_;
    std::string File2_;
    bool Quiet_ = false;
    bool Json_ = false;
};

}  // namespace burnwick::cli
