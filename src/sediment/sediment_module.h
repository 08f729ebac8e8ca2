#pragma once
// Module Sediment: the sand budget and the storage potential.
#include <cstdint>

#include "core/table.h"

namespace osm {

struct Sediment {
    // Sediment of the dam's release (physical parameter file).
    float OSDSSConc = 0;        // mg/l in the dam era
    float PreOSDPropSand = 0;   // sand share of the record before the dam
    float PostOSDPropSand = 0;  // sand share of the dam's release
    bool HistOSDSSConc = false; // before 1963 the release is the river's own record

    // Sand budget and storage parameters (physical parameter file).
    bool FullAdjustErode = false;
    float AngleOfRepose = 0, AvgCMLengthInMiles = 0, ErodeRate = 0, WindErodeRate = 0;
    Table1<float> SandDest{"SandDest"};                  // z 1..3
    Table1<float> IniPropSliceFull{"IniPropSliceFull"};  // z 1..3
    float RelStoreHalfSat = 0, RelStoreSlope = 0;
    float BedThickMax = 0, BedThickHalfSat = 0, BedThickSlope = 0;
    int32_t CFSLowBeachLimit = 0, CFSHighBeachLimit = 0;
    float BaseBeachRelFull = 0;
    Table2<int16_t> BeachMax{"BeachMax"};      // (k 1..3, run reach)
    Table3<float> BeachCurve{"BeachCurve"};    // (i 0..50, k 1..3, run reach); point 0 reads 0

    Table3<float> SandStore{"SandStore"};    // (s 0..NSlices, run reach, z 1..3), g; the pool at s 0
    Table2<float> ZoneSand{"ZoneSand"};      // (run reach, z 1..3), g
    Table2<float> ReachConc{"ReachConc"};    // (r 1..NReaches, k 0..2), g/ft3
    Table3<float> BandSand{"BandSand"};      // (b 1..4, run reach, z 1..2), g
    Table1<float> SandBalance{"SandBalance"};  // run reach
    Table3<float> BandPot{"BandPot"};        // (b 1..4, run reach, z 1..2), g
    Table1<float> PoolPotRef{"PoolPotRef"};  // run reach, g
    // Potential of each slice (z 1, 2) or of the whole pool up to the slice (z 3).
    Table3<float> SandPot{"SandPot"};        // (s 0..NSlices, run reach, z 1..3), g; row 0 stays 0
    Table2<float> CoarseVol{"CoarseVol"};    // (discharge level 1..12, r), ft3 of the main channel

    // Beach stage range and the eddy sand of its base condition.
    Table1<int16_t> BeachLowSlice{"BeachLowSlice"};    // run reach
    Table1<int16_t> BeachHighSlice{"BeachHighSlice"};  // run reach
    Table1<float> BeachBasePot{"BeachBasePot"};        // run reach, g
};

}  // namespace osm
