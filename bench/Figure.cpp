#include "bench/Figure.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <utility>

namespace bench {

namespace {

std::string Written(double value, const Scale& scale) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(scale.Decimals) << value << scale.Unit;
    return text.str();
}

std::string Verdict(const Figure& figure) {
    if (!figure.Within) {
        return "";
    }
    return *figure.Within ? "ok" : "over";
}

}  // namespace

Figure AtMost(std::string name, double value, double limit, const Scale& scale) {
    return {std::move(name), Written(value, scale), "<= " + Written(limit, scale), value <= limit};
}

Figure AtLeast(std::string name, double value, double limit, const Scale& scale) {
    return {std::move(name), Written(value, scale), ">= " + Written(limit, scale), value >= limit};
}

Figure Told(std::string name, double value, const Scale& scale) {
    return {std::move(name), Written(value, scale), "", std::nullopt};
}

bool AllWithin(const Figures& figures) {
    return std::all_of(figures.begin(), figures.end(),
                       [](const Figure& figure) { return figure.Within.value_or(true); });
}

void PrintTable(std::ostream& out, const Figures& figures) {
    std::vector<std::array<std::string, 4>> rows = {{"figure", "measured", "limit", "verdict"}};
    for (const auto& figure : figures) {
        rows.push_back({figure.Name, figure.Measured, figure.Limit, Verdict(figure)});
    }
    std::array<std::size_t, 3> widths{};
    for (const auto& row : rows) {
        for (std::size_t column = 0; column < widths.size(); ++column) {
            widths.at(column) = std::max(widths.at(column), row.at(column).size());
        }
    }
    for (const auto& [name, measured, limit, verdict] : rows) {
        out << std::left << std::setw(static_cast<int>(widths[0])) << name << "  " << std::right
            << std::setw(static_cast<int>(widths[1])) << measured;
        if (!limit.empty()) {
            out << "  " << std::setw(static_cast<int>(widths[2])) << limit << "  " << verdict;
        }
        out << '\n';
    }
}

double Median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const auto middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace bench
