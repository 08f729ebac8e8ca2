#pragma once
// Arithmetic of the population steps that can fail: a division by zero, the
// logarithm of a number not above 0, a negative base under a fractional power.
// Each stops the run with a fault naming species, reach, year and month.
#include <string>

namespace osm {

struct Model;

// Species i (0: none), reach r (0: none), and what went wrong.
[[noreturn]] void PopFault(const Model& m, int i, int r, const std::string& what);
double PopDiv(const Model& m, int i, int r, double num, double den, const char* what);
double PopLog(const Model& m, int i, int r, double x, const char* what);
double PopPow(const Model& m, int i, int r, double base, double e, const char* what);

}  // namespace osm
