#pragma once
// The recreation file (.rec): the angling parameters, then after the line
// "RAFTING" the rafting policy.
#include <string>

namespace osm {

struct Model;
struct Rec;

// Allocates the trip tables for `n` trip types, all zero.
void AllocateTripTables(Rec& rc, int n);
// The three trip types the program starts with.
void AllocateTripTypes(Model& m);

// The rafting policy: skips to the line "RAFTING" and reads the trip types. An
// empty name does nothing; a bad file changes nothing.
void ReadRafting(Model& m, const std::string& path);
// The angling parameters of the first section, for the reaches and species in
// force. An empty name does nothing; a bad file changes nothing.
void ReadAnglingPars(Model& m, const std::string& path);
// Both sections; an empty name does nothing.
void WriteRecFile(const Model& m, const std::string& path);

}  // namespace osm
