#pragma once
// The arithmetic of the release policy editor: power values and losses against
// the no-action scenario, the hourly range of a diurnal pattern, spike volumes
// and the list of spike months.
#include <string>
#include <vector>

namespace osm {

struct Model;
struct Physical;

// The reference monthly release of the loss figures, thousand acre-feet, month 1..12.
double BaseMonthVol(int month);

// PowerVal and its difference from PowerValNoAction at (month, level).
struct PowerFigures {
    double value = 0;
    double loss = 0;
};
PowerFigures MonthPower(const Physical& p, int month, int level);

// GetAnnLoss: for each month the power value less the no-action one at the
// reference volume (the level lookup on both tables), rounded to a 32-bit
// integer, summed over the year.
double GetAnnLoss(const Physical& p);

// GetYMax: the greatest and least hourly flow of a month and level, over both
// day types and every run reach.
struct FlowRange {
    double yMax = 0;
    double yMin = 0;
};
FlowRange GetYMax(const Physical& p, int month, int level, int firstReach, int lastReach);

// SpikeVolume: the volume (acre-feet) a spike of `mag` cfs for `dur` days needs,
// that of the powerplant's 31,500 cfs over the same days, and the excess.
struct SpikeVolumes {
    double required = 0;
    double powerplant = 0;
    double excess = 0;
};
SpikeVolumes SpikeVolume(double mag, double dur);
// A volume as the form shows it, and as the spike takes it: whole acre-feet.
double ShownVolume(double acreFeet);
// Takes a spike's magnitude, duration and first day, and its volume as shown.
void SetSpikeFlow(Physical& p, double mag, int dur, int startDay);

// The code of a scenario name: its place in the scenario list, or, for a name
// not listed whose .sts file is in the program folder, the place it takes at
// the end of the list (0 when the list is full or the file is missing).
int ScenarioCode(const Model& m, const std::string& name);
// Adds a scenario name to the list when it is not there; its code.
int AddScenario(Model& m, const std::string& name);

// Year (two-digit) and month of a month index; month 12 gives the next year
// with month 0, so callers count months themselves.
void Get_iYr_iMon(int monthIdx, int& year, int& month);
// The month index of a two-digit year and a month; a fault outside 1948..1997.
int SpikeMonthIdx(int year, int month);
void AddSpike(Physical& p, int year, int month);
// "Year: 96 Month: 3" for each flagged month, in order.
std::vector<std::string> SpikeListLines(const Physical& p);
// Clears the spike of a list line; false when the line names no month.
bool ClearSpikeLine(Physical& p, const std::string& line);

}  // namespace osm
