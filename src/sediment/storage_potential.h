#pragma once
// Storage potential of eddies, channel margins and the main channel pool.
#include <cstdint>
#include <string>

namespace osm {

struct Model;

// Bulk density of stored sand, g/ft3.
inline constexpr double SandDensity = 48775;

// The fixed discharge levels of the coarse volume table, i 1..12, cfs.
int32_t CoarseQ(int i);
// Bed area of the main channel, ft2; known for reaches 2..12 only.
double ReachBedArea(int r);
// A fault unless every run reach has a bed area.
void CheckReachBedArea(const Model& m);

// The band of index stages below which slice s lies (the first b with
// s < IndexSlice(b, r)), 0 at or above the fourth.
int BandOfSlice(const Model& m, int s, int r);

// SandPot, BandPot, PoolPotRef and the beach base afresh; Reset also restarts
// the sand stores from their initial fullness.
void RecomputeStorage(Model& m, bool Reset);
// The main channel coarse volumes by discharge level and reach.
void ReadCoarseVolumes(Model& m, const std::string& path, const std::string& sheet);

}  // namespace osm
