#pragma once

#include "cli/Verb.h"

namespace burnwick::cli {

// Lists the serial ports that are there, usable or not.
class PortsVerb final : public Verb {
public:
    std::string Name() const override { return "ports"; }
    std::string Help() const override { return "List the serial ports of this computer"; }
    void Declare(Arguments& arguments) override;
    int Execute(Environment& environment) override;

private:
    bool Json_ = false;
};

}  // namespace burnwick::cli
