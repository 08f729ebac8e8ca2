#include "support/test_folder.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <vector>

namespace osm::test {

namespace fs = std::filesystem;

TestFolder::TestFolder() {
    static std::atomic<int> counter{0};
    path_ = (fs::temp_directory_path() /
             ("osm_test_" + std::to_string(getpid()) + "_" + std::to_string(counter++)))
                .string();
    fs::remove_all(path_);
    fs::create_directories(path_);
}

TestFolder::~TestFolder() {
    std::error_code ec;
    fs::remove_all(path_, ec);
}

std::string TestFolder::File(const std::string& name) const { return (fs::path(path_) / name).string(); }

std::string TestFolder::Write(const std::string& name, const std::string& text) const {
    const fs::path p = fs::path(path_) / name;
    fs::create_directories(p.parent_path());
    std::ofstream(p, std::ios::binary) << text;
    return p.string();
}

std::string TestFolder::Read(const std::string& name) const {
    std::ifstream in(File(name), std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

namespace {

struct Var {
    const char* code;
    std::vector<const char*> labels;  // first the title, then the set labels
    int mapId;
};

// The stored variables in their fixed order, for a river with one species.
const std::vector<Var>& smallRiverVars() {
    static const std::vector<Var> vars = {
        {"M", {"Flow", "Min", "Max"}, 1},
        {"M", {"Stage", "Min", "Max"}, 2},
        {"M", {"Suspended sediment", "Model", "obs"}, 3},
        {"M", {"Percent fines"}, 4},
        {"M", {"Tributary sediment"}, 5},
        {"M", {"Eddy storage", "Band 1", "Band 2", "Band 3", "Band 4"}, 6},
        {"M", {"Margin storage", "Band 1", "Band 2", "Band 3", "Band 4"}, 7},
        {"M", {"Pool storage"}, 8},
        {"M", {"Sand balance"}, 9},
        {"Y", {"Campsites", "All", "Large", "Medium", "Small"}, 10},
        {"M", {"Camp use", "Large", "Medium", "Small"}, 11},
        {"Y", {"Power value"}, 12},
        {"M", {"Temperature", "Model", "Obs"}, 13},
        {"M", {"Oxygen", "Model", "obs"}, 14},
        {"M", {"Secchi", "Model", "obs"}, 15},
        {"M", {"Algae", "Model", "obs"}, 16},
        {"M", {"Algae total", "Model", "obs"}, 17},
        {"M", {"Algae classes", "1", "2", "3", "4", "5"}, 18},
        {"M", {"Detritus", "In", "Standing", "obs"}, 19},
        {"M", {"Inverts", "Model", "obs"}, 20},
        {"Y", {"Litter"}, 21},
        {"Y", {"Vegetation", "1", "2", "3"}, 22},
        {"Y", {"Catch", "Model", "obs"}, 23},
        {"Y", {"CPUE", "Model", "obs"}, 24},
        {"Y", {"Angler days", "Model", "obs"}, 25},
        {"Y", {"Angling value"}, 26},
        {"Y", {"Chub", "Model", "obs"}, 27},
        {"M", {"Aquatic insects", "Model", "obs"}, 28},
    };
    return vars;
}

std::string graphleg() {
    std::string s = "Stored variables of the test river\r\nline 2\r\nline 3\r\nline 4\r\n";
    const auto& vars = smallRiverVars();
    s += std::to_string(vars.size()) + " 5\r\n";
    for (size_t i = 0; i < vars.size(); ++i) {
        const Var& v = vars[i];
        const size_t sets = v.labels.size() == 1 ? 1 : v.labels.size() - 1;
        s += std::to_string(i + 1) + " \"" + v.code + "\" " + std::to_string(sets) + " \"" + v.labels[0] + "\"";
        for (size_t k = 1; k < v.labels.size(); ++k) s += std::string(" \"") + v.labels[k] + "\"";
        s += " 0 1 " + std::to_string(v.mapId) + "\r\n";
    }
    return s;
}

std::string grs() {
    std::string s;
    for (int i = 1; i <= 4; ++i) s += "\"VisForms-" + std::to_string(i) + "\"," + (i == 1 || i == 3 ? "1" : "0") + "\r\n";
    s += "\"TimeWindow\",10\r\n";
    const char* q[] = {"5000", "20000", "45000", "60000"};
    for (int i = 1; i <= 4; ++i) s += "\"IndSliceKCFS-" + std::to_string(i) + "\"," + q[i - 1] + "\r\n";
    s += "\"Profile Month\",0\r\n\"ShowSandBox\",#FALSE#\r\n\"PlotObsAvg\",#FALSE#\r\n";
    for (int i = 1; i <= 6; ++i) s += "\"TS_Graph-" + std::to_string(i) + "\"," + std::to_string(i) + ",0,0\r\n";
    for (int i = 1; i <= 6; ++i) s += "\"Map-" + std::to_string(i) + "\"," + std::to_string(i) + "\r\n";
    for (int i = 1; i <= 6; ++i) s += "\"Profile-" + std::to_string(i) + "\"," + std::to_string(i) + ",0,0\r\n";
    for (int i = 1; i <= 3; ++i) s += "\"CX_Profile-" + std::to_string(i) + "\",0\r\n";
    return s;
}

}  // namespace

void WriteSmallRiver(const TestFolder& f) {
    f.Write("start_message.txt", "A small test river.\r\nTwo lines.\r\n");
    f.Write("diurnal_scenarios.txt", "noaction steady\r\n");
    f.Write("Reaches.csv",
            "\"Test river\",3,2,3\r\n\"Reach\",\"Label\",\"Upper\",\"Lower\"\r\n"
            "1,\"Dam\",0,0.5\r\n2,\"Upper gorge\",0.5,20.62\r\n3,\"Lower gorge\",20.62,40\r\n");
    f.Write("graphleg.txt", graphleg());
    f.Write("default.grs", grs());
    for (const char* name : {"default.rec", "default.exp", "default.phy", "noaction.sts",
                             "steady.sts", "ORRiv.mif", "ORRiv.mid", "Lakes.mif", "tribs.mif",
                             "model.mde", "Reachlabels.csv", "CampingBeaches.csv", "default.bhp",
                             "default.fis", "default.trb"})
        f.Write(name, "\r\n");
    f.Write("riverware.xls/Historical.csv", "YR,MNTH,ACFT\r\n");
    f.Write("physical.xls/TribFlow.csv", "OSD_Mile,YR,MNTH,CMONTH,AVGQW,SandMGL,FineMGL\r\n");
    f.Write("lower_production.xls/Benthos.csv", "OSD_Mile\r\n");
    f.Write("population.xls/Lookup.csv", "Code\r\n");
}

}  // namespace osm::test
