#pragma once

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/Program.h"
#include "support/SampleImages.h"
#include "support/UnitProgram.h"

namespace burnwick::test {

// The command line as its users run it: a process of its own, a real terminal line, real signals.
class CliProgram : public ::testing::Test {
protected:
    void SetUp() override { setenv("BURNWICK_HOME", (Folder / "home").c_str(), 1); }
    void TearDown() override { unsetenv("BURNWICK_HOME"); }

    static std::vector<std::string> Cli(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), BURNWICK_CLI);
        return arguments;
    }
    std::vector<std::string> Download(const UnitProgram& unit) {
        return Cli({"download", Folder.Write("image.bin", AnyBytes(65'536)), "--port", unit.Line()});
    }
    std::vector<std::string> Upload(const UnitProgram& unit) const {
        return Cli({"upload", Folder / "file.bin", "--chip", "2Mbit", "--port", unit.Line()});
    }
    // The unit is back at its start: it has had the finish message, and the port is free.
    void ExpectUnitToBeServedNext(const UnitProgram& unit) {
        Program next(Download(unit));
        EXPECT_EQ(next.Wait().Status, 0) << next.Err();
    }

    TempFolder Folder;
};

}  // namespace burnwick::test
