// The guard of the production steps against a division by zero.
#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "production/production_steps.h"

namespace osm {

void CheckNonZero(const Model& m, double x, const char* step, const char* what, int r) {
    if (x != 0) return;
    const int mi = m.main.MonthIdx;
    const int month = mi >= 1 ? (mi - 1) % 12 + 1 : mi;
    throw Fault("the " + std::string(step) + " step divides by a zero " + what + ": year " +
                NumText(1900 + m.main.CurYr) + ", month " + NumText(month) + ", reach " + NumText(r));
}

}  // namespace osm
