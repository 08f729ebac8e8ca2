#include "core/step_values.h"

#include <cmath>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"

namespace osm {

std::string StepPlace(const Model& m, int r) {
    const Main& mn = m.main;
    const int month = mn.MonthIdx > 0 ? (mn.MonthIdx - 1) % 12 + 1 : mn.iMonth;
    return "year " + NumText(1900 + mn.CurYr) + ", month " + NumText(month) + ", reach " + NumText(r);
}

int StepIndex(const Model& m, int r, double x, std::string_view what) {
    if (!(std::isfinite(x) && x >= -2147483648.0 && x <= 2147483647.0))
        throw Fault(StepPlace(m, r) + ": " + std::string(what) + " is " + NumText(x) +
                    ", which cannot index a table");
    return static_cast<int>(x);
}

void CheckStepValue(const Model& m, int r, double x, std::string_view what) {
    if (!FitsSingle(x))
        throw Fault(StepPlace(m, r) + ": " + std::string(what) + " is " + NumText(x) +
                    ", not a finite number within the range of a single");
}

}  // namespace osm
