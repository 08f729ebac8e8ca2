#include "presentation/graphics_setup.h"

#include <array>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"

namespace osm {

namespace {

struct Setup {
    std::array<int16_t, 4> visForms{};
    int16_t timeWindow = 0;
    std::array<float, 4> indexQ{};
    int16_t profileMonth = 0;
    bool showSandBox = false, plotObsAvg = false;
    std::array<int16_t, 6> graphSlot{}, mapSlot{}, profSlot{};
    std::array<float, 6> graphMin{}, graphMax{}, profMin{}, profMax{};
    std::array<int16_t, 3> cx{};
};

// The key of each record is read and not compared: records go by position.
Setup readSetup(const std::string& path) {
    TextReader in(path);
    Setup s;
    for (auto& v : s.visForms) { in.Text("a VisForms key"); v = in.Int16("a VisForms flag"); }
    in.Text("the TimeWindow key");
    s.timeWindow = in.Int16("TimeWindow");
    for (auto& q : s.indexQ) { in.Text("an IndSliceKCFS key"); q = in.Single("an index stage"); }
    in.Text("the Profile Month key");
    s.profileMonth = in.Int16("the profile month");
    in.Text("the ShowSandBox key");
    s.showSandBox = in.Flag("ShowSandBox");
    in.Text("the PlotObsAvg key");
    s.plotObsAvg = in.Flag("PlotObsAvg");
    for (size_t i = 0; i < 6; ++i) {
        in.Text("a TS_Graph key");
        s.graphSlot[i] = in.Int16("a graph slot");
        s.graphMin[i] = in.Single("a graph YMin");
        s.graphMax[i] = in.Single("a graph YMax");
    }
    for (auto& v : s.mapSlot) { in.Text("a Map key"); v = in.Int16("a map slot"); }
    for (size_t i = 0; i < 6; ++i) {
        in.Text("a Profile key");
        s.profSlot[i] = in.Int16("a profile slot");
        s.profMin[i] = in.Single("a profile YMin");
        s.profMax[i] = in.Single("a profile YMax");
    }
    for (auto& v : s.cx) { in.Text("a CX_Profile key"); v = in.Int16("a cross-section flag"); }
    return s;
}

}  // namespace

void SetGraphSetupDefaults(Model& m) {
    Graphs& g = m.graphs;
    g.TimeWindow = 10;
    const std::array<int16_t, 4> vis{1, 0, 1, 0};
    const std::array<float, 4> stages{5000, 20000, 45000, 60000};
    for (int i = 1; i <= 4; ++i) {
        g.VisForms(i) = vis[static_cast<size_t>(i - 1)];
        m.main.IndexQ(i) = stages[static_cast<size_t>(i - 1)];
    }
    for (int i = 1; i <= 3; ++i) g.CXProfile(i) = 0;
    for (int i = 1; i <= 6; ++i) {
        g.GraphSlot(i) = static_cast<int16_t>(i);
        g.YMin(1, i) = 0;
        g.YMax(1, i) = 0;
    }
    // The profile loop clears the graph limits once more and leaves the profile
    // limits as they were; the map slots are not reset at all.
    for (int i = 1; i <= 6; ++i) {
        g.ProfSlot(i) = static_cast<int16_t>(i);
        g.YMin(1, i) = 0;
        g.YMax(1, i) = 0;
    }
}

bool LoadGraphSetup(Model& m, const std::string& path) {
    Setup s;
    try {
        s = readSetup(path);
    } catch (const Fault& f) {
        ShowMessage(m, "graphics setup",
                    "Failed to load Graphics SetUp File \n" + path + "\n Will Use Defaults", "",
                    f.what());
        SetGraphSetupDefaults(m);
        return false;
    }
    Graphs& g = m.graphs;
    for (int i = 1; i <= 4; ++i) {
        const size_t k = static_cast<size_t>(i - 1);
        g.VisForms(i) = s.visForms[k];
        m.main.IndexQ(i) = s.indexQ[k];
    }
    g.TimeWindow = s.timeWindow;
    m.main.ProfileMonth = s.profileMonth;
    g.ShowSandBox = s.showSandBox;
    g.PlotObsAvg = s.plotObsAvg;
    for (int i = 1; i <= 6; ++i) {
        const size_t k = static_cast<size_t>(i - 1);
        g.GraphSlot(i) = s.graphSlot[k];
        g.YMin(1, i) = s.graphMin[k];
        g.YMax(1, i) = s.graphMax[k];
        g.MapSlot(i) = s.mapSlot[k];
        g.ProfSlot(i) = s.profSlot[k];
        g.YMin(2, i) = s.profMin[k];
        g.YMax(2, i) = s.profMax[k];
    }
    for (int i = 1; i <= 3; ++i) g.CXProfile(i) = s.cx[static_cast<size_t>(i - 1)];
    return true;
}

void SaveGraphSetup(const Model& m, const std::string& path) {
    const Graphs& g = m.graphs;
    TextWriter out(path);
    for (int i = 1; i <= 4; ++i) {
        out.Text("VisForms-" + NumText(i)).Number(static_cast<int>(g.VisForms(i)));
        out.EndRecord();
    }
    out.Text("TimeWindow").Number(static_cast<int>(g.TimeWindow));
    out.EndRecord();
    for (int i = 1; i <= 4; ++i) {
        out.Text("IndSliceKCFS-" + NumText(i)).Number(m.main.IndexQ(i));
        out.EndRecord();
    }
    out.Text("Profile Month").Number(static_cast<int>(m.main.ProfileMonth));
    out.EndRecord();
    out.Text("ShowSandBox").Flag(g.ShowSandBox);
    out.EndRecord();
    out.Text("PlotObsAvg").Flag(g.PlotObsAvg);
    out.EndRecord();
    for (int i = 1; i <= 6; ++i) {
        out.Text("TS_Graph-" + NumText(i)).Number(static_cast<int>(g.GraphSlot(i)));
        out.Number(g.YMin(1, i)).Number(g.YMax(1, i));
        out.EndRecord();
    }
    for (int i = 1; i <= 6; ++i) {
        out.Text("Map-" + NumText(i)).Number(static_cast<int>(g.MapSlot(i)));
        out.EndRecord();
    }
    for (int i = 1; i <= 6; ++i) {
        out.Text("Profile-" + NumText(i)).Number(static_cast<int>(g.ProfSlot(i)));
        out.Number(g.YMin(2, i)).Number(g.YMax(2, i));
        out.EndRecord();
    }
    for (int i = 1; i <= 3; ++i) {
        out.Text("CX_Profile-" + NumText(i)).Number(static_cast<int>(g.CXProfile(i)));
        out.EndRecord();
    }
    out.Commit();
}

}  // namespace osm
