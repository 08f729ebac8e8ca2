#include "presentation/graph_table.h"

#include <algorithm>
#include <cctype>

#include "core/colours.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/results_store.h"
#include "core/textfile.h"

namespace osm {

namespace {

// What the graph table may hold: far beyond any graph file of the model, and
// within the memory of a desktop machine for the results store.
constexpr int MaxGraphVars = 1000;
constexpr int MaxGraphSets = 100;
constexpr double MaxStoreSingles = 256.0 * 1048576;  // 1 GiB

int16_t timeCode(const std::string& code) {
    // A later letter overrides an earlier one.
    int16_t t = 0;
    if (code.find('W') != std::string::npos) t = TimeWeekly;
    if (code.find('M') != std::string::npos) t = TimeMonthly;
    if (code.find('Y') != std::string::npos) t = TimeYearly;
    return t;
}

}  // namespace

void LoadGraphTable(Model& m, const std::string& path) {
    TextReader in(path, TextReader::Mode::Blanks);
    for (int i = 0; i < 4; ++i) in.SkipLine("one of four heading lines");
    Graphs g;  // fresh tables; swapped in when the whole file has been read
    g.NVars = in.Int16("NVars");
    g.MaxSub = in.Int16("MaxSub");
    if (g.NVars < 0 || g.MaxSub < 1 || g.NVars > MaxGraphVars || g.MaxSub > MaxGraphSets)
        in.Fail("NVars 0.." + NumText(MaxGraphVars) + " and MaxSub 1.." + NumText(MaxGraphSets),
                NumText(g.NVars) + " " + NumText(g.MaxSub));
    // The results store holds every set of every variable, reach and month of two runs.
    const double singles = 2.0 * g.NVars * g.MaxSub * std::max<int>(m.main.NReaches, 1) * 600;
    if (singles > MaxStoreSingles)
        in.Fail("NVars and MaxSub whose results store fits in " + NumText(MaxStoreSingles * 4 / 1048576) + " MiB",
                NumText(g.NVars) + " " + NumText(g.MaxSub) + ", " + NumText(singles * 4 / 1048576) + " MiB with " +
                    NumText(static_cast<int>(m.main.NReaches)) + " reaches");
    g.VarLabel.redim(Bounds{0, g.MaxSub}, Bounds{1, g.NVars});
    for (auto* t : {&g.VarSets, &g.VarStyle, &g.VarSize, &g.VarMapId}) t->redim(Bounds{1, g.NVars});
    g.VarTime.redim(Bounds{0, g.NVars});
    int maxSets = 0;
    for (int v = 1; v <= g.NVars; ++v) {
        const std::string var = "variable " + NumText(v);
        in.Number("the number of " + var);
        g.VarTime(v) = timeCode(in.Text("the time code (W, M or Y) of " + var));
        g.VarSets(v) = in.Int16("the number of data sets of " + var);
        if (g.VarSets(v) < 1 || g.VarSets(v) > g.MaxSub)
            in.Fail("1.." + NumText(g.MaxSub) + " data sets for " + var, NumText(g.VarSets(v)));
        maxSets = std::max<int>(maxSets, g.VarSets(v));
        g.VarLabel(0, v) = in.Text("the title of " + var);
        if (g.VarSets(v) > 1)
            for (int s = 1; s <= g.VarSets(v); ++s)
                g.VarLabel(s, v) = in.Text("label " + NumText(s) + " of " + var);
        g.VarStyle(v) = in.Int16("the curve style of " + var);
        g.VarSize(v) = in.Int16("the curve size of " + var);
        g.VarMapId(v) = in.Int16("the map id of " + var);
    }

    Graphs& live = m.graphs;
    live.NVars = g.NVars;
    live.MaxSub = g.MaxSub;
    live.VarLabel = std::move(g.VarLabel);
    live.VarSets = std::move(g.VarSets);
    live.VarTime = std::move(g.VarTime);
    live.VarStyle = std::move(g.VarStyle);
    live.VarSize = std::move(g.VarSize);
    live.VarMapId = std::move(g.VarMapId);
    SetCurveColours(live);
    live.DumpVar.redim(Bounds{0, GraphRowCount(live) - 1});
    AllocateResults(m);

    for (int a = 1; a <= live.NVars; ++a)
        for (int b = a + 1; b <= live.NVars; ++b)
            if (live.VarMapId(a) == live.VarMapId(b))
                ShowMessage(m, "duplicate map ids",
                            "There are duplicate Map Ids in the Graph File " + path +
                                "\nThe Maps may not draw correctly",
                            "", "variables " + NumText(a) + " and " + NumText(b));
    if (maxSets != live.MaxSub)
        ShowMessage(m, "graph table sets",
                    "MaxSets not equal to the Actual max number of sets in File " + path);
}

void SetCurveColours(Graphs& g) {
    g.CurveColour.redim(Bounds{1, 2 * g.MaxSub});
    auto set = [&g](int i, int32_t colour) {
        if (i >= g.CurveColour.lo() && i <= g.CurveColour.hi() && colour >= 0) g.CurveColour(i) = colour;
    };
    set(g.MaxSub, QBColor(g.MaxSub - 4));
    set(1, RGB(255, 0, 0));
    set(2, RGB(0, 0, 255));
    set(3, RGB(0, 255, 0));
    set(4, RGB(255, 0, 255));
    set(5, RGB(255, 255, 0));
}

bool IsObservedSet(const Graphs& g, int s, int v) {
    std::string label = g.VarLabel(s, v);
    label.erase(0, label.find_first_not_of(" \t"));
    std::string head = label.substr(0, 3);
    std::transform(head.begin(), head.end(), head.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return head == "obs";
}

int GraphRowCount(const Graphs& g) {
    int n = 0;
    for (int v = 1; v <= g.NVars; ++v) n += g.VarSets(v);
    return n;
}

std::string GraphRowLabel(const Graphs& g, int v, int s) {
    if (g.VarSets(v) < 2) return g.VarLabel(0, v);
    return g.VarLabel(0, v) + " " + g.VarLabel(s, v);
}

}  // namespace osm
