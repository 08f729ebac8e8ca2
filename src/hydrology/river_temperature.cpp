#include "hydrology/river_temperature.h"

#include <cmath>
#include <vector>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/workbook.h"

namespace osm {

namespace {

float releaseTemp(const Model& m, int month) {
    const Physical& ph = m.physical;
    const int yr = m.main.SimYr;
    // An experimental year wins over the pre-dam rule.
    if (ph.ExpTempYr(yr)) return ph.ExpTemp(month);
    if (!m.sediment.HistOSDSSConc || yr >= 63) return ph.BaseTemp(month);
    // Before the dam the river ran at its own equilibrium.
    return ph.EqTemp(month);
}

}  // namespace

void RiverTemperature(Model& m, int month) {
    Physical& ph = m.physical;
    const Main& mn = m.main;
    ph.WaterTemp(1) = releaseTemp(m, month);
    const double eq = ph.EqTemp(month);
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const double q = ph.MeanFlow(r);
        if (q == 0.0)
            throw Fault("river temperature of " + NumText(1900 + mn.CurYr) + ", month " +
                        NumText(month) + ", reach " + NumText(r) +
                        ": the reach has no flow (MeanFlow 0) and the temperature divides by it; "
                        "check the release volumes and the flow tables of that month");
        const double qt = m.morph.TribQ(mn.MonthIdx, r);
        const double mixed = ((q - qt) * ph.WaterTemp(r - 1) + eq * qt) / q;
        const double x = -static_cast<double>(ph.HeatEx) * ph.MeanWidth(r) * mn.ReachLen(r) / q;
        ph.WaterTemp(r) = Sng((mixed - eq) * std::exp(x) + eq);
    }
}

void LoadTempPatterns(Model& m, const std::string& sheet, const std::string& workbook) {
    Database db = OpenWorkbook(workbook);
    Cursor rows = db.OpenRequiredSheet(sheet);
    // Months the sheet does not reach keep what they had.
    Table1<float> base = m.physical.BaseTemp;
    Table1<float> eq = m.physical.EqTemp;
    for (int month = 1; !rows.AtEnd(); ++month, rows.MoveNext()) {
        if (month > 12)
            throw Fault(workbook + ", sheet " + sheet + ", row " + NumText(month + 1) +
                        ": more than twelve month rows; the sheet holds one row a month from "
                        "January to December (nothing was loaded)");
        base(month) = rows.Field("OSDOut").single();
        eq(month) = rows.Field("EQUILIB").single();
    }
    m.physical.BaseTemp = std::move(base);
    m.physical.EqTemp = std::move(eq);
}

void LoadObsTemp(Model& m, const std::string& sheet, const std::string& workbook) {
    Database db = OpenWorkbook(workbook);
    Cursor rows = db.OpenSheet(sheet);
    Table2<float> obs = m.physical.ObsTemp;
    obs.clear();
    Table2<bool> seen = m.physical.ObsTempSeen;
    seen.clear();

    float lastMile = 0;
    int reach = 0;
    int count = 0;
    // Sites come in groups of rows; a group's sum becomes its mean when the mile changes.
    const auto closeSite = [&] {
        if (reach != 0 && count > 0) {
            obs(0, reach) = Sng(static_cast<double>(obs(0, reach)) / count);
            seen(0, reach) = true;
        }
    };
    for (long row = 2; !rows.AtEnd(); ++row, rows.MoveNext()) {
        const float mile = rows.Field("OSD_Mile").single();
        if (mile != lastMile) {
            closeSite();
            lastMile = mile;
            reach = ReachOfMile(m, mile);
            count = 0;
        }
        const int yr = rows.Field("YR").int16();
        const int mnth = rows.Field("MNTH").int16();
        const int i = (yr - 48) * 12 + mnth;
        // Index 0 holds the means, so an observation may not land there either.
        if (i < 1 || i > obs.hi(0))
            throw Fault(workbook + ", sheet " + sheet + ", row " + std::to_string(row) + ": YR " +
                        NumText(yr) + " and MNTH " + NumText(mnth) + " give month index " +
                        NumText(i) + ", outside 1.." + NumText(obs.hi(0)) +
                        " (YR counts from 48, MNTH 1..12); nothing was loaded");
        // The series keeps whole degrees only.
        const int16_t t = rows.Field("AVGTEMP").int16();
        obs(i, reach) = t;
        seen(i, reach) = true;
        obs(0, reach) = Sng(static_cast<double>(obs(0, reach)) + t);
        ++count;
    }
    closeSite();
    m.physical.ObsTemp = std::move(obs);
    m.physical.ObsTempSeen = std::move(seen);
}

void SaveTempData(const Model& m, const std::string& sheet, const std::string& workbook) {
    std::vector<double> base, eq;
    // Through the single's own text, so 12.3 is saved as 12.3 and not as its double.
    for (int month = 1; month <= 12; ++month) {
        base.push_back(Val(NumText(m.physical.BaseTemp(month))));
        eq.push_back(Val(NumText(m.physical.EqTemp(month))));
    }
    UpdateSheetColumns(workbook, sheet, {"OSDOut", "EQUILIB"}, {base, eq});
}

}  // namespace osm
