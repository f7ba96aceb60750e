#include <gtest/gtest.h>

#include <cstdlib>

#include "support/UnitProgram.h"

namespace burnwick::test {

// Units hang on pseudo-terminals: whoever runs these tests has started one, and says where it is.
struct UnitProgram::Process {
    static std::string Told(const char* name) {
        const char* const value = std::getenv(name);
        EXPECT_NE(value, nullptr) << name << " is to tell of a simulated unit.";
        return value == nullptr ? "" : value;
    }

    const std::string Line = Told("BURNWICK_UNIT_PORT");
    const std::string Memory = Told("BURNWICK_UNIT_FLASH");
};

UnitProgram::UnitProgram(std::vector<std::string> options) : Process_(std::make_unique<Process>()) {
    EXPECT_TRUE(options.empty()) << "It is running already.";
}

UnitProgram::~UnitProgram() = default;

const std::string& UnitProgram::Line() const {
    return Process_->Line;
}

Bytes UnitProgram::Flash() const {
    return ReadFile(Utf8Path(Process_->Memory));
}

void UnitProgram::Kill() {
    ADD_FAILURE() << "It is another system's process.";
}

}  // namespace burnwick::test
