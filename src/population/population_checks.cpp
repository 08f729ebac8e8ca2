#include "population/population_checks.h"

#include <cmath>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"

namespace osm {

void PopFault(const Model& m, int i, int r, const std::string& what) {
    const Main& mn = m.main;
    const int month = mn.MonthIdx > 0 ? (mn.MonthIdx - 1) % 12 + 1 : mn.iMonth;
    std::string where = "populations, ";
    if (i > 0) {
        const Popsubs& ps = m.popsubs;
        where += "species " + NumText(i);
        if (i <= ps.NSpecies && i <= ps.SpName.hi()) where += " (" + ps.SpName(i) + ")";
        where += ", ";
    }
    if (r > 0) where += "reach " + NumText(r) + ", ";
    throw Fault(where + "year " + NumText(1900 + mn.CurYr) + ", month " + NumText(month) + ": " + what);
}

double PopDiv(const Model& m, int i, int r, double num, double den, const char* what) {
    if (den == 0) PopFault(m, i, r, std::string("division by zero: ") + what + " is 0");
    return num / den;
}

double PopLog(const Model& m, int i, int r, double x, const char* what) {
    if (!(x > 0)) PopFault(m, i, r, std::string("logarithm of ") + what + " = " + NumText(x) + ", which must be above 0");
    return std::log(x);
}

double PopPow(const Model& m, int i, int r, double base, double e, const char* what) {
    if (base < 0 && e != std::floor(e))
        PopFault(m, i, r, std::string(what) + ": the negative number " + NumText(base) +
                              " cannot be raised to the fractional power " + NumText(e));
    if (base == 0 && e < 0) PopFault(m, i, r, std::string(what) + ": 0 raised to a negative power");
    return std::pow(base, e);
}

}  // namespace osm
