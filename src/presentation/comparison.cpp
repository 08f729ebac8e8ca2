#include "presentation/comparison.h"

#include <cctype>
#include <cmath>
#include <cstdio>

#include "core/numbers.h"
#include "core/textfile.h"
#include "presentation/graph_table.h"
#include "presentation/graphs_module.h"
#include "presentation/run_set.h"

namespace osm {

namespace {

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// The row of (var, set) in the set, or -1.
int rowOf(const RunSet& set, int var, int sub) {
    for (size_t i = 0; i < set.rows.size(); ++i)
        if (set.rows[i] == std::make_pair(var, sub)) return static_cast<int>(i);
    return -1;
}

// How a quantity gathers the reaches: their sum, their mean, or the first
// reach alone (a value stored there only).
enum class Reaches { Sum, Mean, First };

// A run's mean of one row over the reaches; NaN when the row is missing or a
// reach has no mean.
double overReaches(const RunSet& set, const Graphs& g, size_t run, int var, int sub, Reaches how) {
    const int row = rowOf(set, var, sub);
    if (row < 0) return std::nan("");
    if (how == Reaches::First) return RunMean(set, g, run, static_cast<size_t>(row), set.firstReach);
    double total = 0;
    for (int r = set.firstReach; r <= set.lastReach; ++r) total += RunMean(set, g, run, static_cast<size_t>(row), r);
    return how == Reaches::Sum ? total : total / set.reachCount();
}

struct Quantity {
    std::string label;
    std::vector<std::pair<int, int>> rows;  // summed
    Reaches how;
};

// The quantities of the summary, from the numbering of the stored variables;
// the fish by the titles of the species variables.
std::vector<Quantity> summaryQuantities(const Graphs& g) {
    std::vector<Quantity> q = {{"Power value ($ million a year)", {{12, 1}}, Reaches::First},
                               {"Eddy sand storage, band 1 (rel. to potential, reach mean)", {{6, 1}}, Reaches::Mean},
                               {"Pool sand storage (rel. to potential, reach mean)", {{8, 1}}, Reaches::Mean},
                               {"Campsites (all reaches)", {{10, 1}}, Reaches::Sum}};
    // Trout by their name; the native fish of the gorge are its chub, suckers
    // and dace.
    Quantity trout{"Trout biomass (kg, all reaches)", {}, Reaches::Sum};
    Quantity native{"Native fish biomass (kg, all reaches)", {}, Reaches::Sum};
    for (int v = 27; v <= g.NVars; ++v) {
        const std::string title = lower(g.VarLabel(0, v));
        if (title.find("trout") != std::string::npos) trout.rows.emplace_back(v, 1);
        else if (title.find("chub") != std::string::npos || title.find("sucker") != std::string::npos ||
                 title.find("dace") != std::string::npos)
            native.rows.emplace_back(v, 1);
    }
    q.push_back(trout);
    q.push_back(native);
    q.push_back({"Angler days (all reaches)", {{25, 1}}, Reaches::Sum});
    q.push_back({"Angling value ($ million a year)", {{26, 1}}, Reaches::First});
    return q;
}

double quantityOf(const RunSet& set, const Graphs& g, size_t run, const Quantity& q) {
    double total = 0;
    for (const auto& [v, s] : q.rows) total += overReaches(set, g, run, v, s, q.how);
    return q.rows.empty() ? std::nan("") : total;
}

std::string figure(double x) {
    if (std::isnan(x)) return "-";
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.4g", x);
    return buf;
}

}  // namespace

double RunMean(const RunSet& set, const Graphs& g, size_t run, size_t row, int reach) {
    const bool yearly = g.VarTime(set.rows[row].first) == TimeYearly;
    double sum = 0;
    int n = 0;
    for (int c = yearly ? 12 : 1; c <= set.months; c += yearly ? 12 : 1) {
        const float x = set.at(run, row, reach, c);
        if (std::isnan(x)) continue;
        sum += x;
        ++n;
    }
    return n ? sum / n : std::nan("");
}

void WriteComparisonCsv(const RunSet& set, const Graphs& g, TextWriter& out) {
    out.Line("var,set,label,reach,scenario,mean,difference,percent_difference");
    const auto num = [&](double x) -> TextWriter& { return std::isnan(x) ? out.Bare("") : out.Number(x); };
    for (size_t row = 0; row < set.rows.size(); ++row) {
        const auto [v, s] = set.rows[row];
        for (int r = set.firstReach; r <= set.lastReach; ++r) {
            const double base = RunMean(set, g, 0, row, r);
            for (size_t run = 0; run < set.runs.size(); ++run) {
                const double mean = RunMean(set, g, run, row, r);
                out.Number(v).Number(s).Text(GraphRowLabel(g, v, s)).Number(r).Text(set.runs[run].name);
                num(mean);
                num(mean - base);
                num(base != 0 ? (mean - base) * 100.0 / base : std::nan(""));
                out.EndRecord();
            }
        }
    }
}

std::string ComparisonSummary(const RunSet& set, const Graphs& g) {
    std::string text;
    for (const Quantity& q : summaryQuantities(g)) {
        const double base = quantityOf(set, g, 0, q);
        text += q.label + "\n";
        for (size_t run = 0; run < set.runs.size(); ++run) {
            const double x = quantityOf(set, g, run, q);
            text += "  " + set.runs[run].name + ": " + figure(x);
            if (run > 0 && !std::isnan(x) && !std::isnan(base)) {
                text += " (" + std::string(x - base >= 0 ? "+" : "") + figure(x - base);
                if (base != 0) text += ", " + std::string(x - base >= 0 ? "+" : "") + figure((x - base) * 100 / base) + " %";
                text += ")";
            }
            if (!set.runs[run].fault.empty()) text += "  [stopped: " + set.runs[run].fault + "]";
            text += "\n";
        }
    }
    return text;
}

}  // namespace osm
