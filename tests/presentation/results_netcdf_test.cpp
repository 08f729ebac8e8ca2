#include <gtest/gtest.h>
#include <netcdf.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/model.h"
#include "core/run_driver.h"
#include "presentation/results_netcdf.h"
#include "presentation/run_set.h"
#include "support/fault_text.h"
#include "support/small_model.h"

using namespace osm;

namespace {

// Reads back what the writer put in the file, through the library's own API.
class Reader {
public:
    explicit Reader(const std::string& path) { EXPECT_EQ(nc_open(path.c_str(), NC_NOWRITE, &id_), NC_NOERR); }
    ~Reader() { nc_close(id_); }
    size_t dim(const char* name) const {
        int d = 0;
        size_t len = 0;
        EXPECT_EQ(nc_inq_dimid(id_, name, &d), NC_NOERR) << name;
        nc_inq_dimlen(id_, d, &len);
        return len;
    }
    int var(const char* name) const {
        int v = -1;
        EXPECT_EQ(nc_inq_varid(id_, name, &v), NC_NOERR) << name;
        return v;
    }
    std::string text(int var, const char* name) const {
        size_t len = 0;
        if (nc_inq_attlen(id_, var, name, &len) != NC_NOERR) return "<none>";
        std::string s(len, '\0');
        nc_get_att_text(id_, var, name, s.data());
        return s;
    }
    float value(const char* name, size_t run, size_t month, size_t reach, size_t set) const {
        const size_t at[] = {run, month, reach, set};
        float x = 0;
        EXPECT_EQ(nc_get_var1_float(id_, var(name), at, &x), NC_NOERR);
        return x;
    }
    std::string runName(size_t run) const {
        char* s = nullptr;
        const size_t at[] = {run};
        nc_get_var1_string(id_, var("run_name"), at, &s);
        std::string out = s ? s : "";
        nc_free_string(1, &s);
        return out;
    }
    double time(size_t month) const {
        double t = 0;
        const size_t at[] = {month};
        nc_get_var1_double(id_, var("time"), at, &t);
        return t;
    }
    int id() const { return id_; }

private:
    int id_ = -1;
};

}  // namespace

TEST(ResultsNetcdf, NamesAndUnitsComeFromTheGraphTitle) {
    EXPECT_EQ(NetcdfName("Flow (kcfs):"), "flow");
    EXPECT_EQ(NetcdfUnits("Flow (kcfs):"), "kcfs");
    EXPECT_EQ(NetcdfName("Power value ($ million)"), "power_value");
    EXPECT_EQ(NetcdfUnits("Power value ($ million)"), "$ million");
    EXPECT_EQ(NetcdfName("Aquat. insects biomass:"), "aquat_insects_biomass");
    EXPECT_EQ(NetcdfUnits("Aquat. insects biomass:"), "1");
    EXPECT_EQ(NetcdfName("3 (x)"), "v_3");
}

// Two runs of the small river, the second with other values, written and read
// back: every value where it belongs, observed gaps as NaN, the calendar and the
// provenance in the file.
TEST(ResultsNetcdf, RoundTripOfTwoRuns) {
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    RunObserver quiet;
    StartRun(m, quiet, 48, 1);
    RunSet set = RunSetFor(m, 1);
    set.provenance = {"9.9.9", true, 48, 1, {{"/x/default.phy", "abc123"}}};
    set.runs.push_back(TakeRun(set, m, 0, "noaction"));
    Model other = m;
    other.main.Results(0, 1, 2, 3, 7) = 123.5f;  // July's max flow of reach 3
    set.runs.push_back(TakeRun(set, other, 0, "other"));
    set.runs[1].fault = "";
    const std::string path = s->folder.File("r.nc");
    WriteResultsNetcdf(set, m.graphs, path);

    Reader f(path);
    EXPECT_EQ(f.dim("run"), 2u);
    EXPECT_EQ(f.dim("time"), 12u);
    EXPECT_EQ(f.dim("reach"), static_cast<size_t>(m.main.LastReach - m.main.FirstReach + 1));
    EXPECT_EQ(f.dim("set"), 4u);  // the most sets of a physical variable
    EXPECT_EQ(f.runName(1), "other");
    const size_t k3 = static_cast<size_t>(3 - m.main.FirstReach);
    EXPECT_EQ(f.value("flow", 1, 6, k3, 1), 123.5f);
    EXPECT_EQ(f.value("flow", 0, 6, k3, 1), m.main.Results(0, 1, 2, 3, 7));
    EXPECT_EQ(f.value("flow", 0, 2, k3, 0), m.main.Results(0, 1, 1, 3, 3));
    EXPECT_TRUE(std::isnan(f.value("flow", 0, 0, 0, 2)));  // flow has two sets
    // An observed temperature the input lacks is NaN, as the charts leave it out.
    for (size_t c = 0; c < 12; ++c) {
        if (!m.main.ObsMissing(0, 13, 2, 3, static_cast<int>(c) + 1)) continue;
        EXPECT_TRUE(std::isnan(f.value(NetcdfName(m.graphs.VarLabel(0, 13)).c_str(), 0, c, k3, 1)));
    }
    EXPECT_EQ(f.text(f.var("flow"), "units"), "1");  // the test river's titles carry no units
    EXPECT_EQ(f.text(f.var("flow"), "set_labels"), "Min;Max");
    // 1948-01-01 is 48 years and 11 leap days after 1900-01-01; February follows.
    EXPECT_EQ(f.time(0), 48 * 365 + 11);
    EXPECT_EQ(f.time(1), 48 * 365 + 11 + 31);
    EXPECT_EQ(f.text(f.var("time"), "units"), "days since 1900-01-01");
    EXPECT_EQ(f.text(NC_GLOBAL, "Conventions"), "CF-1.8");
    EXPECT_EQ(f.text(NC_GLOBAL, "source"), "OSM 9.9.9");
    EXPECT_EQ(f.text(NC_GLOBAL, "osm_mode"), "physical model only");
    EXPECT_EQ(f.text(NC_GLOBAL, "osm_input_files"), "abc123  /x/default.phy\n");
}

TEST(ResultsNetcdf, AFileThatCannotBeWrittenIsAFaultNamingIt) {
    auto s = test::StartSmallModel(true);
    RunSet set = RunSetFor(s->m, 1);
    const std::string bad = s->folder.File("no/such/folder/r.nc");
    EXPECT_NE(test::FaultText([&] { WriteResultsNetcdf(set, s->m.graphs, bad); }).find(bad), std::string::npos);
}
