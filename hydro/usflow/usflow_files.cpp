#include "usflow/usflow_files.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <sstream>

#include "common/atomic_file.h"
#include "common/text_lines.h"

namespace hydro {

namespace {

std::string lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
    return s;
}

bool blank(const std::string& s) { return s.find_first_not_of(" \t") == std::string::npos; }

[[noreturn]] void fail(const std::string& path, size_t i, const std::string& expected, const std::string& found) {
    throw FileError{path + ":" + std::to_string(i + 1) + ": expected " + expected + ", found '" + found + "'"};
}

}  // namespace

std::string FindFile(const std::string& name) {
    namespace fs = std::filesystem;
    if (fs::exists(name)) return name;
    const fs::path p(name);
    const fs::path dir = p.has_parent_path() ? p.parent_path() : fs::path(".");
    std::error_code ec;
    for (const auto& e : fs::directory_iterator(dir, ec))
        if (lower(e.path().filename().string()) == lower(p.filename().string())) return (dir / e.path().filename()).string();
    return name;
}

std::string OutputName(const std::string& controlPath) {
    std::filesystem::path p(controlPath);
    return p.replace_extension(".dat").string();
}

RoutingControl ReadRoutingControl(const std::string& path) {
    const auto lines = ReadLines(path);
    if (lines.empty()) throw FileError{path + ": empty"};
    std::istringstream in(lines[0]);
    RoutingControl c;
    int flag = 0;
    if (!(in >> c.runName >> c.inflowFile >> c.stepMinutes >> c.lengthMiles >> c.geometryFile >> flag))
        fail(path, 0, "run name, inflow file, step (min), length (mi), geometry file, flag", lines[0]);
    if (c.stepMinutes <= 0 || std::fmod(60.0, c.stepMinutes) != 0)
        fail(path, 0, "a time step that divides the hour", lines[0]);
    for (size_t i = 1; i < lines.size(); ++i) {
        if (blank(lines[i])) continue;
        std::istringstream row(lines[i]);
        double mile = 0;
        if (!(row >> mile)) fail(path, i, "an output mile", lines[i]);
        c.outMiles.push_back(mile);
    }
    if (c.outMiles.empty()) throw FileError{path + ": no output miles"};
    return c;
}

Geometry ReadGeometry(const std::string& path) {
    const auto lines = ReadLines(path);
    Geometry g;
    size_t i = 1;  // line 1 is a title
    auto keyed = [&](const std::string& key) {
        while (i < lines.size() && blank(lines[i])) ++i;
        if (i >= lines.size()) throw FileError{path + ": ends before the '" + key + "' line"};
        std::istringstream row(lines[i]);
        std::string k;
        row >> k;
        if (k != key) fail(path, i, "a line starting '" + key + "'", lines[i]);
        return row.str().substr(static_cast<size_t>(row.tellg()));
    };
    {
        std::istringstream row(keyed("dam_mile"));
        if (!(row >> g.damMile)) fail(path, i, "the dam's mile", lines[i]);
        ++i;
    }
    {
        std::istringstream row(keyed("discharges"));
        double q = 0;
        while (row >> q) {
            if (!g.discharge.empty() && q <= g.discharge.back()) fail(path, i, "rising discharges", lines[i]);
            g.discharge.push_back(q);
        }
        if (g.discharge.size() < 2) fail(path, i, "at least two discharges", lines[i]);
        ++i;
    }
    const size_t n = g.discharge.size();
    for (; i < lines.size(); ++i) {
        if (blank(lines[i])) continue;
        std::istringstream row(lines[i]);
        std::string key;
        Station s;
        row >> key;
        if (key != "station" || !(row >> s.mile >> s.slope))
            fail(path, i, "'station', mile, slope, " + std::to_string(n) + " areas, " + std::to_string(n) + " widths", lines[i]);
        s.area.resize(n);
        s.width.resize(n);
        for (auto& a : s.area)
            if (!(row >> a)) fail(path, i, std::to_string(n) + " areas", lines[i]);
        for (auto& w : s.width)
            if (!(row >> w) || w <= 0) fail(path, i, std::to_string(n) + " positive widths", lines[i]);
        for (size_t k = 1; k < n; ++k)
            if (s.area[k] <= s.area[k - 1]) fail(path, i, "areas rising with discharge", lines[i]);
        if (s.slope <= 0) fail(path, i, "a positive bed slope", lines[i]);
        if (!g.stations.empty() && s.mile <= g.stations.back().mile) fail(path, i, "stations by rising mile", lines[i]);
        g.stations.push_back(std::move(s));
    }
    if (g.stations.empty()) throw FileError{path + ": no stations"};
    return g;
}

std::vector<double> ReadInflow(const std::string& path, double stepMinutes) {
    const auto lines = ReadLines(path);
    std::vector<double> q;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (blank(lines[i])) continue;
        std::istringstream row(lines[i]);
        double t = 0, flow = 0;
        if (!(row >> t >> flow)) fail(path, i, "a time (h) and a flow (m3/s)", lines[i]);
        const double expected = static_cast<double>(q.size() + 1) * stepMinutes / 60.0;
        if (std::abs(t - expected) > 1e-4) fail(path, i, "the time " + std::to_string(expected) + " h", lines[i]);
        if (flow < 0) fail(path, i, "a flow not below 0", lines[i]);
        q.push_back(flow / CubicMetresPerCubicFoot);
    }
    if (q.empty()) throw FileError{path + ": no inflow"};
    return q;
}

void WriteRouted(const std::string& path, const RoutingResult& r, double stepMinutes) {
    AtomicFile out(path);
    std::FILE* f = out.Stream();
    for (size_t k = 0; k < r.flow.size(); ++k) {
        std::fprintf(f, "%10.4f", static_cast<double>(k + 1) * stepMinutes / 60.0);
        for (double q : r.flow[k]) std::fprintf(f, " %12.5f", q * CubicMetresPerCubicFoot);
        std::fprintf(f, "\r\n");
    }
    out.Commit();
}

}  // namespace hydro
