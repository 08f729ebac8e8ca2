#pragma once
// Hourly release schedule of a month: the linear programme that maximises the
// power value of a month's release volume under the flow limits.
#include <string>
#include <vector>

namespace hydro {

// Power of the plant as a function of the release: breakpoints of a concave,
// piecewise-linear curve, flow in cfs and power in MW, starting at flow 0.
struct PowerCurve {
    std::vector<double> q;
    std::vector<double> mw;
    double At(double flow) const;
};

// One kind of day (weekday, Sunday): how many there are in the month and the
// price of each hour in $/MWh.
struct DayType {
    int count = 0;
    std::vector<double> price;
};

struct Problem {
    int hours = 24;
    std::vector<DayType> days;
    double volume = 0;          // cfs-hours over the whole month
    double maxFlow = 0;         // cfs
    double upRamp = 0;          // cfs per hour
    double downRamp = 0;        // cfs per hour
    double maxDailyChange = 0;  // cfs, highest minus lowest hour of a day
    std::vector<double> minFlow;  // cfs by hour
    PowerCurve curve;
};

struct Schedule {
    std::vector<std::vector<double>> q;  // (day type, hour), cfs
    double value = 0;                    // $ over the month
    bool flat = false;                   // all hours of all days equal
    std::string note;                    // why the release is flat, when forced
};

// The optimal schedule. A volume at or above the maximum flow, or at or below the
// minimum flows, leaves one choice: a flat release of the month's mean flow. So
// does a set of limits that no schedule meets (noted in `note`).
Schedule SolveSchedule(const Problem& p);

// The power value of a schedule: sum over day types of count x price x power.
double ScheduleValue(const Problem& p, const std::vector<std::vector<double>>& q);

// The plant: tailwater rating TW = tailBase + tailCoef*(Q/1000)^tailExp (ft),
// efficiency, and the turbine capacity above which water spills unused.
struct Plant {
    double efficiency = 0.88;
    double turbineCapacity = 31500;  // cfs
    double tailBase = 0, tailCoef = 0, tailExp = 1;
    std::vector<double> weekdayPrice;  // $/MWh by hour 1..24
    std::vector<double> sundayPrice;
    std::vector<double> monthFactor;   // by month 1..12
};

// Power curve for a reservoir elevation, in steps of `stepCfs` up to `topFlow`.
PowerCurve MakePowerCurve(const Plant& plant, double reservoirElev, double topFlow, double stepCfs);

}  // namespace hydro
