#include "sediment/morphology_sheets.h"

#include <algorithm>
#include <vector>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/workbook.h"
#include "hydrology/stage_tables.h"

namespace osm {

namespace {

std::string sheetName(const std::string& workbook, const std::string& sheet) {
    return workbook + ", sheet " + sheet;
}

// The reach of a row's mile, looked up only when the mile changes from the row
// before; the memory starts at `start` with reach 0.
class MileReach {
public:
    MileReach(const Model& m, double start) : m_(m), mile_(start) {}
    int of(double mile) {
        if (mile != mile_) {
            mile_ = mile;
            r_ = ReachOfMileInclusive(m_, mile);
        }
        return r_;
    }

private:
    const Model& m_;
    double mile_;
    int r_ = 0;
};

int monthIndexOf(const Cell& cell, const std::string& where, int row) {
    const int i = cell.int16();
    if (i < 0 || i > 600) throw FileFault(where, row, "a month index 0 to 600", cell.text());
    return i;
}

void fillSliceSubstrate(Model& m, Morph& next) {
    const Main& mn = m.main;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
        for (int s = 1; s <= mn.NSlices; ++s) {
            const double e = s * static_cast<double>(mn.SliceThick) - mn.SliceThick / 2.0;
            const double q = QOfStage(m, r, e);
            // Each slice takes the row of the next level above it.
            int level = 1;
            while (level < next.MaxQLevels && !(q < next.SubstrateQ(level))) ++level;
            level = std::min<int>(level, next.MaxQLevels);
            for (int t = 1; t <= 5; ++t) next.SliceSubstrate(t, s, r) = next.SubstrateTable(t, level, r);
        }
}

}  // namespace

void ReadTribFlow(Model& m, const std::string& workbook, const std::string& sheet) {
    // The conversion is set before anything else reads it, the flow engine included.
    m.morph.MgLPerGFt3 = static_cast<float>(1000.0 / 28.317);
    const double perGFt3 = m.morph.MgLPerGFt3;
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenRequiredSheet(sheet);
    const std::string where = sheetName(workbook, sheet);
    Table2<float> q = m.morph.TribQ;
    Table3<float> conc = m.morph.TribSedConc;
    q.clear();
    conc.clear();
    MileReach reach(m, 0);
    int last = 0;
    for (int row = 2; !c.AtEnd(); ++row, c.MoveNext()) {
        const int r = reach.of(c.Field("OSD_Mile").number());
        const int mi = monthIndexOf(c.Field("CMONTH"), where, row);
        q(mi, r) = c.Field("AVGQW").single();
        conc(mi, r, 1) = Sng(c.Field("SandMGL").number() / perGFt3);
        conc(mi, r, 2) = Sng(c.Field("FineMGL").number() / perGFt3);
        last = mi;
    }
    Morph& mo = m.morph;
    mo.TribQBase = q;
    mo.TribSedConcBase = conc;
    mo.TribQ = std::move(q);
    mo.TribSedConc = std::move(conc);
    mo.TribFlow.clear();
    BuildTribFlow(m, last);
}

void BuildTribFlow(Model& m, int lastMonth) {
    const Main& mn = m.main;
    Morph& mo = m.morph;
    for (int c = 1; c <= lastMonth; ++c)
        for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
            mo.TribFlow(c, r) = Sng(static_cast<double>(mo.TribQ(c, r)) + mo.TribFlow(c, r - 1));
}

void ReadSpateEvents(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenSheet(sheet);
    const std::string where = sheetName(workbook, sheet);
    Table1<int16_t> count{"SpateCount"};
    count.redim(Bounds{0, 600});
    for (int row = 2; !c.AtEnd(); ++row, c.MoveNext())
        count(monthIndexOf(c.Field("cmonth"), where, row)) = c.Field("SpateNum").int16();
    m.morph.SpateCount = std::move(count);
}

void ReadSubstrate(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenSheet(sheet);
    const std::string where = sheetName(workbook, sheet);
    const Main& mn = m.main;
    Morph next = m.morph;
    next.MaxQLevels = 0;
    if (!c.AtEnd()) {
        next.MaxQLevels = c.Field("MaxQLevels").int16();
        if (next.MaxQLevels < 1)
            throw FileFault(where, 2, "MaxQLevels of 1 or more", c.Field("MaxQLevels").text());
    }
    const int levels = next.MaxQLevels;
    next.SubstrateTable.redim(Bounds{0, 5}, Bounds{0, levels}, Bounds{0, mn.NReaches});
    next.SubstrateQ.redim(Bounds{0, levels});
    next.SubstrateName.redim(Bounds{1, 5});
    const char* names[] = {"fines", "sand", "gravel/cobble", "talus", "bedrock"};
    for (int t = 1; t <= 5; ++t) next.SubstrateName(t) = names[t - 1];
    std::vector<int> rows(static_cast<size_t>(mn.NReaches) + 1, 0);

    static const char* cols[] = {"Fines", "Sand", "Grav_Cob", "Talus", "Bedrock"};
    MileReach reach(m, -99);
    int level = 0;
    for (; !c.AtEnd(); c.MoveNext()) {
        // Rows are counted into levels, not checked: a short transect shifts the rest.
        level = level % levels + 1;
        next.SubstrateQ(level) = c.Field("Discharge").int32();
        const int r = reach.of(c.Field("OSD_Mile").number());
        for (int t = 1; t <= 5; ++t)
            next.SubstrateTable(t, level, r) =
                Sng(next.SubstrateTable(t, level, r) + c.Field(cols[t - 1]).number() / 100);
        ++rows[static_cast<size_t>(r)];
    }
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const int transects = levels > 0 ? rows[static_cast<size_t>(r)] / levels : 0;
        if (transects == 0) {
            ShowMessage(m, "no substrate transect",
                        "There is no substrate transect in reach " + NumText(r) +
                            ". Add one (or system average) in Substrate sheet in physical.xls for this reach.");
            continue;
        }
        for (int t = 0; t <= 5; ++t)
            for (int l = 0; l <= levels; ++l)
                next.SubstrateTable(t, l, r) = Sng(next.SubstrateTable(t, l, r) / static_cast<double>(transects));
    }
    next.SliceSubstrate.clear();
    if (levels > 0) fillSliceSubstrate(m, next);
    m.morph = std::move(next);
}

void ReadRC90(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenRequiredSheet(sheet);
    Table1<int16_t> backwater = m.morph.NBackwater, cm = m.morph.NCM;
    Table2<int16_t> eddy = m.morph.NEddy;
    backwater.clear();
    cm.clear();
    eddy.clear();
    auto bump = [](int16_t& n) { n = ToInt16(n + 1, "deposit count"); };
    MileReach reach(m, 0);
    int size = 0;
    for (; !c.AtEnd(); c.MoveNext()) {
        const int r = reach.of(c.Field("OSD_Mile").number());
        // Rows run downstream: past the last reach nothing more counts.
        if (r > m.main.LastReach) break;
        if (c.Field("RCCHAR").text() != "NRC") bump(backwater(r));
        const std::string type = c.Field("Dep_Type").text();
        if (type == "CM" || type == "CM/PB" || type == "CM/UP") {
            bump(cm(r));
        } else if (type == "R" || type == "S" || type == "R/CM" || type == "TFE" || type == "R/UP" ||
                   type == "S/CM" || type == "TFE/UP") {
            const std::string be = c.Field("BE_Size").text();
            // An unknown size keeps the class of the eddy before.
            if (be == "VS" || be == "S") size = 1;
            else if (be == "M") size = 2;
            else if (be == "L") size = 3;
            bump(eddy(r, size));
        }
    }
    m.morph.NBackwater = std::move(backwater);
    m.morph.NCM = std::move(cm);
    m.morph.NEddy = std::move(eddy);
}

void ReadFans(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenSheet(sheet);
    Morph next = m.morph;
    next.NTrib = 0;
    next.TribReach.clear();
    for (int row = 2; !c.AtEnd(); ++row, c.MoveNext()) {
        const int r = ReachOfMileInclusive(m, c.Field("OSD_Mile").number());
        if (next.NTrib == next.TribReach.hi())
            throw FileFault(sheetName(workbook, sheet), row, "at most two sediment-bearing tributaries",
                            c.Field("TribName").text());
        next.TribName(r) = c.Field("TribName").text();
        ++next.NTrib;
        next.TribReach(next.NTrib) = static_cast<int16_t>(r);
    }
    m.morph = std::move(next);
}

void ReadTribAttributes(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenSheet(sheet);
    Table1<float> area = m.morph.TribBasinArea;
    area.clear();
    MileReach reach(m, 0);
    for (; !c.AtEnd(); c.MoveNext()) {
        const int r = reach.of(c.Field("OSD_Mile").number());
        if (r > m.main.LastReach) break;
        // km2 to m2, summing the tributaries of a reach.
        area(r) = Sng(area(r) + c.Field("Basin_Area").number() * 1000000);
    }
    m.morph.TribBasinArea = std::move(area);
}

}  // namespace osm
