#pragma once

#include "cli/Verb.h"

namespace burnwick::cli {

// Lists the serial ports that are there, usable or not.
class PortsVerb final : public Verb {
public:
    CLI::App& AddTo(CLI::App& app) override;
    int Execute(Environment& environment) override;

private:
    bool Json_ = false;
};

}  // namespace burnwick::cli
