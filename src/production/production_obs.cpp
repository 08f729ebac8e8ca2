// Observed production by site and month, for comparison in graphs and profiles:
// the sheets "Benthos$" and "Drift$" of the lower production workbook.
#include <utility>
#include <vector>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/workbook.h"
#include "production/production_steps.h"

namespace osm {

namespace {

// The observed months 1..600 run along the years 48..97.
constexpr int FirstObsYear = 48;
constexpr int ObsMonths = 600;

struct ObsSheet {
    const Model& model;
    Table3<float>& sum;
    Table3<float>& count;
    int yrFirst, yrLast;

    // Adds every row of the sheet in the calibration years to the fields named;
    // rows of other years are left out.
    // A field -1 is the sum of "DETRITUS", "INVERTS" and "ALGAE" as read.
    void Read(Database& db, const std::string& workbook, const std::string& sheet,
              const std::vector<std::pair<const char*, int>>& fields) {
        Cursor rows = db.OpenSheet(sheet);
        for (long row = 2; !rows.AtEnd(); ++row, rows.MoveNext()) {
            const int r = ReachOfMile(model, rows.Field("USGS_Mile").single());
            const int yr = rows.Field("YR").int16();
            const int mnth = rows.Field("MNTH").int16();
            if (yr < yrFirst || yr > yrLast) continue;
            const int i = (yr - FirstObsYear) * 12 + mnth;
            if (i < 1 || i > ObsMonths)
                throw Fault(workbook + ", sheet " + sheet + ", row " + std::to_string(row) + ": YR " +
                            NumText(yr) + " and MNTH " + NumText(mnth) + " give month index " +
                            NumText(i) + ", outside 1.." + NumText(ObsMonths) +
                            " (YR 48..97, MNTH 1..12); nothing was loaded");
            for (const auto& [name, v] : fields) {
                const float x = v > 0 ? rows.Field(name).single()
                                      : Sng(static_cast<double>(Sng(static_cast<double>(rows.Field("DETRITUS").single()) +
                                                                    rows.Field("INVERTS").single())) +
                                            rows.Field("ALGAE").single());
                const int f = v > 0 ? v : 6;
                sum(i, r, f) = Sng(static_cast<double>(sum(i, r, f)) + x);
                count(i, r, f) += 1;
            }
        }
    }
};

}  // namespace

void ReadProductionObs(Model& m, const std::string& workbook, int yrFirst, int yrLast) {
    Database db = OpenWorkbook(workbook);
    Table3<float> obs = m.production.ObsProd;
    obs.clear();
    Table3<float> count = obs;
    ObsSheet reader{m, obs, count, yrFirst, yrLast};
    reader.Read(db, workbook, "Benthos$", {{"DO", 1}, {"SECCHI", 2}, {"ALGAE", 3}, {"TOTMASM", 4}});
    reader.Read(db, workbook, "Drift$", {{"DETRITUS", 5}, {"", -1}});

    for (int r = obs.lo(1); r <= obs.hi(1); ++r)
        for (int f = 1; f <= 6; ++f) {
            double means = 0;
            int n = 0;
            for (int i = 1; i <= ObsMonths; ++i) {
                if (count(i, r, f) == 0) continue;
                obs(i, r, f) = Sng(obs(i, r, f) / static_cast<double>(count(i, r, f)));
                means += obs(i, r, f);
                ++n;
            }
            // The long-term row: the mean of the monthly means of the calibration years.
            obs(0, r, f) = n > 0 ? Sng(means / n) : 0.0f;
        }
    m.production.ObsProd = std::move(obs);
}

}  // namespace osm
