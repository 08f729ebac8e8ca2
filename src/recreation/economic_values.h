#pragma once
// The dollars of each month (sheet Economic$) and the annual value of rafting.
#include <array>
#include <string>

namespace osm {

struct Model;

// Reads the 12 monthly rows of the sheet; a bad sheet changes nothing.
void ReadEconomic(Model& m, const std::string& path, const std::string& sheet);

// The annual value of the launch schedule: commercial trips (class 1), private
// trips (class 2) and their sum, each month's value of a trip type rounded to
// whole dollars.
struct RaftingValue {
    std::array<double, 2> byClass{};
    double total = 0;
};
RaftingValue ShowTotals(const Model& m);
// A value as the rafting form shows it: "$###,###,##0".
std::string DollarText(double value);

}  // namespace osm
