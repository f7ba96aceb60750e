#include "support/UnitProgram.h"

#include <csignal>
#include <stdexcept>
#include <utility>

#include "support/Program.h"

namespace burnwick::test {

namespace {

std::vector<std::string> UnitArguments(const TempFolder& folder, std::vector<std::string> options) {
    std::vector<std::string> arguments{BURNWICK_UNIT, "--link", folder / "line", "--flash",
                                       folder / "flash.bin"};
    std::move(options.begin(), options.end(), std::back_inserter(arguments));
    return arguments;
}

}  // namespace

struct UnitProgram::Process {
    explicit Process(std::vector<std::string> options) : Unit(UnitArguments(Folder, std::move(options))) {}

    TempFolder Folder;
    const std::string Line = Folder / "line";
    Program Unit;
};

UnitProgram::UnitProgram(std::vector<std::string> options)
    : Process_(std::make_unique<Process>(std::move(options))) {
    const auto& [folder, line, unit] = *Process_;
    if (!unit.Prints("/dev/") || !Eventually([this] { return std::filesystem::exists(Line()); })) {
        throw std::runtime_error("burnwick-unit does not start: " + unit.Err());
    }
}

UnitProgram::~UnitProgram() = default;

const std::string& UnitProgram::Line() const {
    return Process_->Line;
}

Bytes UnitProgram::Flash() const {
    return ReadFile(Process_->Folder / "flash.bin");
}

void UnitProgram::Kill() {
    Process_->Unit.Signal(SIGKILL);
    Process_->Unit.Wait();
}

}  // namespace burnwick::test
