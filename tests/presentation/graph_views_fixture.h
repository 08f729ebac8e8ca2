#pragma once
// A model in memory for the chart routines: a graph table of a monthly
// variable of two sets, a yearly one and a monthly one with observed data, three
// reaches, and a results store whose every value tells where it came from.
#include "core/model.h"
#include "core/results_store.h"
#include "presentation/graph_table.h"
#include "support/test_folder.h"

namespace osm::test {

// Results(run, v, s, r, month) = 10000*run + 1000*v + 100*s + 10*r + month/100.
inline float StoredValue(int run, int v, int s, int r, int month) {
    return static_cast<float>(10000 * run + 1000 * v + 100 * s + 10 * r) + static_cast<float>(month) / 100.0f;
}

inline void MakeChartModel(Model& m) {
    TestFolder f;
    Main& mn = m.main;
    mn.NReaches = 3;
    mn.FirstReach = 2;
    mn.LastReach = 3;
    mn.ReachMile.redim(Bounds{0, 3}, Bounds{0, 1});
    const float miles[4] = {0, 0.4f, 6.0f, 6.5f};
    for (int r = 1; r <= 3; ++r) mn.ReachMile(r, 0) = miles[r - 1], mn.ReachMile(r, 1) = miles[r];
    mn.IndexReach = 2;
    const std::string path = f.Write("graphleg.txt",
        "a\r\nb\r\nc\r\nd\r\n3 3\r\n"
        "1 \"M\" 2 \"Flow:\" \" min\" \" max\" 1 2 10\r\n"
        "2 \"Y\" 1 \"Power\" 3 1 20\r\n"
        "3 \"M\" 3 \"Temp:\" \" model\" \" Obs\" \" other\" 0 1 30\r\n");
    LoadGraphTable(m, path);
    for (int run = 0; run <= 1; ++run)
        for (int v = 1; v <= 3; ++v)
            for (int s = 1; s <= 3; ++s)
                for (int r = 1; r <= 3; ++r)
                    for (int mo = 1; mo <= 600; ++mo) mn.Results(run, v, s, r, mo) = StoredValue(run, v, s, r, mo);
    Graphs& g = m.graphs;
    for (int i = 1; i <= 4; ++i) g.VisForms(i) = 1;
    g.TimeWindow = 10;
    const int16_t graphSlots[6] = {1, 2, 0, 3, 0, 0}, profSlots[6] = {1, 0, 2, 0, 0, 0};
    for (int i = 1; i <= 6; ++i) g.GraphSlot(i) = graphSlots[i - 1], g.ProfSlot(i) = profSlots[i - 1];
    mn.StartYr = mn.CurYr = 48;
    mn.NYears = 50;
}

}  // namespace osm::test
