#include "support/test_folder.h"

#include <atomic>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <vector>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "hydrology/flow_engine.h"
#include "sediment/physical_parameters.h"
#include "sediment/storage_potential.h"

namespace osm::test {

namespace fs = std::filesystem;

TestFolder::TestFolder() {
    static std::atomic<int> counter{0};
    const std::string name = "osm_test_" + std::to_string(getpid()) + "_" + std::to_string(counter++);
    path_ = (fs::temp_directory_path() / name).string();
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

std::string TestFolder::Read(const std::string& name) const { return ReadFile(File(name)); }

std::string TestFolder::ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

namespace {

// The stored variables in their fixed order, for a river with one species: the
// period code, the title, then the set labels.
const char* const kVars[] = {
    "M|Flow|Min|Max", "M|Stage|Min|Max", "M|Suspended sediment|Model|obs", "M|Percent fines",
    "M|Tributary sediment", "M|Eddy storage|Band 1|Band 2|Band 3|Band 4",
    "M|Margin storage|Band 1|Band 2|Band 3|Band 4", "M|Pool storage", "M|Sand balance",
    "Y|Campsites|All|Large|Medium|Small", "M|Camp use|Large|Medium|Small", "Y|Power value",
    "M|Temperature|Model|Obs", "M|Oxygen|Model|obs", "M|Secchi|Model|obs", "M|Algae|Model|obs",
    "M|Algae total|Model|obs", "M|Algae classes|1|2|3|4|5", "M|Detritus|In|Standing|obs", "M|Inverts|Model|obs",
    "Y|Litter", "Y|Vegetation|1|2|3", "Y|Catch|Model|obs", "Y|CPUE|Model|obs", "Y|Angler days|Model|obs",
    "Y|Angling value", "Y|Chub|Model|obs", "M|Aquatic insects|Model|obs"};

std::string graphleg() {
    std::string s = "Stored variables of the test river\r\nline 2\r\nline 3\r\nline 4\r\n";
    s += std::to_string(std::size(kVars)) + " 5\r\n";
    for (size_t i = 0; i < std::size(kVars); ++i) {
        std::vector<std::string> p;
        std::stringstream in(kVars[i]);
        for (std::string part; std::getline(in, part, '|');) p.push_back("\"" + part + "\"");
        const size_t sets = p.size() == 2 ? 1 : p.size() - 2;
        s += std::to_string(i + 1) + " " + p[0] + " " + std::to_string(sets);
        for (size_t k = 1; k < p.size(); ++k) s += " " + p[k];
        s += " 0 1 " + std::to_string(i + 1) + "\r\n";
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

// Ratings of a wide gorge: stage and width rise with discharge at every section.
std::string starsOut() {
    static const int q[] = {5000, 8000, 10000, 15000, 18000, 20000, 25000, 30000, 35000, 40000, 45000, 60000};
    std::string s = "MILE,DISCHARGE,STAGE,VELOCITY,WIDTH\r\n";
    for (double osdMile : {5.0, 15.0, 25.0, 35.0})
        for (int d : q) {
            const double stage = 1.5 * std::sqrt(d / 1000.0) + osdMile / 20;
            char row[128];
            std::snprintf(row, sizeof row, "%.2f,%d,%.3f,%.3f,%.1f\r\n", osdMile - 15.62, d, stage,
                          2 + d / 20000.0, 180 + 4 * stage);
            s += row;
        }
    return s;
}

std::string monthlyVolumes() {
    std::string s = "YR,MNTH,ACFT\r\n";
    for (int i = 1; i <= 600; ++i)
        s += std::to_string(48 + (i - 1) / 12) + "," + std::to_string((i - 1) % 12 + 1) + "," +
             std::to_string(600000 + 50000 * ((i - 1) % 12 % 5)) + "\r\n";
    return s;
}

// The scenario and experimental release files, written by the program's own writers.
void writeScenarios(const TestFolder& f) {
    Model m;
    BuildMonthsTable(m);
    ReadReachFile(m, f.File("Reaches.csv"));
    Physical& p = m.physical;
    for (int y = 48; y <= 148; ++y) p.DiurnalCode(y) = 1;
    for (int mo = 1; mo <= 12; ++mo) p.ExpTemp(mo) = 10;
    SaveExp(m, f.File("default.exp"));
    p.QAvgTable.redim(Bounds{0, 12}, Bounds{0, 6}, Bounds{0, m.main.NReaches});
    p.QDiTable.redim(Bounds{0, 2}, Bounds{0, 12}, Bounds{0, 6}, Bounds{0, m.main.NReaches}, Bounds{0, 24});
    p.StsTitle = "Test scenario";
    p.MaxFlowLimit = 31500;
    for (int L = 1; L <= 6; ++L) {
        p.VolLevel(L) = static_cast<float>(200000 * L);
        for (int mo = 1; mo <= 12; ++mo) {
            p.PowerVal(mo, L) = static_cast<float>(1000000 * L);
            for (int r = 2; r <= 3; ++r) {
                const float mean = static_cast<float>(3300 * L);
                p.QAvgTable(mo, L, r) = mean;
                for (int h = 1; h <= 24; ++h) {
                    const bool peak = h >= 8 && h <= 20;
                    p.QDiTable(1, mo, L, r, h) = mean * (peak ? 1.2f : 0.75f);
                    p.QDiTable(2, mo, L, r, h) = mean * 0.9f;
                }
            }
        }
    }
    WriteSts(m, f.File("noaction.sts"));
    WriteSts(m, f.File("steady.sts"));
    // A dam release carrying a little sediment, mostly fines.
    Sediment& sd = m.sediment;
    sd.OSDSSConc = 10;
    sd.PostOSDPropSand = 0.5f;
    sd.FullAdjustErode = true;
    sd.AngleOfRepose = 32;
    sd.AvgCMLengthInMiles = 0.1f;
    sd.ErodeRate = 0.01f;
    sd.WindErodeRate = 0.002f;
    const float dest[] = {0.1f, 0.05f, 0.3f};
    for (int z = 1; z <= 3; ++z) sd.SandDest(z) = dest[z - 1], sd.IniPropSliceFull(z) = 0.5f;
    sd.RelStoreHalfSat = 15000;
    sd.RelStoreSlope = 2;
    sd.BedThickMax = 2;
    sd.BedThickHalfSat = 30000;
    sd.BedThickSlope = 2;
    sd.CFSLowBeachLimit = 20000;
    sd.CFSHighBeachLimit = 45000;
    sd.BaseBeachRelFull = 0.5f;
    // Beaches of both run reaches offer up to 2.5, 5 and 7.5 campsites of the
    // three sizes as they fill.
    for (int r = 2; r <= 3; ++r)
        for (int k = 1; k <= 3; ++k) {
            sd.BeachMax(k, r) = static_cast<int16_t>(10);
            for (int i = 1; i <= 50; ++i) sd.BeachCurve(i, k, r) = 0.05f * static_cast<float>(i * k);
        }
    m.physical.HeatEx = 0.0001f;
    WritePhyFile(m, f.File("default.phy"));
}

// Production parameters: two vegetation types, three mortality points and one
// indicator population.
std::string production() {
    return "0.8 475 40 33.5 8.5\r\n"
           "2 0.06 0.01 3 0.1 0.25 0.5 0.8 0.3 2 3 20\r\n"
           "5 0.2 0.3 2 0.05 0.02 0.01 0.5 0.05\r\n"
           "3 0.5 1 500 0.8\r\n"
           "0.6 0.3 0.0005 0.05 0.5\r\n"
           "2 3 0.01\r\n"
           "\"Marsh\"\r\n-1 -1 0 0 0\r\n0.8 0.5 0 3 0.5 0.8\r\n1 0.4\r\n0.1 0.5 0.9\r\n"
           "\"Willow\"\r\n-1 -1 -1 0 0\r\n0.5 0.3 1 8 1 0.6\r\n0.5 1\r\n0.05 0.2 0.6\r\n"
           "1 1\r\n\"Detritus\"\r\n3 0.5 2 5 10 0 \"Snails\"\r\n100\r\n";
}

// Habitat blocks of the two run reaches: a length, then three classes of an
// index and 21 curve cells.
std::string tributaryHabitat() {
    std::string s = "2 3\r\n";
    for (int r = 2; r <= 3; ++r) {
        s += std::to_string(r) + "\r\n";
        for (int c = 1; c <= 3; ++c) {
            s += std::to_string(10 * c) + "\r\n";
            for (int i = 0; i <= 20; ++i) s += std::to_string(i * c) + "\r\n";
        }
    }
    return s;
}

// Two species: a trout whose risk grows with the stage range and that eats
// aquatic insects and the chub; a chub that eats Cladophora.
std::string populations() {
    std::string s = "2 20 6 3\r\nStage range\r\nArea\r\nCover\r\nTemperature\r\nSediment\r\n"
                    "Warm area\r\nJuveniles\r\nRisk\r\nGrowth\r\n";
    const char* heads[] = {
        "Rainbow trout\r\n2 0.6 1.2 0.7 3 0.55 0.35 5 False\r\n2000 0.1 0.2 0 0\r\n0.1 2 2 5 0\r\n0 0 0\r\n0.8 4\r\n",
        "Gorge chub\r\n1 0.35 0.55 0.8 4 0.8 0.45 8 False\r\n2500 0.05 0.3 0 0\r\n0.6 3 5 8 0.5\r\n0 0 0\r\n0.9 6\r\n"};
    for (int i = 0; i < 2; ++i) {
        s += heads[i];
        for (int mo = 1; mo <= 12; ++mo) s += "1\r\n";
        for (int hk = 1; hk <= 18; ++hk) {
            if (i == 0 && hk == 2) {  // stage range on the risk
                s += "-1\r\n5 4 2 10\r\n";
                for (int j = 1; j <= 20; ++j) s += std::to_string(0.5 + j * 0.05).substr(0, 4) + "\r\n";
            } else {
                s += "0\r\n";
            }
        }
        s += "2 100\r\n";
        for (int y = 1; y <= 100; ++y) s += "0\r\n";
    }
    return s + "1 3 0.6 0.1\r\n1 2 0.1 0.2\r\n2 5 0.4 0.05\r\n";
}

// Deposits, substrate and storage sheets: a few eddies and margins in each reach,
// one transect a reach, coarse volumes that shrink as the flow rises.
void writeMorphologySheets(const TestFolder& f) {
    f.Write("physical.xls/RC90.csv",
            "OSD_Mile,RCCHAR,Dep_Type,BE_Size\r\n2,NRC,R,L\r\n4,RC,S,M\r\n6,NRC,CM,\r\n"
            "25,NRC,R/CM,VS\r\n30,RC,CM/UP,\r\n");
    f.Write("physical.xls/Substrate.csv",
            "MaxQLevels,Discharge,OSD_Mile,Fines,Sand,Grav_Cob,Talus,Bedrock\r\n"
            "2,10000,5,10,40,30,10,10\r\n2,30000,5,0,20,40,20,20\r\n"
            "2,10000,30,20,30,30,10,10\r\n2,30000,30,10,10,40,20,20\r\n");
    f.Write("physical.xls/Eddy_Storage.csv",
            "Discharge,Vol_S,Vol_M,Vol_L\r\n0,0,0,0\r\n10000,1000,3000,9000\r\n"
            "30000,2500,8000,24000\r\n60000,3000,10000,30000\r\n");
    std::string pool = "Discharge,ReachNum,V_Coarse\r\n";
    for (int i = 1; i <= 12; ++i)
        for (int r = 2; r <= 3; ++r)
            pool += std::to_string(CoarseQ(i)) + "," + std::to_string(r) + "," +
                    std::to_string(2000000 * r - 10000 * i) + "\r\n";
    f.Write("physical.xls/MCPool_Storage.csv", pool);
    f.Write("physical.xls/TribAttributes.csv", "OSD_Mile,Basin_Area,TribName\r\n25,12.5,Little Wash\r\n");
    std::string spates = "cmonth,SpateNum\r\n";
    for (int i = 1; i <= 600; ++i) spates += std::to_string(i) + "," + std::to_string(i % 12 == 7 ? 1 : 0) + "\r\n";
    f.Write("physical.xls/SpateEvents.csv", spates);
}

// Angling parameters for the two run reaches, then one trip type of 10 days.
std::string recreation() {
    std::string s = "#FALSE#,0.5,2,1\r\n2,0.75\r\n3,0.25\r\n\"TotalMaxEffort\",1200\r\n";
    for (const char* mo : {"jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"})
        s += std::string("\"") + mo + "\",0.0625,1\r\n";
    s += "1,#TRUE#\r\n\"qMax\",1.2E-05\r\n\"AgeVul\",0.05,0.4,0.9\r\n2,#FALSE#\r\n";
    s += "RAFTING\r\n1\r\nTrip Type\r\nTest trip\r\nParties per year\r\n60\r\n"
         "Trip length (days)\r\n10\r\nPeople per party\r\n10\r\n"
         "Daily launch limit by month\r\n0,0,0,1,1,1,1,1,1,0,0,0\r\n"
         "Monthly preference weighting\r\n0,0,0,1,1,1,1,1,1,0,0,0\r\n"
         "Launches per day by month\r\n0,0,0,0.3333,0.3226,0.3333,0.3226,0.3226,0.3333,0,0,0\r\n"
         "People Per Camp\r\n12,S\r\n24,M\r\n40,L\r\n";
    return s;
}

// A full camp table of 127 camps between the gauge miles 0.29 and 22.97, sizes in
// turn, every preference different, none on a trip day's edge or a reach break.
std::string camps() {
    std::string s = "MILE,SIZE,PREF,INDEX\r\n";
    for (int c = 1; c <= 127; ++c)
        s += std::to_string(0.11 + 0.18 * c) + "," + "LMS"[c % 3] + "," + std::to_string(c * 37 % 127) + "," +
             std::to_string(c) + "\r\n";
    return s;
}

// The map layers: a centre-line of six vertices from mile 0 to mile 40, a lake, a
// tributary, the reach labels and an empty legend file.
void writeMapLayers(const TestFolder& f) {
    const std::string head =
        "Version 300\r\nCharset \"WindowsLatin1\"\r\nDelimiter \",\"\r\n"
        "CoordSys NonEarth Units \"mi\" Bounds (0, 0) (400, 400)\r\n";
    f.Write("ORRiv.mif", head + "Columns 2\r\n  ID Integer\r\n  RiverMile Float\r\nData\r\n\r\n"
                               "Point 10 50\r\n  Symbol (34,255,2)\r\nPoint 12 49\r\n  Symbol (34,255,2)\r\n"
                               "Point 20 45\r\n  Symbol (34,255,2)\r\nPoint 30 40\r\n  Symbol (34,255,2)\r\n"
                               "Point 40 30\r\n  Symbol (34,255,2)\r\nPoint 50 20\r\n  Symbol (34,255,2)\r\n");
    f.Write("ORRiv.mid", "1,0\r\n2,0.5\r\n3,10\r\n4,20.62\r\n5,30\r\n6,40\r\n");
    const std::string shapes = head + "Columns 1\r\n  Name Char(40)\r\nData\r\n\r\n";
    f.Write("Lakes.mif", shapes + "Region  1\r\n  4\r\n8 52\r\n12 52\r\n12 48\r\n8 48\r\n"
                                  "    Pen (1,2,0)\r\n    Brush (2,16777215,0)\r\n    Center 10 50\r\n");
    f.Write("tribs.mif", shapes + "Pline 2\r\n30 40\r\n35 55\r\n    Pen (1,2,0)\r\n");
    f.Write("Reachlabels.csv", "\"Mile\",\"Label\"\r\n2\r\n0,\"Dam\"\r\n20.62,\"Lower gorge\"\r\n");
    f.Write("model.mde", "0\r\n");
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
    writeScenarios(f);
    f.Write("default.rec", recreation());
    f.Write("physical.xls/CampingBeaches.csv", camps());
    f.Write("physical.xls/Economic.csv",
            "Month,Dol_Day_Ang,Dol_Com_Trp,Dol_Priv_Trp\r\n"
            "jan,50,1500,500\r\nfeb,50,1500,500\r\nmar,50,1500,500\r\napr,60,1600,520\r\n"
            "may,60,1600,520\r\njun,70,1700,540\r\njul,70,1700,540\r\naug,70,1700,540\r\n"
            "sep,60,1600,520\r\noct,60,1600,520\r\nnov,50,1500,500\r\ndec,50,1500,500\r\n");
    writeMapLayers(f);
    f.Write("CampingBeaches.csv", "\r\n");
    f.Write("default.trb", tributaryHabitat());
    f.Write("riverware.xls/Historical.csv", monthlyVolumes());
    f.Write("physical.xls/TribFlow.csv", "OSD_Mile,YR,MNTH,CMONTH,AVGQW,SandMGL,FineMGL\r\n10,48,1,1,0,0,0\r\n");
    f.Write("physical.xls/StarsOut.csv", starsOut());
    f.Write("physical.xls/Fans.csv", "OSD_Mile,TribName\r\n");
    f.Write("physical.xls/OSDEqTemp.csv",
            "OSDOut,EQUILIB\r\n8,4\r\n8,6\r\n8.5,9\r\n9,13\r\n9.5,17\r\n10,22\r\n"
            "10.5,26\r\n11,27\r\n11.5,23\r\n11,17\r\n10,11\r\n9,6\r\n");
    f.Write("physical.xls/MainTemp.csv",
            "OSD_Mile,YR,MNTH,AVGTEMP\r\n5,90,7,11.4\r\n5,90,8,12.5\r\n30,90,7,14.6\r\n");
    f.Write("physical.xls/Mainsed.csv",
            "OSD_Mile,YR,MONTH,AVGQ_CFS,AVGSSMGL\r\n1,55,5,40000,4000\r\n1,55,6,60000,6500\r\n");
    writeMorphologySheets(f);
    f.Write("default.bhp", production());
    f.Write("lower_production.xls/Benthos.csv",
            "USGS_Mile,YR,MNTH,DO,SECCHI,ALGAE,TOTMASM\r\n5,90,7,9.5,12,2.5,30\r\n");
    f.Write("lower_production.xls/Drift.csv",
            "USGS_Mile,YR,MNTH,DETRITUS,INVERTS,ALGAE\r\n5,90,7,0.4,0.1,0.3\r\n");
    f.Write("default.fis", populations());
    f.Write("population.xls/Lookup.csv", "SPCODE,ModelIndex\r\nRBT,1\r\nGCH,2\r\n");
    f.Write("population.xls/Pop_Halden_Broome.csv",
            "SPECIES,REACH,YR,STDCATCH\r\nGCH,2,90,0.5\r\nGCH,2,91,1.5\r\nGCH,3,90,3\r\n"
            "RBT,2,90,4\r\nRBT,3,90,1\r\nRBT,3,91,2\r\n");
    f.Write("population.xls/RBT_HF.csv", "YR,CPUE,ANGHR_1000,Catch\r\n90,1,60,60000\r\n91,3,90,150000\r\n");
}

}  // namespace osm::test
