#pragma once
// Values a monthly step is about to use as a table index: a value that is not a
// finite number (or does not fit an int) stops the run with a fault naming year,
// month, reach and what the value was, rather than reading the wrong element.
// A value a step has made and keeps (a store, a concentration) is checked the
// same way, so the run stops where the value went wrong rather than later.
#include <string>
#include <string_view>

namespace osm {

struct Model;

// "year 1993, month 4, reach 3" for the month the driver is in.
std::string StepPlace(const Model& m, int r);
// x as a table index; x must be a whole number (pass it through Int or CInt).
int StepIndex(const Model& m, int r, double x, std::string_view what);
// A fault unless x is a finite number within the range of a single.
void CheckStepValue(const Model& m, int r, double x, std::string_view what);

}  // namespace osm
