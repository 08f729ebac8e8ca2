#include "hydrology/monthly_patterns.h"

#include <cmath>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/workbook.h"
#include "hydrology/flow_engine.h"
#include "sediment/morphology_sheets.h"

namespace osm {

namespace {

constexpr int MonthsOfRecord = 600;

int reachOfSeries(const Model& m, int series) {
    if (series < 2 || series - 1 > m.morph.NTrib)
        throw Fault("there is no tributary series " + NumText(series) + " (the river has " +
                    NumText(static_cast<int>(m.morph.NTrib)) + " named tributaries)");
    return m.morph.TribReach(series - 1);
}

void checkYear(int year) {
    if (year < 48 || year > 97)
        throw Fault("Enter a year between 48 and 97 (the record's years), not " + NumText(year));
}

}  // namespace

double Quennased(double q, bool sand) {
    return sand ? 2698.303 * std::pow(q, 0.74076) : 1701.6998 * std::pow(q, 0.80988);
}

double TSRsed(double q, int month, bool sand) {
    if (sand) return 454.16308 * std::pow(q, 0.46844);
    // The monsoon months carry their fines on a curve of their own.
    if (month >= 7 && month <= 10) return 30308.8537 * std::pow(q, 0.14095);
    return 5260.87555 * std::pow(q, 0.30898);
}

MonthPattern GetRepYrData(Model& m, int series, int year) {
    checkYear(year);
    MonthPattern out{};
    const int first = (year - 48) * 12;
    if (series == 1) {
        // The record, not the volumes in force, which a pattern may have replaced.
        const Physical saved = m.physical;
        try {
            LoadMonthlyVolumes(m, m.main.RiverwareXls, saved.MonthlyVolSheet, saved.MonthlyVolField);
        } catch (...) {
            m.physical = saved;
            throw;
        }
        for (int mo = 1; mo <= 12; ++mo) out[static_cast<size_t>(mo)] = m.physical.MonthlyVol(first + mo);
        m.physical = saved;
        return out;
    }
    const int r = reachOfSeries(m, series);
    for (int mo = 1; mo <= 12; ++mo) out[static_cast<size_t>(mo)] = m.morph.TribQBase(first + mo, r);
    return out;
}

std::vector<TraceInfo> ReadRunList(const std::string& workbook) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenSheet("RunList$");
    std::vector<TraceInfo> traces;
    for (; !c.AtEnd(); c.MoveNext()) traces.push_back({c.Field("Nruns").int16(), c.Field("RunType").int16()});
    return traces;
}

MonthPattern SeasonalPattern(const Model& m, int series) {
    MonthPattern out{};
    const Table2<float>& t = m.physical.RelSeason;
    if (series - 1 > t.hi(0)) return out;
    for (int mo = 1; mo <= 12; ++mo) out[static_cast<size_t>(mo)] = t(series - 1, mo);
    return out;
}

void LoadReleaseTrace(Model& m, const std::string& sheet, const std::string& field) {
    int run = 0, spike = 0;
    if (!field.empty() && field.size() > 3 && field.compare(0, 3, "Run") == 0 && IsNumber(field.substr(3))) {
        run = static_cast<int>(Val(field.substr(3)));
        Database db = OpenWorkbook(m.main.RiverwareXls);
        if (db.hasTable("RunList$"))
            for (const TraceInfo& t : ReadRunList(m.main.RiverwareXls))
                if (t.run == run) spike = t.spikeKcfs;
    }
    LoadMonthlyVolumes(m, m.main.RiverwareXls, sheet, field);
    Physical& p = m.physical;
    p.TraceSpikeKcfs = static_cast<int16_t>(spike);
    // The spike sheet holds one flag column per trace, in trace order.
    if (run > 0) p.SpikeTrace = static_cast<int16_t>(run - 1);
}

void ApplyDamSequence(Model& m, int kind, const MonthPattern& pattern) {
    Physical& p = m.physical;
    if (kind == SeqRecord) {
        LoadMonthlyVolumes(m, m.main.RiverwareXls, p.MonthlyVolSheet, p.MonthlyVolField);
        if (!p.RelativeSeasonal) return;
        double sum = 0;
        for (int mo = 1; mo <= 12; ++mo) sum += pattern[static_cast<size_t>(mo)];
        if (sum == 0) throw Fault("the relative monthly release pattern sums to 0; give it some months");
        for (int i = 1; i <= MonthsOfRecord; ++i) {
            const int year = 48 + (i - 1) / 12, mo = (i - 1) % 12 + 1;
            if (p.AnnualVol(year) <= p.MaxRelSeasonAdjust)
                p.MonthlyVol(i) = Sng(p.AnnualVol(year) * pattern[static_cast<size_t>(mo)] / sum);
        }
        return;
    }
    for (int i = 1; i <= MonthsOfRecord; ++i) p.MonthlyVol(i) = Sng(pattern[static_cast<size_t>((i - 1) % 12 + 1)]);
}

void ApplyTribSequence(Model& m, int series, int kind, const MonthPattern& pattern) {
    Morph& mo = m.morph;
    const int r = reachOfSeries(m, series);
    const double perGFt3 = mo.MgLPerGFt3;
    if (kind == SeqPattern && perGFt3 == 0)
        throw Fault("the sediment unit conversion is not set: the tributary flow sheet must be read first");
    for (int c = 1; c <= MonthsOfRecord; ++c) {
        if (kind == SeqRecord) {
            mo.TribQ(c, r) = mo.TribQBase(c, r);
            for (int k = 1; k <= 2; ++k) mo.TribSedConc(c, r, k) = mo.TribSedConcBase(c, r, k);
            continue;
        }
        const int month = (c - 1) % 12 + 1;
        const double q = pattern[static_cast<size_t>(month)];
        mo.TribQ(c, r) = Sng(q);
        if (kind != SeqPattern) continue;
        for (int k = 1; k <= 2; ++k) {
            const double load = series == 2 ? Quennased(q, k == 1) : TSRsed(q, month, k == 1);
            mo.TribSedConc(c, r, k) = Sng(load / perGFt3);
        }
    }
    BuildTribFlow(m, MonthsOfRecord);
}

}  // namespace osm
