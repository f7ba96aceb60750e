#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// One line of the table.
struct Figure {
    std::string Name;
    std::string Measured;
    std::string Limit;                // empty when the figure is there to explain others
    std::optional<bool> Within = {};  // nothing without a limit
};

using Figures = std::vector<Figure>;

// How a value is written: "1.27 MiB" has two decimals and the unit " MiB".
struct Scale {
    int Decimals;
    std::string Unit;
};

Figure AtMost(std::string name, double value, double limit, const Scale& scale);
Figure AtLeast(std::string name, double value, double limit, const Scale& scale);
Figure Told(std::string name, double value, const Scale& scale);

bool AllWithin(const Figures& figures);

void PrintTable(std::ostream& out, const Figures& figures);

// The middle one, or the mean of the two middle ones; 0 without values.
double Median(std::vector<double> values);

}  // namespace bench
