#pragma once
// The files of ospsw95b: the control file peakshav.ctr, the parameter file it
// names, the plant and price data file, and the output file.
#include <string>
#include <vector>

#include "common/file_error.h"
#include "ospsw95b/schedule.h"

namespace hydro {

struct Control {
    std::string parFile;
    int days = 0;
    std::string month;  // "jan".."dec"
    std::string outFile;
};

struct Parameters {
    double volume = 0;  // acre-feet in the month
    double upRamp = 0, downRamp = 0, maxFlow = 0, maxDailyChange = 0;
    double reservoirElev = 0;
    std::vector<double> minFlow;  // 24 hours
};

Control ReadControl(const std::string& path);
Parameters ReadParameters(const std::string& path);
// The plant and price data of ospsw95b (ospsw95b.dat in the hydro folder).
Plant ReadPlant(const std::string& path);

// Month 1..12 of a month name, first Sunday of the month in 1996.
int MonthOfName(const std::string& name);
int FirstSunday1996(int month);

// The problem of a month: weekdays and Sundays with their prices, the limits,
// and the power curve at the month's reservoir elevation.
Problem MakeProblem(const Control& c, const Parameters& par, const Plant& plant);

// The output: a header whose 16th line carries the power value in the 13
// characters from position 21, a line beginning "id", then for each day of the
// month two records, each a text and twelve hourly releases.
void WriteOutput(const std::string& path, const Control& c, const Parameters& par,
                 const Problem& p, const Schedule& s);

}  // namespace hydro
