#include "presentation/legends.h"

#include <algorithm>
#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/textfile.h"

namespace osm {

namespace {

LegendRec defaultLegend(int16_t mapId, int16_t set, std::string name) {
    LegendRec l;
    l.MapId = mapId;
    l.Set = set;
    l.Name = std::move(name);
    l.Colours.assign(2, 0);
    l.Breaks.assign(2, 0.0f);
    return l;
}

}  // namespace

Legend ReadLegends(const std::string& path) {
    if (!std::filesystem::exists(path))
        throw FileFault(path, "ERRORLooking for Legend File " + path);
    TextReader in(path, TextReader::Mode::Blanks);
    const int16_t count = in.Int16("the number of legends");
    if (count < 0) in.Fail("a number of legends of 0 or more", std::to_string(count));
    Legend out;
    for (int k = 0; k < count; ++k) {
        LegendRec l;
        l.Name = in.Line("a legend name");
        l.MapId = in.Int16("a map id");
        l.Set = in.Int16("a data set");
        l.NCats = in.Int16("a number of categories");
        if (l.NCats < 0) in.Fail("a number of categories of 0 or more", std::to_string(l.NCats));
        l.Categorical = in.Int16("a scale kind (1 categorical, 0 continuous)");
        if (l.Categorical != 0 && l.Categorical != 1)
            in.Fail("a scale kind of 1 (categorical) or 0 (continuous)", std::to_string(l.Categorical));
        l.ScaleMin = in.Single("the lower limit of the scale");
        l.ScaleMax = in.Single("the upper limit of the scale");
        for (int c = 0; c < l.NCats; ++c) {
            l.Colours.push_back(in.Int32("a colour"));
            l.Breaks.push_back(in.Single("a break"));
        }
        out.Legends.push_back(std::move(l));
    }
    return out;
}

void LoadLegends(Model& m, const std::string& path) { m.legend = ReadLegends(path); }

void SaveLegends(const Legend& legend, const std::string& path) {
    TextWriter out(path, TextWriter::Mode::Blanks);
    out.Number(static_cast<int>(legend.Legends.size())).EndRecord();
    for (const LegendRec& l : legend.Legends) {
        out.Line(l.Name);
        out.Number(static_cast<int>(l.MapId)).Number(static_cast<int>(l.Set)).EndRecord();
        out.Number(static_cast<int>(l.NCats)).Number(static_cast<int>(l.Categorical));
        out.Number(l.ScaleMin).Number(l.ScaleMax).EndRecord();
        for (size_t c = 0; c < l.Colours.size(); ++c)
            out.Number(static_cast<int>(l.Colours[c])).Number(l.Breaks[c]).EndRecord();
    }
    out.Commit();
}

std::string LegendName(const Model& m, int var, int set) {
    const Graphs& g = m.graphs;
    return g.VarSets(var) < 2 ? g.VarLabel(0, var) : g.VarLabel(0, var) + g.VarLabel(set, var);
}

void CheckLegends(Model& m) {
    const Graphs& g = m.graphs;
    std::vector<LegendRec>& legends = m.legend.Legends;
    auto find = [&](int mapId, int set) -> LegendRec* {
        for (LegendRec& l : legends)
            if (l.MapId == mapId && l.Set == set) return &l;
        return nullptr;
    };
    bool changed = false;
    for (int v = 1; v <= g.NVars; ++v)
        for (int s = 1; s <= g.VarSets(v); ++s) {
            const std::string name = LegendName(m, v, s);
            if (LegendRec* l = find(g.VarMapId(v), s)) {
                if (l->Name != name) l->Name = name, changed = true;
            } else {
                legends.push_back(defaultLegend(g.VarMapId(v), static_cast<int16_t>(s), name));
                changed = true;
            }
        }
    // In the order of the graph table; legends of pairs it no longer holds are dropped.
    Legend ordered;
    for (int v = 1; v <= g.NVars; ++v)
        for (int s = 1; s <= g.VarSets(v); ++s) ordered.Legends.push_back(*find(g.VarMapId(v), s));
    if (!changed && ordered.Legends == legends) return;
    SaveLegends(ordered, m.main.ModelMdeFile);
    LoadLegends(m, m.main.ModelMdeFile);
}

int VarOfLegend(const Model& m, int n) {
    if (n < 1 || n > static_cast<int>(m.legend.Legends.size())) return 0;
    const LegendRec& l = m.legend.Legends[static_cast<size_t>(n) - 1];
    for (int v = 1; v <= m.graphs.NVars; ++v)
        if (m.graphs.VarMapId(v) == l.MapId && m.graphs.VarSets(v) >= l.Set) return v;
    return 0;
}

}  // namespace osm

namespace osm {

void GetMinMax(const Model& m, int var, int set, float& min, float& max) {
    min = BigSingle;
    max = 3.40282295e-38f;  // bit pattern 0139446E
    const Main& mn = m.main;
    if (var < 1 || mn.Results.empty()) return;
    const bool yearly = m.graphs.VarTime(var) == TimeYearly;
    const int last = std::min<int>(mn.CumMonth, mn.Results.hi(4));
    for (int month = yearly ? 13 : 1; month <= last; month += yearly ? 12 : 1)
        for (int r = 1; r <= mn.NReaches; ++r) {
            const float v = mn.Results(0, var, set, r, month);
            min = std::min(min, v);
            max = std::max(max, v);
        }
}

}  // namespace osm
