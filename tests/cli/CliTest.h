#pragma once

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "simulator/Line.h"
#include "simulator/Unit.h"
#include "support/FakeSettings.h"
#include "support/SampleImages.h"
#include "support/SimulatedDevice.h"
#include "support/TempFolder.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

// The size of the usual image, in bytes.
inline constexpr std::size_t ImageSize = 262'144;

// The command line in-process, with a simulated unit at its ports, in virtual time.
class CliTest : public ::testing::Test {
protected:
    CliTest() { std::filesystem::create_directory(Folder.Path() / "home"); }

    // Runs the command line on these arguments, and gives its exit status.
    int Run(const std::vector<std::string>& arguments);

    // What was printed by the last Run.
    std::string Out() const { return Out_.str(); }
    std::string Err() const { return Err_.str(); }
    std::vector<std::string> OutLines() const;
    std::vector<std::string> ErrLines() const;
    // The activity log; empty when there is none.
    std::string LogText() const;
    nlohmann::json Json() const { return nlohmann::json::parse(Out()); }

    // Puts a unit at the other end of the line; without one, nobody answers.
    void Connect(simulator::UnitOptions options);
    static simulator::UnitOptions UnitOfSize(std::size_t size);
    // Presses Ctrl+C at this moment of virtual time.
    void InterruptAt(Microseconds moment);

    TempFolder Folder;
    VirtualLoop Loop;
    FakeSettings Settings;
    std::optional<CommError> PortTrouble;
    int Columns = 0;
    bool Color = false;
    std::unique_ptr<simulator::Unit> Unit;
    std::vector<std::string> SleepReasons;

private:
    std::unique_ptr<SerialDevice> NewDevice();

    std::ostringstream Out_;
    std::ostringstream Err_;
    std::unique_ptr<simulator::Line> Line_;
    std::function<void()> Interrupt_;
};

}  // namespace burnwick::test
