#include "hydrology/stage_tables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <vector>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/textfile.h"
#include "core/util.h"
#include "core/workbook.h"
#include "sediment/storage_potential.h"

namespace osm {

namespace {

constexpr std::array<double, NSheetQ> sheetQ = {5000,  8000,  10000, 15000, 18000, 20000,
                                                 25000, 30000, 35000, 40000, 45000, 60000};
constexpr double feetPerMile = 5280.0;

// One piecewise-linear rating over rows 1..13: the segment below the first row
// whose x exceeds the argument, and the last segment beyond the top row. Below
// row 1 the rating has no row to start from: a fault. `x` and `y` give row i.
template <typename X, typename Y>
double Rate(X x, Y y, double arg, int r, const char* xName) {
    int j = NRatingRows;
    for (int i = 1; i <= NRatingRows; ++i) {
        if (x(i) > arg) {
            j = i - 1;
            break;
        }
    }
    if (j < 1)
        throw Fault("the rating of reach " + NumText(r) + " is asked for " + NumText(arg) +
                    ", below the first row of " + xName + " (" + NumText(x(1)) +
                    "); the rating has no row below it");
    if (j > NRatingRows - 1) j = NRatingRows - 1;
    const double dx = x(j + 1) - x(j);
    if (dx == 0.0)
        throw Fault(std::string(xName) + " of reach " + NumText(r) + " has rows " + NumText(j) +
                    " and " + NumText(j + 1) + " equal (" + NumText(x(j)) +
                    "); the rating of the reach has not been read, or does not rise");
    return y(j) + (arg - x(j)) * (y(j + 1) - y(j)) / dx;
}

// The first row 2..13 whose x is not above the row before, or 0 when all rise.
template <typename X>
int FirstFlatRow(X x) {
    for (int i = 2; i <= NRatingRows; ++i)
        if (!(x(i) > x(i - 1))) return i;
    return 0;
}

// The rating row i of reach r built from the averages: row 1 is zero flow.
double AvgQ(int i) { return i == 1 ? 0.0 : SheetDischarge(i - 1); }
double AvgOf(const Table2<float>& t, int i, int r) { return i == 1 ? 0.0 : t(i - 1, r); }

// Field-by-field reading of one record that must stand on one line.
class Row {
public:
    explicit Row(TextReader& in) : in_(in), line_(in.line()) {}
    double Number(std::string_view what) {
        if (in_.line() != line_) throw FileFault(in_.path(), line_, std::string(what), "the end of the line");
        return in_.Number(what);
    }
    int16_t Int16(std::string_view what) {
        if (in_.line() != line_) throw FileFault(in_.path(), line_, std::string(what), "the end of the line");
        return in_.Int16(what);
    }
    std::string Text(std::string_view what) {
        if (in_.line() != line_) throw FileFault(in_.path(), line_, std::string(what), "the end of the line");
        return in_.Text(what);
    }
    void End() {
        if (in_.line() == line_ && !in_.AtEnd()) in_.Fail("the end of the line", in_.Line("the rest of the line"));
    }
    int line() const { return line_; }

private:
    TextReader& in_;
    int line_;
};

int ReadReach(Row& row, const TextReader& in, const Model& m) {
    const int r = row.Int16("a reach number");
    if (r < 1 || r > m.main.NReaches)
        throw FileFault(in.path(), row.line(),
                        "a reach number of 1 to " + NumText(static_cast<int>(m.main.NReaches)),
                        NumText(r));
    return r;
}

}  // namespace

double SheetDischarge(int i) {
    if (i < 1 || i > NSheetQ) throw Fault("no sheet discharge number " + NumText(i) + "; they run 1..12");
    return sheetQ[static_cast<size_t>(i - 1)];
}

std::string HabFileName(const std::string& reachFile) { return Stem(reachFile) + "hab"; }
std::string QsvwFileName(const std::string& reachFile) { return Stem(reachFile) + "qsvw"; }

StageAverages BuildStageTables(const Model& m, const std::string& workbook, const std::string& sheet) {
    const int n = m.main.NReaches;
    const Bounds rows{0, NSheetQ};
    const Bounds reaches{0, n};
    Table2<double> stage{"StageSum"}, velocity{"VelocitySum"}, width{"WidthSum"};
    StageAverages avg;
    for (auto* t : {&stage, &velocity, &width}) t->redim(rows, reaches);
    avg.Count.redim(rows, reaches);

    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenRequiredSheet(sheet);
    c.MoveFirst();
    // A record that matches no discharge or no reach keeps the row or the reach
    // of the record before; the field sheet has a few such records, and the means
    // have always been taken this way.
    int row = 0, reach = 0;
    for (; !c.AtEnd(); c.MoveNext()) {
        const double q = c.Field("DISCHARGE").number();
        const double st = c.Field("STAGE").number();
        const double vel = c.Field("VELOCITY").number();
        const double wd = c.Field("WIDTH").number();
        // Miles are singles in the model: rounding here puts a record on a reach
        // boundary in the reach below it, as the boundary reads in the reach file.
        const double mile = Sng(std::fabs(c.Field("MILE").number() + HarlFerryMile));
        for (int i = 1; i <= NSheetQ; ++i)
            if (q == SheetDischarge(i)) row = i;
        const int r = ReachOfMile(m, mile);
        if (r != 0) reach = r;
        stage(row, reach) += st;
        velocity(row, reach) += vel;
        width(row, reach) += wd;
        if (r != 0) avg.Count(row, reach) += 1;
    }

    for (auto* t : {&avg.Stage, &avg.Velocity, &avg.Width}) t->redim(rows, reaches);
    for (int r = 0; r <= n; ++r) {
        for (int i = 0; i <= NSheetQ; ++i) {
            // A cell with sums but no count (records outside the reaches only)
            // keeps its sums as they are.
            const double k = avg.Count(i, r) != 0 ? avg.Count(i, r) : 1.0;
            avg.Stage(i, r) = Sng(stage(i, r) / k);
            avg.Velocity(i, r) = Sng(velocity(i, r) / k);
            avg.Width(i, r) = Sng(width(i, r) / k);
        }
    }

    // The width and discharge lookups divide by stage steps: catch a flat rating
    // here, where the sheet can be named.
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) {
        const int i = FirstFlatRow([&](int k) { return AvgOf(avg.Stage, k, r); });
        if (i != 0)
            throw Fault(sheet + " of " + workbook + ": reach " + NumText(r) + ", row " + NumText(i) +
                        " (" + NumText(AvgQ(i)) + " cfs) has a mean stage of " +
                        NumText(AvgOf(avg.Stage, i, r)) + " ft, not above the " +
                        NumText(AvgOf(avg.Stage, i - 1, r)) + " ft of row " + NumText(i - 1) +
                        "; every run reach needs records at every discharge, with stages "
                        "rising with the discharge");
    }
    return avg;
}

void WriteHabFile(const Model& m, const std::string& reachFile, const StageAverages& avg) {
    const Main& mn = m.main;
    TextWriter w(HabFileName(reachFile));
    w.Text("Number of slices = ").Number(static_cast<int>(mn.NSlices)).EndRecord();
    w.Text("Thickness of slice = ").Number(static_cast<int>(mn.SliceThick)).EndRecord();
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        w.Number(r);
        double w0 = 0.0;
        for (int s = 1; s <= mn.NSlices; ++s) {
            const double z = static_cast<double>(s) * mn.SliceThick;
            const double wd = Rate([&](int i) { return AvgOf(avg.Stage, i, r); },
                                   [&](int i) { return AvgOf(avg.Width, i, r); }, z, r,
                                   "the mean stage");
            // A narrowing band adds no water surface.
            const double area = std::max(0.0, (wd - w0) * mn.ReachLen(r) * feetPerMile);
            w.Number(Sng(area));
            w0 = wd;
        }
        w.EndRecord();
    }
    w.Commit();
}

void WriteQsvwFile(Model& m, const std::string& reachFile, const StageAverages& avg) {
    const Main& mn = m.main;
    TextWriter w(QsvwFileName(reachFile));
    w.Text("Q").Text("STAGE").Text("VELOCITY").Text("WIDTH").Text("REACH").EndRecord();
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        w.Number(0).Number(0).Number(0).Number(0).Number(r).EndRecord();
        for (int i = 1; i <= NSheetQ; ++i)
            w.Number(SheetDischarge(i))
                .Number(avg.Stage(i, r))
                .Number(avg.Velocity(i, r))
                .Number(avg.Width(i, r))
                .Number(r)
                .EndRecord();
    }
    w.Commit();
    m.physical.NQRows = NRatingRows;
}

void ReadQsvwFile(Model& m, const std::string& reachFile) {
    const std::string path = QsvwFileName(reachFile);
    TextReader in(path);
    Physical& p = m.physical;
    Table2<float> q = p.QTable, stage = p.StageTable, width = p.WidthTable;
    // Where each row was read, for the rising check; 0 for rows not in the file.
    Table2<int> lineOf{"lineOf"};
    lineOf.redim(Bounds{1, NRatingRows}, Bounds{1, m.main.NReaches});
    {
        Row heads(in);
        for (const char* h : {"the head \"Q\"", "the head \"STAGE\"", "the head \"VELOCITY\"",
                              "the head \"WIDTH\"", "the head \"REACH\""})
            heads.Text(h);
        heads.End();
    }
    while (!in.AtEnd()) {
        for (int i = 1; i <= NRatingRows; ++i) {
            if (in.AtEnd())
                in.Fail("row " + NumText(i) + " of a group of 13", "the end of the file");
            Row row(in);
            const float qi = Sng(row.Number("a discharge"));
            const float si = Sng(row.Number("a stage"));
            row.Number("a velocity");  // only for the user
            const float wi = Sng(row.Number("a width"));
            const int r = ReadReach(row, in, m);
            row.End();
            q(i, r) = qi;
            stage(i, r) = si;
            width(i, r) = wi;
            lineOf(i, r) = row.line();
        }
    }
    for (int r = 1; r <= m.main.NReaches; ++r) {
        bool read = false;
        for (int i = 1; i <= NRatingRows; ++i) read = read || lineOf(i, r) != 0;
        if (!read) continue;
        for (auto [t, name] : {std::pair{&q, "discharge"}, std::pair{&stage, "stage"}}) {
            const int i = FirstFlatRow([t = t, r](int k) { return static_cast<double>((*t)(k, r)); });
            if (i != 0)
                throw FileFault(path, lineOf(i, r),
                                "reach " + NumText(r) + ", row " + NumText(i) + ": a " + name +
                                    " above the " + NumText((*t)(i - 1, r)) + " of row " +
                                    NumText(i - 1),
                                NumText((*t)(i, r)));
        }
    }
    p.QTable = std::move(q);
    p.StageTable = std::move(stage);
    p.WidthTable = std::move(width);
    p.NQRows = NRatingRows;
}

void ReadHabFile(Model& m, const std::string& reachFile) {
    const std::string path = HabFileName(reachFile);
    const Main& mn = m.main;
    TextReader in(path);
    int count = 0;
    {
        Row row(in);
        row.Text("the text \"Number of slices = \"");
        count = row.Int16("the number of slices");
        if (count < 1 || count > mn.NSlices)
            throw FileFault(path, row.line(),
                            "a number of slices of 1 to NSlices (" +
                                NumText(static_cast<int>(mn.NSlices)) + ")",
                            NumText(count));
        row.End();
    }
    in.SkipLine("the slice thickness");

    Physical& p = m.physical;
    Table2<float> area = p.SliceArea, sliceQ = p.SliceQ, sliceWidth = p.SliceWidth;
    Table1<float> wet = p.WetArea;
    std::vector<std::pair<int, int>> blocks;  // reach, line
    const double thick = mn.SliceThick;
    while (!in.AtEnd()) {
        Row row(in);
        const int r = ReadReach(row, in, m);
        if (!(mn.ReachLen(r) > 0))
            throw FileFault(path, row.line(), "a reach of some length",
                            "reach " + NumText(r) + " of length " + NumText(mn.ReachLen(r)));
        for (int s = 1; s <= count; ++s) {
            area(s, r) = Sng(row.Number("the area of slice " + NumText(s)));
            try {
                sliceQ(s, r) = Sng(QOfStage(m, r, s * thick - thick / 2));
            } catch (const FileFault&) {
                throw;
            } catch (const Fault& e) {
                throw FileFault(path, row.line(), "a reach whose rating has been read", e.what());
            }
        }
        row.End();
        blocks.emplace_back(r, row.line());
    }
    std::vector<bool> done(static_cast<size_t>(mn.NReaches) + 1, false);
    for (const auto& [r, line] : blocks) {
        if (done[static_cast<size_t>(r)]) continue;
        done[static_cast<size_t>(r)] = true;
        // WetArea adds to what it held: it starts from the 0 of a new reach file.
        double sum = wet(r);
        for (int s = 1; s <= count; ++s) {
            sum += area(s, r);
            sliceWidth(s, r) = Sng(area(s, r) / (mn.ReachLen(r) * feetPerMile));
        }
        wet(r) = Sng(sum);
    }
    p.SliceArea = std::move(area);
    p.SliceQ = std::move(sliceQ);
    p.SliceWidth = std::move(sliceWidth);
    p.WetArea = std::move(wet);
}

std::string EnsureStageTables(Model& m, const std::string& reachFile) {
    if (reachFile.empty()) return "";
    if (FileExists(QsvwFileName(reachFile))) return "";
    try {
        const StageAverages avg = BuildStageTables(m, m.main.PhysicalXls, "StarsOut$");
        // The qsvw file goes last: it marks a finished build.
        WriteHabFile(m, reachFile, avg);
        WriteQsvwFile(m, reachFile, avg);
    } catch (const std::exception& e) {
        ShowMessage(m, "stage tables", std::string("Failed to make file ") + "\n" + e.what());
        return e.what();
    }
    return "";
}

void RebuildStageTables(Model& m, const std::string& reachFile) {
    const StageAverages avg = BuildStageTables(m, m.main.PhysicalXls, "StarsOut$");
    WriteHabFile(m, reachFile, avg);
    WriteQsvwFile(m, reachFile, avg);
    ReadQsvwFile(m, reachFile);
    ReadHabFile(m, reachFile);
}

double StageOfQ(const Model& m, int r, double q) {
    const Physical& p = m.physical;
    return Rate([&](int i) { return static_cast<double>(p.QTable(i, r)); },
                [&](int i) { return static_cast<double>(p.StageTable(i, r)); }, q, r, "QTable");
}

double WidthOfStage(const Model& m, int r, double stage) {
    const Physical& p = m.physical;
    return Rate([&](int i) { return static_cast<double>(p.StageTable(i, r)); },
                [&](int i) { return static_cast<double>(p.WidthTable(i, r)); }, stage, r,
                "StageTable");
}

double QOfStage(const Model& m, int r, double stage) {
    const Physical& p = m.physical;
    return Rate([&](int i) { return static_cast<double>(p.StageTable(i, r)); },
                [&](int i) { return static_cast<double>(p.QTable(i, r)); }, stage, r,
                "StageTable");
}

void SetIndexSlices(Model& m) {
    const Main& mn = m.main;
    // Only the run's reaches have a rating: the cached files hold no others.
    Table2<float> idx = m.physical.IndexSlice;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
        for (int i = 1; i <= 4; ++i)
            // IndexQ is taken in cfs as it stands, whatever the form's caption says.
            idx(i, r) = Sng(Int(StageOfQ(m, r, mn.IndexQ(i)) / mn.SliceThick) + 1);
    m.physical.IndexSlice = std::move(idx);
    RecomputeStorage(m, false);
}

}  // namespace osm
