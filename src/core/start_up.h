#pragma once
// Start-up: constants, months table, paths, and the loading chain in its fixed
// order. A missing required file stops start-up with a fault that names it.
#include <map>
#include <string>

namespace osm {

struct Model;

struct StartOptions {
    std::string folder;     // the program folder
    bool physOnly = false;  // the physical model only
    // Default files replaced by others, by kind: "grs", "phy", "bhp", "fis",
    // "rec", "trb", "exp", "reach-breaks".
    std::map<std::string, std::string> files;
};

void StartUp(Model& m, const StartOptions& options);

// The text of start_message.txt: its lines joined with nothing between them.
std::string StartMessage(const std::string& folder);

// The months table and the slice constants.
void BuildMonthsTable(Model& m);

// Reads the Reach Breaks file and every reach-keyed table behind it.
void LoadReachData(Model& m, const std::string& reachFile);
// Takes a new Reach Breaks file: reloads the map layers and all reach data and
// rebuilds the stage tables. An empty name does nothing; a failure changes nothing.
void NewReachBreaks(Model& m, const std::string& reachFile);

// A required input file (or workbook) that is missing is a fault naming it.
void RequireFile(const std::string& path);

}  // namespace osm
