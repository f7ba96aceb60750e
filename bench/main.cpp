#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): setenv

#include <exception>
#include <iostream>
#include <string_view>

#include "bench/Measurements.h"
#include "bench/Supervisor.h"

namespace {

using namespace bench;

constexpr int ExitWithin = 0;
constexpr int ExitOver = 1;
constexpr int ExitUsage = 64;

// 0 when every figure is within its limit.
int MeasureAll(const std::filesystem::path& folder) {
    // The user's own settings and log stay out of it.
    setenv("BURNWICK_HOME", folder.c_str(), 1);
    Figures figures;
    const auto measure = [&figures, &folder](std::string_view what, auto measurement) {
        std::cerr << "Measuring " << what << "..." << std::endl;
        const Figures more = measurement(folder);
        figures.insert(figures.end(), more.begin(), more.end());
    };
    measure("the cost of a block", MeasureBlockCost);
    measure("the use of the line", MeasureLineUse);
    measure("the cost of images", MeasureImageCost);
    measure("the cost of the program", MeasureProgramCost);
    measure("the cost of the window", MeasureWindowCost);
    PrintTable(std::cout, figures);
    return std::cout.flush() && AllWithin(figures) ? ExitWithin : ExitOver;
}

int MeasureAllOrComplain(const std::filesystem::path& folder) {
    try {
        return MeasureAll(folder);
    } catch (const std::exception& error) {
        std::cerr << "burnwick-figures: " << error.what() << std::endl;
        return ExitOver;
    }
}

}  // namespace

int main(int argc, char** /*argv*/) {
    if (argc > 1) {
        std::cerr << "burnwick-figures takes no arguments: it measures, prints a table, and ends with 0 when "
                     "every figure is within its limit.\n";
        return ExitUsage;
    }
    try {
        return Supervise(MeasureAllOrComplain);
    } catch (const std::exception& error) {
        std::cerr << "burnwick-figures: " << error.what() << '\n';
        return ExitOver;
    }
}
