// The release sequence: monthly volumes and spike flags from the workbook, the
// experimental release file (.exp), and the historical suspended sediment.
#include <array>
#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/textfile.h"
#include "core/workbook.h"
#include "hydrology/flow_engine.h"

namespace osm {

namespace {

constexpr int MonthsOfRecord = 600;
constexpr int FirstExpYear = 48, LastExpYear = 147;

}  // namespace

void LoadMonthlyVolumes(Model& m, const std::string& workbook, const std::string& sheet,
                        const std::string& field) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenRequiredSheet(sheet);
    Physical next = m.physical;
    next.AnnualVol.clear();
    const bool historical = sheet == "Historical$";
    const std::string where = std::filesystem::path(workbook).filename().string() + ", sheet " + sheet;
    int year = 48, month = 1;
    int i = 1;
    for (; i <= MonthsOfRecord && !c.AtEnd(); ++i, c.MoveNext()) {
        float vol;
        if (historical) {
            vol = c.Field("ACFT").single();
            year = c.Field("YR").int16();
            // Row i is month i of the record: a row dropped or doubled moves every month after it.
            const int mnth = c.Field("MNTH").int16();
            if (year != 48 + (i - 1) / 12 || mnth != (i - 1) % 12 + 1)
                throw Fault(where + ", row " + NumText(i + 1) + ": expected YR " + NumText(48 + (i - 1) / 12) +
                            " and MNTH " + NumText((i - 1) % 12 + 1) +
                            " (one row a month from January 1948), found YR " + NumText(year) + " and MNTH " +
                            NumText(mnth));
            if (year == 93 || year == 94) next.SpinVol(i) = vol;
        } else {
            vol = c.Field(field).single();
        }
        if (vol < 0)
            throw Fault(where + ", row " + NumText(i + 1) + ": a release volume must be 0 or more, found " + NumText(vol));
        next.MonthlyVol(i) = vol;
        next.AnnualVol(year) = next.AnnualVol(year) + vol;
        if (!historical && ++month > 12) {
            month = 1;
            ++year;
        }
    }
    // Every month of the record is released: a month the sheet lacks would run dry.
    if (i <= MonthsOfRecord)
        throw FileFault(where, "holds " + NumText(i - 1) + " of the " + NumText(MonthsOfRecord) +
                                   " months of 1948 to 1997; month " + NumText((i - 1) % 12 + 1) + " of " +
                                   NumText(1948 + (i - 1) / 12) + " and every month after it are missing (nothing was loaded)");
    m.physical.MonthlyVol = std::move(next.MonthlyVol);
    m.physical.AnnualVol = std::move(next.AnnualVol);
    m.physical.SpinVol = std::move(next.SpinVol);
    m.physical.MonthlyVolSheet = sheet;
    m.physical.MonthlyVolField = historical ? "" : field;
}

void LoadSpikeFlags(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenSheet(sheet);
    Table1<bool> flags = m.physical.SpikeFlag;
    for (int i = 1; i <= MonthsOfRecord && !c.AtEnd(); ++i, c.MoveNext())
        flags(i) = c.Field(m.physical.SpikeTrace).number() != 0;
    m.physical.SpikeFlag = std::move(flags);
}

void LoadExp(Model& m, const std::string& path) {
    TextReader in(path);
    Physical& p = m.physical;
    Table1<float> temp = p.ExpTemp;
    Table1<int16_t> code = p.DiurnalCode;
    Table1<bool> expYear = p.ExpTempYr;
    in.Line("the title line");
    for (int mo = 1; mo <= 12; ++mo) {
        in.Text("a month name");
        temp(mo) = in.Single("the experimental temperature of month " + NumText(mo));
    }
    in.SkipLine("a blank line");
    in.SkipLine("the heading \"Year\",\"Diurnal_Pattern\",\"Exp._Temp_Year\"");
    for (int y = FirstExpYear; y <= LastExpYear; ++y) {
        in.Number("the year " + NumText(1900 + y));
        const std::string what = "the diurnal pattern of " + NumText(1900 + y);
        code(y) = in.Int16(what);
        if (code(y) < 1 || code(y) > p.NDiurnal)
            in.Fail(what + ", one of the codes of the scenario list diurnal_scenarios.txt: " + DiurnalCodesText(p),
                    NumText(code(y)));
        expYear(y) = in.Flag("the experimental temperature flag of " + NumText(1900 + y));
    }
    p.ExpTemp = std::move(temp);
    p.DiurnalCode = std::move(code);
    p.ExpTempYr = std::move(expYear);
}

std::string DiurnalCodesText(const Physical& p) {
    std::string text;
    for (int k = 1; k <= p.NDiurnal; ++k) text += (k > 1 ? ", " : "") + NumText(k) + " (" + p.DiurnalName(k) + ")";
    return text;
}

void SaveExp(const Model& m, const std::string& path) {
    const Physical& p = m.physical;
    TextWriter out(path);
    out.Line("Experimental monthly temperature pattern");
    for (int mo = 1; mo <= 12; ++mo) {
        out.Text(m.main.MonthName(mo)).Number(p.ExpTemp(mo));
        out.EndRecord();
    }
    out.Line("");
    out.Text("Year").Text("Diurnal_Pattern").Text("Exp._Temp_Year");
    out.EndRecord();
    for (int y = FirstExpYear; y <= LastExpYear; ++y) {
        out.Number(1900 + y).Number(static_cast<int>(p.DiurnalCode(y))).FlagNumber(p.ExpTempYr(y));
        out.EndRecord();
    }
    out.Commit();
}

void LoadMainSed(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenRequiredSheet(sheet);
    Table2<float> conc = m.physical.HistSedConc;
    Table2<bool> seen = m.physical.HistSedSeen;
    double lastMile = 0;
    int reach = 0;
    for (int row = 2; !c.AtEnd(); ++row, c.MoveNext()) {
        const double mile = c.Field("OSD_Mile").number();
        if (mile != lastMile) {
            reach = ReachOfMile(m, mile);
            lastMile = mile;
        }
        const double i = (c.Field("YR").number() - 48) * 12 + c.Field("MONTH").number();
        if (i < 0 || i > MonthsOfRecord)
            throw FileFault(workbook + ", sheet " + sheet, row, "YR and MONTH within 1948..1997",
                            "month index " + NumText(i));
        c.Field("AVGQ_CFS");
        conc(static_cast<int>(i), reach) = c.Field("AVGSSMGL").single();
        seen(static_cast<int>(i), reach) = true;
    }
    m.physical.HistSedConc = std::move(conc);
    m.physical.HistSedSeen = std::move(seen);
}

}  // namespace osm
