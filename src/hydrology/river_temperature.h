#pragma once
// Water temperature by reach: the release, then mixing with tributaries and
// exchange with the equilibrium temperature on the way down.
#include <string>

namespace osm {

struct Model;

// The month's WaterTemp of every run reach; WaterTemp(1) is the release. A run
// reach with no flow is a fault naming year, month and reach (the temperature
// divides by the flow).
void RiverTemperature(Model& m, int month);
// BaseTemp and EqTemp from columns "OSDOut" and "EQUILIB", one row a month from
// January. Months without a row keep their values; a thirteenth row is a fault.
// A failed load changes nothing.
void LoadTempPatterns(Model& m, const std::string& sheet, const std::string& workbook);
// ObsTemp from the observed series (columns "OSD_Mile", "YR", "MNTH", "AVGTEMP"),
// each reading rounded to a whole degree; ObsTemp(0, r) is the reach's mean.
// ObsTempSeen marks the cells a reading set, so a month without one is told from
// a reading of 0. A failed load changes nothing.
void LoadObsTemp(Model& m, const std::string& sheet, const std::string& workbook);
// Writes BaseTemp and EqTemp of months 1..12 back into the sheet's "OSDOut" and
// "EQUILIB" columns, leaving every other cell; a legacy .xls is a fault.
void SaveTempData(const Model& m, const std::string& sheet, const std::string& workbook);

}  // namespace osm
