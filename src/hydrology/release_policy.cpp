#include "hydrology/release_policy.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/util.h"
#include "hydrology/flow_engine.h"
#include "hydrology/physical_module.h"

namespace osm {

namespace {

constexpr int MonthsOfRecord = 600;
constexpr double AcreFoot = 43560.0;             // cubic feet
constexpr double PowerplantDayVolume = 2.7216e9;  // 31,500 cfs for a day, cubic feet

}  // namespace

double BaseMonthVol(int month) {
    static const std::array<double, 12> vol = {1100, 950, 850, 825, 875, 1000, 1050, 1100, 850, 850, 900, 950};
    return vol.at(static_cast<size_t>(month - 1));
}

PowerFigures MonthPower(const Physical& p, int month, int level) {
    const double value = p.PowerVal(month, level);
    return {value, value - static_cast<double>(p.PowerValNoAction(month, level))};
}

double GetAnnLoss(const Physical& p) {
    double sum = 0;
    for (int month = 1; month <= 12; ++month) {
        const LevelPoint lp = LevelOf(p, BaseMonthVol(month) * 1000);
        sum += ToInt32(PowerAt(p, lp, month, false) - PowerAt(p, lp, month, true), "the month's power loss");
    }
    return sum;
}

FlowRange GetYMax(const Physical& p, int month, int level, int firstReach, int lastReach) {
    FlowRange range{-1e30, 1e30};
    for (int d = 1; d <= 2; ++d)
        for (int r = firstReach; r <= lastReach; ++r)
            for (int h = 1; h <= 24; ++h) {
                const double q = p.QDiTable(d, month, level, r, h);
                range.yMax = std::max(range.yMax, q);
                range.yMin = std::min(range.yMin, q);
            }
    if (range.yMax < range.yMin) range = {};
    return range;
}

SpikeVolumes SpikeVolume(double mag, double dur) {
    SpikeVolumes v;
    v.required = dur * 86400 * mag / AcreFoot;
    v.powerplant = dur * PowerplantDayVolume / AcreFoot;
    v.excess = v.required - v.powerplant;
    return v;
}

double ShownVolume(double acreFeet) { return Val(Format(acreFeet, "0")); }

void SetSpikeFlow(Physical& p, double mag, int dur, int startDay) {
    p.SpikeDays = ToInt16(dur, "the spike duration");
    p.SpikeStartDay = ToInt16(startDay, "the first spike day");
    p.SpikeQ = Sng(mag);
    p.SpikeVol = Sng(ShownVolume(SpikeVolume(mag, dur).required));
}

int ScenarioCode(const Model& m, const std::string& name) {
    const Physical& p = m.physical;
    for (int k = 1; k <= p.NDiurnal; ++k)
        if (p.DiurnalName(k) == name) return k;
    if (p.NDiurnal >= p.DiurnalName.hi(0) || !FileExists(InFolder(m, name + ".sts"))) return 0;
    return p.NDiurnal + 1;
}

int AddScenario(Model& m, const std::string& name) {
    const int k = ScenarioCode(m, name);
    if (k == 0)
        throw Fault("the scenario " + name + " cannot join the list: its file " + name +
                    ".sts is missing from the program folder, or the list already holds " +
                    NumText(m.physical.DiurnalName.hi(0)) + " scenarios");
    Physical& p = m.physical;
    if (k > p.NDiurnal) {
        p.DiurnalName(k) = name;
        p.NDiurnal = static_cast<int16_t>(k);
    }
    return k;
}

void Get_iYr_iMon(int monthIdx, int& year, int& month) {
    year = static_cast<int>(Int(monthIdx / 12.0));
    month = monthIdx - 12 * year;
    year += 48;
}

int SpikeMonthIdx(int year, int month) {
    const int i = (year - 48) * 12 + month;
    if (month < 1 || month > 12 || i < 1 || i > MonthsOfRecord)
        throw Fault("a spike month must lie in the record, 1948 to 1997 (years 48 to 97) and months 1 to 12, not year " +
                    NumText(year) + " month " + NumText(month));
    return i;
}

void AddSpike(Physical& p, int year, int month) { p.SpikeFlag(SpikeMonthIdx(year, month)) = true; }

std::vector<std::string> SpikeListLines(const Physical& p) {
    std::vector<std::string> lines;
    for (int i = 1; i <= MonthsOfRecord; ++i)
        if (p.SpikeFlag(i))
            lines.push_back("Year: " + NumText(48 + (i - 1) / 12) + " Month: " + NumText((i - 1) % 12 + 1));
    return lines;
}

bool ClearSpikeLine(Physical& p, const std::string& line) {
    const size_t first = line.find(':');
    const size_t second = first == std::string::npos ? first : line.find(':', first + 1);
    if (second == std::string::npos) return false;
    const int year = static_cast<int>(Val(line.substr(first + 1, second - first - 1)));
    const int month = static_cast<int>(Val(line.substr(second + 1)));
    const int i = (year - 48) * 12 + month;
    if (month < 1 || month > 12 || i < 1 || i > MonthsOfRecord) return false;
    p.SpikeFlag(i) = false;
    return true;
}

}  // namespace osm
