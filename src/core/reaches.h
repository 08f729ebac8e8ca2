#pragma once
// The chain of reaches from the Reach Breaks file, and the allocation of every
// reach-keyed table of every module.
#include <array>
#include <string>
#include <vector>

namespace osm {

struct Model;

// Reads a Reach Breaks file: line 1 a text and NReaches, FirstReach, LastReach;
// line 2 four heads; then one row a reach: number, label, upstream and downstream
// mile. Allocates all reach-keyed tables. A bad file changes nothing.
void ReadReachFile(Model& m, const std::string& path);

// The first reach with ReachMile(r,0) <= mile < ReachMile(r,1), or 0.
int ReachOfMile(const Model& m, double mile);
// The same with the downstream mile included, as the morphology sheets and the
// campsites look reaches up.
int ReachOfMileInclusive(const Model& m, double mile);

// Discards and allocates every table keyed by reach, for all submodels.
void AllocateReachArrays(Model& m);

// The texts of the reach list: "1 / label / DS_RM = 12" from FirstReach on.
std::vector<std::string> FillReachList(const Model& m);

// What the status form shows after a reach file is read.
struct StatusReachList {
    std::vector<std::string> reaches;
    std::array<std::string, 4> indexStages;
};
StatusReachList SetStatusReachList(const Model& m);

}  // namespace osm
