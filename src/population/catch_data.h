#pragma once
// The observed population data of population.xls: the standardised catch by
// species, reach and year, and the rainbow trout series at the first reach.
#include <string>

namespace osm {

struct Model;

// The standardised catch survey sheet of population.xls.
inline constexpr const char* CatchSurveySheet = "Pop_Halden_Broome$";

// Sheet `sheet` (the catch survey) with the species codes of Lookup$, neither
// empty: each record sets CatchIndex(i, REACH, YR); slot 47 becomes the mean
// over the years yrFirst..yrLast (a record of year 47 adds to the sum without a
// count).
void ReadCatchData(Model& m, const std::string& path, const std::string& sheet, int yrFirst,
                   int yrLast);
// Sheet `sheet` (RBT_HF$): CPUE, angler days and catch at the first reach, and
// the other reaches' catch index of the rainbow trout rescaled to CPUE units.
void ReadRainbowData(Model& m, const std::string& path, const std::string& sheet, int yrFirst,
                     int yrLast);

}  // namespace osm
