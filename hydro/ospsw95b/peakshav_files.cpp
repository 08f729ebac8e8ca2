#include "ospsw95b/peakshav_files.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>

#include "common/atomic_file.h"
#include "common/text_lines.h"

namespace hydro {

namespace {

const std::array<const char*, 12> MonthNames = {"jan", "feb", "mar", "apr", "may", "jun",
                                                "jul", "aug", "sep", "oct", "nov", "dec"};

std::string trimmed(const std::string& s) {
    const size_t a = s.find_first_not_of(" \t");
    if (a == std::string::npos) return "";
    return s.substr(a, s.find_last_not_of(" \t") - a + 1);
}

// The number that begins a line; anything after it (a comment) is ignored.
double leadingNumber(const std::string& path, const std::vector<std::string>& lines, size_t i,
                     const std::string& what) {
    if (i >= lines.size()) throw FileError{path + ": ends before " + what + " (line " + std::to_string(i + 1) + ")"};
    std::istringstream in(lines[i]);
    double v = 0;
    if (!(in >> v))
        throw FileError{path + ":" + std::to_string(i + 1) + ": expected " + what + ", found '" + lines[i] + "'"};
    return v;
}

std::string lineAt(const std::string& path, const std::vector<std::string>& lines, size_t i,
                   const std::string& what) {
    if (i >= lines.size() || trimmed(lines[i]).empty())
        throw FileError{path + ":" + std::to_string(i + 1) + ": expected " + what};
    return trimmed(lines[i]);
}

}  // namespace

int MonthOfName(const std::string& name) {
    std::string low = name;
    std::transform(low.begin(), low.end(), low.begin(),
                   [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
    for (size_t i = 0; i < MonthNames.size(); ++i)
        if (low == MonthNames[i]) return static_cast<int>(i) + 1;
    return 0;
}

int FirstSunday1996(int month) {
    static const std::array<int, 12> sunday = {7, 4, 3, 7, 5, 2, 7, 4, 1, 6, 3, 1};
    return sunday[static_cast<size_t>(month - 1)];
}

Control ReadControl(const std::string& path) {
    const auto lines = ReadLines(path);
    Control c;
    c.parFile = lineAt(path, lines, 3, "the parameter file name");
    const double days = leadingNumber(path, lines, 4, "the days of the month");
    c.days = static_cast<int>(days);
    c.month = lineAt(path, lines, 5, "the month name");
    c.outFile = lineAt(path, lines, 8, "the output file name");
    if (c.days < 28 || c.days > 31 || c.days != days)
        throw FileError{path + ":5: expected the days of the month (28 to 31), found '" + lines[4] + "'"};
    if (MonthOfName(c.month) == 0)
        throw FileError{path + ":6: expected a month name (jan to dec), found '" + c.month + "'"};
    return c;
}

Parameters ReadParameters(const std::string& path) {
    const auto lines = ReadLines(path);
    // Nine lines of heading, the last a "*".
    size_t i = 0;
    while (i < lines.size() && trimmed(lines[i]) != "*") ++i;
    if (i >= lines.size()) throw FileError{path + ": no '*' line ends the heading"};
    ++i;
    Parameters p;
    p.volume = leadingNumber(path, lines, i++, "the release volume");
    p.upRamp = leadingNumber(path, lines, i++, "the up ramp rate");
    p.downRamp = leadingNumber(path, lines, i++, "the down ramp rate");
    p.maxFlow = leadingNumber(path, lines, i++, "the maximum flow");
    p.maxDailyChange = leadingNumber(path, lines, i++, "the maximum daily change");
    p.reservoirElev = leadingNumber(path, lines, i++, "the reservoir elevation");
    for (int h = 1; h <= 24; ++h)
        p.minFlow.push_back(leadingNumber(path, lines, i++, "the minimum flow of hour " + std::to_string(h)));
    if (p.volume < 0 || p.maxFlow <= 0 || p.upRamp < 0 || p.downRamp < 0 || p.maxDailyChange < 0)
        throw FileError{path + ": volume, ramps and daily change must not be negative, the maximum flow positive"};
    return p;
}

Plant ReadPlant(const std::string& path) {
    const auto lines = ReadLines(path);
    Plant plant;
    bool tail = false;
    for (size_t i = 1; i < lines.size(); ++i) {
        std::istringstream in(lines[i]);
        std::string key;
        if (!(in >> key) || key[0] == '#') continue;
        auto fail = [&](const std::string& what) {
            throw FileError{path + ":" + std::to_string(i + 1) + ": expected " + what + ", found '" + lines[i] + "'"};
        };
        if (key == "efficiency") {
            if (!(in >> plant.efficiency) || plant.efficiency <= 0 || plant.efficiency > 1) fail("an efficiency in (0, 1]");
        } else if (key == "turbine_capacity") {
            if (!(in >> plant.turbineCapacity) || plant.turbineCapacity <= 0) fail("a turbine capacity in cfs");
        } else if (key == "tailwater") {
            if (!(in >> plant.tailBase >> plant.tailCoef >> plant.tailExp)) fail("tailwater base, coefficient, exponent");
            tail = true;
        } else if (key == "month_factor") {
            double f = 0;
            while (in >> f) plant.monthFactor.push_back(f);
            if (plant.monthFactor.size() != 12) fail("twelve monthly price factors");
        } else if (key == "hour") {
            for (int h = 1; h <= 24; ++h) {
                std::istringstream row(i + static_cast<size_t>(h) < lines.size() ? lines[i + static_cast<size_t>(h)] : "");
                int hour = 0;
                double wd = 0, su = 0;
                if (!(row >> hour >> wd >> su) || hour != h) {
                    i += static_cast<size_t>(h);
                    fail("hour " + std::to_string(h) + " with its weekday and Sunday prices");
                }
                plant.weekdayPrice.push_back(wd);
                plant.sundayPrice.push_back(su);
            }
            i += 24;
        } else {
            fail("efficiency, turbine_capacity, tailwater, month_factor or hour");
        }
    }
    if (!tail || plant.monthFactor.size() != 12 || plant.weekdayPrice.size() != 24)
        throw FileError{path + ": needs a tailwater line, a month_factor line and the 24 hourly prices"};
    return plant;
}

Problem MakeProblem(const Control& c, const Parameters& par, const Plant& plant) {
    const int month = MonthOfName(c.month);
    int sundays = 0;
    for (int d = FirstSunday1996(month); d <= c.days; d += 7) ++sundays;
    Problem p;
    const double factor = plant.monthFactor[static_cast<size_t>(month - 1)];
    DayType weekday{c.days - sundays, {}}, sunday{sundays, {}};
    for (size_t h = 0; h < 24; ++h) {
        weekday.price.push_back(plant.weekdayPrice[h] * factor);
        sunday.price.push_back(plant.sundayPrice[h] * factor);
    }
    p.days = {weekday, sunday};
    // One acre-foot is 43560 ft3, one cfs for an hour 3600 ft3.
    p.volume = par.volume * 43560.0 / 3600.0;
    p.maxFlow = par.maxFlow;
    p.upRamp = par.upRamp;
    p.downRamp = par.downRamp;
    p.maxDailyChange = par.maxDailyChange;
    p.minFlow = par.minFlow;
    const double mean = p.volume / (24.0 * c.days);
    p.curve = MakePowerCurve(plant, par.reservoirElev, std::max(par.maxFlow, mean), 1000.0);
    return p;
}

void WriteOutput(const std::string& path, const Control& c, const Parameters& par,
                 const Problem& p, const Schedule& s) {
    AtomicFile out(path);
    std::FILE* f = out.Stream();
    const int month = MonthOfName(c.month);
    const double minQ = *std::min_element(par.minFlow.begin(), par.minFlow.end());
    const double maxQ = *std::max_element(par.minFlow.begin(), par.minFlow.end());
    double energy = 0;
    for (size_t d = 0; d < p.days.size(); ++d)
        for (size_t h = 0; h < 24; ++h) energy += p.days[d].count * p.curve.At(s.q[d][h]);
    std::fprintf(f, "OSPSW95B hourly hydropower schedule\r\n");
    std::fprintf(f, "parameter file: %s\r\n", c.parFile.c_str());
    std::fprintf(f, "month: %s  days: %d  weekdays: %d  sundays: %d\r\n", c.month.c_str(), c.days,
                 p.days[0].count, p.days[1].count);
    std::fprintf(f, "release volume (af/month): %.0f\r\n", par.volume);
    std::fprintf(f, "mean release (cfs): %.1f\r\n", p.volume / (24.0 * c.days));
    std::fprintf(f, "maximum flow (cfs): %.0f\r\n", par.maxFlow);
    std::fprintf(f, "minimum flows (cfs): %.0f to %.0f\r\n", minQ, maxQ);
    std::fprintf(f, "up ramp (cfs/hr): %.0f\r\n", par.upRamp);
    std::fprintf(f, "down ramp (cfs/hr): %.0f\r\n", par.downRamp);
    std::fprintf(f, "maximum daily change (cfs): %.0f\r\n", par.maxDailyChange);
    std::fprintf(f, "reservoir elevation (ft): %.1f\r\n", par.reservoirElev);
    std::fprintf(f, "energy (MWh): %.0f\r\n", energy);
    std::fprintf(f, "release: %s\r\n", s.flat ? "flat" : "scheduled");
    std::fprintf(f, "note: %s\r\n", s.note.empty() ? "-" : s.note.c_str());
    std::fprintf(f, "------------------------------------------------------------\r\n");
    std::fprintf(f, "MONTH POWER VALUE = %13.0f\r\n", s.value);
    std::fprintf(f, "------------------------------------------------------------\r\n");
    std::fprintf(f, "id      hourly release (cfs), hours 1-12 then 13-24 of each day\r\n");
    const int firstSunday = FirstSunday1996(month);
    for (int day = 1; day <= c.days; ++day) {
        const bool sunday = day >= firstSunday && (day - firstSunday) % 7 == 0;
        const auto& q = s.q[sunday ? 1 : 0];
        for (int half = 0; half < 2; ++half) {
            std::fprintf(f, "%s%02d%s-%c", c.month.c_str(), day, sunday ? "su" : "wd", half ? 'b' : 'a');
            for (int h = 0; h < 12; ++h) std::fprintf(f, " %9.1f", q[static_cast<size_t>(half * 12 + h)]);
            std::fprintf(f, "\r\n");
        }
    }
    out.Commit();
}

}  // namespace hydro
