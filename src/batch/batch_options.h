#pragma once
// The command line of osm-batch.
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace osm::batch {

struct Options {
    std::string folder;
    bool physOnly = false;
    std::optional<int> startYear;
    std::optional<int> years;
    bool overlay = false;
    std::string dumpFile;
    std::string csvFile;
    std::string netcdfFile;
    std::optional<std::vector<int>> vars;     // graph-table rows, from 0
    std::optional<std::vector<int>> reaches;  // reach numbers
    std::map<std::string, std::string> files;  // replaced default files by kind
    std::string policyFile;                    // a release policy applied before the run
    bool listVars = false;
    // The process-hydro command: a new scenario file from another's flow limits.
    bool processHydro = false;
    std::string hydroFrom, hydroOut, hydroTitle;
    bool help = false;
    // Many runs: "compare" (scenarios, the first the base) or "ensemble" (a spec).
    std::string command;
    std::vector<std::string> scenarios;
    std::string specFile;
    std::string outDir = ".";
    int jobs = 0;  // 0: one per core
};

// Parses argv; a bad command line throws UsageError with the reason.
struct UsageError {
    std::string text;
};
Options ParseOptions(int argc, char** argv, const std::string& defaultFolder);
std::string UsageText();

}  // namespace osm::batch
