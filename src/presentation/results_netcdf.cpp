#include "presentation/results_netcdf.h"

#include <netcdf.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>
#include <set>
#include <vector>

#include "core/fault.h"
#include "core/numbers.h"
#include "core/textfile.h"
#include "presentation/graphs_module.h"
#include "presentation/run_set.h"

namespace osm {

namespace {

// The title less its trailing colon and its units in parentheses.
std::string bareTitle(const std::string& title) {
    std::string t = title;
    while (!t.empty() && (t.back() == ':' || t.back() == ' ')) t.pop_back();
    const size_t open = t.rfind('(');
    if (open != std::string::npos && t.back() == ')') t.erase(open);
    while (!t.empty() && t.back() == ' ') t.pop_back();
    return t;
}

class NcFile {
public:
    NcFile(const std::string& path, const std::string& shownPath) : shown_(shownPath) {
        check(nc_create(path.c_str(), NC_CLOBBER | NC_NETCDF4, &id_));
        open_ = true;
    }
    ~NcFile() {
        if (open_) nc_close(id_);
    }
    NcFile(const NcFile&) = delete;
    NcFile& operator=(const NcFile&) = delete;

    void check(int status) const {
        if (status != NC_NOERR) throw FileFault(shown_, std::string("NetCDF: ") + nc_strerror(status));
    }
    int dim(const char* name, size_t len) {
        int d = 0;
        check(nc_def_dim(id_, name, len, &d));
        return d;
    }
    int var(const std::string& name, nc_type type, std::initializer_list<int> dims) {
        int v = 0;
        const std::vector<int> d(dims);
        check(nc_def_var(id_, name.c_str(), type, static_cast<int>(d.size()), d.data(), &v));
        return v;
    }
    void text(int var, const char* name, const std::string& value) {
        check(nc_put_att_text(id_, var, name, value.size(), value.c_str()));
    }
    int id() const { return id_; }
    void close() {
        open_ = false;
        check(nc_close(id_));
    }

private:
    std::string shown_;
    int id_ = -1;
    bool open_ = false;
};

// Days from 1900-01-01 to the first day of month c of a run from startYr.
double monthStartDay(int startYr, int c) {
    using namespace std::chrono;
    const int y = 1900 + startYr + (c - 1) / 12;
    const unsigned mo = static_cast<unsigned>((c - 1) % 12 + 1);
    const sys_days day{year{y} / month{mo} / 1};
    const sys_days origin{year{1900} / January / 1};
    return static_cast<double>((day - origin).count());
}

std::string inputsText(const Provenance& p) {
    std::string text;
    for (const auto& [path, sha] : p.inputs) text += sha + "  " + path + "\n";
    return text;
}

void writeGlobals(NcFile& f, const RunSet& set) {
    const Provenance& p = set.provenance;
    f.text(NC_GLOBAL, "Conventions", "CF-1.8");
    f.text(NC_GLOBAL, "title", "Ostrel Gorge Ecosystem Model results");
    f.text(NC_GLOBAL, "source", "OSM " + p.version);
    f.text(NC_GLOBAL, "osm_mode", p.physOnly ? "physical model only" : "whole model");
    const int start = 1900 + p.startYr;
    f.check(nc_put_att_int(f.id(), NC_GLOBAL, "osm_start_year", NC_INT, 1, &start));
    f.check(nc_put_att_int(f.id(), NC_GLOBAL, "osm_years", NC_INT, 1, &p.years));
    f.text(NC_GLOBAL, "osm_input_files", inputsText(p));
}

// Groups the graph-table rows of the set by variable: (var, first row, sets).
struct VarRows {
    int var, firstRow, sets;
};
std::vector<VarRows> varRows(const RunSet& set) {
    std::vector<VarRows> out;
    for (size_t i = 0; i < set.rows.size(); ++i) {
        if (out.empty() || out.back().var != set.rows[i].first)
            out.push_back({set.rows[i].first, static_cast<int>(i), 0});
        ++out.back().sets;
    }
    return out;
}

// Unique NetCDF names: a title met twice gets the variable number appended.
std::vector<std::string> varNames(const std::vector<VarRows>& vars, const Graphs& g) {
    std::vector<std::string> names;
    std::set<std::string> seen = {"run", "run_name", "run_fault", "time", "month", "reach", "set"};
    for (const VarRows& v : vars) {
        std::string name = NetcdfName(g.VarLabel(0, v.var));
        if (!seen.insert(name).second) name += "_" + NumText(v.var);
        seen.insert(name);
        names.push_back(name);
    }
    return names;
}

void writeFile(NcFile& f, const RunSet& set, const Graphs& g) {
    const auto vars = varRows(set);
    const auto names = varNames(vars, g);
    size_t maxSets = 1;
    for (const VarRows& v : vars) maxSets = std::max(maxSets, static_cast<size_t>(v.sets));
    const size_t nRuns = set.runs.size(), nMonths = static_cast<size_t>(set.months),
                 nReach = static_cast<size_t>(set.reachCount());
    const int dRun = f.dim("run", nRuns), dTime = f.dim("time", nMonths), dReach = f.dim("reach", nReach),
              dSet = f.dim("set", maxSets);
    writeGlobals(f, set);
    const int vRun = f.var("run", NC_INT, {dRun});
    f.text(vRun, "long_name", "run number");
    const int vName = f.var("run_name", NC_STRING, {dRun});
    f.text(vName, "long_name", "scenario or ensemble member of the run");
    const int vFault = f.var("run_fault", NC_STRING, {dRun});
    f.text(vFault, "long_name", "why the run stopped early; empty for a complete run");
    const int vTime = f.var("time", NC_DOUBLE, {dTime});
    f.text(vTime, "standard_name", "time");
    f.text(vTime, "long_name", "first day of the month");
    f.text(vTime, "units", "days since 1900-01-01");
    f.text(vTime, "calendar", "standard");
    f.text(vTime, "axis", "T");
    const int vMonth = f.var("month", NC_INT, {dTime});
    f.text(vMonth, "long_name", "month of the run, from 1");
    const int vReach = f.var("reach", NC_INT, {dReach});
    f.text(vReach, "long_name", "reach number, counted downstream from the dam row");
    const int vSet = f.var("set", NC_INT, {dSet});
    f.text(vSet, "long_name", "data set of a variable (see set_labels)");
    std::vector<int> ids;
    const float fill = std::numeric_limits<float>::quiet_NaN();
    for (size_t i = 0; i < vars.size(); ++i) {
        const int id = f.var(names[i], NC_FLOAT, {dRun, dTime, dReach, dSet});
        f.check(nc_def_var_deflate(f.id(), id, 1, 1, 1));
        f.check(nc_def_var_fill(f.id(), id, 0, &fill));
        const std::string title = g.VarLabel(0, vars[i].var);
        f.text(id, "long_name", bareTitle(title));
        f.text(id, "units", NetcdfUnits(title));
        std::string labels;
        for (int s = 1; s <= vars[i].sets; ++s) {
            std::string label = g.VarLabel(s, vars[i].var);
            while (!label.empty() && label.front() == ' ') label.erase(0, 1);
            labels += (s > 1 ? ";" : "") + (label.empty() ? std::string("value") : label);
        }
        f.text(id, "set_labels", labels);
        f.text(id, "coordinates", "run_name");
        const int var = vars[i].var;
        f.check(nc_put_att_int(f.id(), id, "osm_variable", NC_INT, 1, &var));
        ids.push_back(id);
    }
    f.check(nc_enddef(f.id()));

    for (size_t r = 0; r < nRuns; ++r) {
        const int number = static_cast<int>(r) + 1;
        const size_t at[] = {r};
        f.check(nc_put_var1_int(f.id(), vRun, at, &number));
        const char* name = set.runs[r].name.c_str();
        const char* fault = set.runs[r].fault.c_str();
        f.check(nc_put_var1_string(f.id(), vName, at, &name));
        f.check(nc_put_var1_string(f.id(), vFault, at, &fault));
    }
    for (size_t c = 1; c <= nMonths; ++c) {
        const size_t at[] = {c - 1};
        const double day = monthStartDay(set.provenance.startYr, static_cast<int>(c));
        const int month = static_cast<int>(c);
        f.check(nc_put_var1_double(f.id(), vTime, at, &day));
        f.check(nc_put_var1_int(f.id(), vMonth, at, &month));
    }
    for (size_t k = 0; k < nReach; ++k) {
        const size_t at[] = {k};
        const int reach = set.firstReach + static_cast<int>(k);
        f.check(nc_put_var1_int(f.id(), vReach, at, &reach));
    }
    for (size_t s = 0; s < maxSets; ++s) {
        const size_t at[] = {s};
        const int number = static_cast<int>(s) + 1;
        f.check(nc_put_var1_int(f.id(), vSet, at, &number));
    }
    // One run of one variable at a time, in the file's order: time, reach, set.
    std::vector<float> slab(nMonths * nReach * maxSets);
    for (size_t i = 0; i < vars.size(); ++i)
        for (size_t r = 0; r < nRuns; ++r) {
            std::fill(slab.begin(), slab.end(), fill);
            for (int s = 0; s < vars[i].sets; ++s)
                for (size_t k = 0; k < nReach; ++k)
                    for (size_t c = 0; c < nMonths; ++c)
                        slab[(c * nReach + k) * maxSets + static_cast<size_t>(s)] =
                            set.at(r, static_cast<size_t>(vars[i].firstRow + s), set.firstReach + static_cast<int>(k),
                                   static_cast<int>(c) + 1);
            const size_t start[] = {r, 0, 0, 0}, count[] = {1, nMonths, nReach, maxSets};
            f.check(nc_put_vara_float(f.id(), ids[i], start, count, slab.data()));
        }
}

}  // namespace

void WriteResultsNetcdf(const RunSet& set, const Graphs& g, const std::string& path) {
    const std::string temp = path + "." + std::to_string(getpid()) + ".nc-saving~";
    try {
        NcFile f(temp, path);
        writeFile(f, set, g);
        f.close();
        ReplaceDurably(temp, path);
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(temp, ignored);
        throw;
    }
}

std::string NetcdfName(const std::string& title) {
    std::string name;
    for (const char ch : bareTitle(title)) {
        const auto c = static_cast<unsigned char>(ch);
        if (std::isalnum(c)) name += static_cast<char>(std::tolower(c));
        else if (!name.empty() && name.back() != '_') name += '_';
    }
    while (!name.empty() && name.back() == '_') name.pop_back();
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name[0]))) name = "v_" + name;
    return name;
}

std::string NetcdfUnits(const std::string& title) {
    std::string t = title;
    while (!t.empty() && (t.back() == ':' || t.back() == ' ')) t.pop_back();
    const size_t open = t.rfind('(');
    if (open == std::string::npos || t.back() != ')') return "1";
    return t.substr(open + 1, t.size() - open - 2);
}

}  // namespace osm
