#pragma once
// Tributary flow and sediment, spates, substrate, deposits and tributary habitat.
#include <string>

#include "sediment/tributary_habitat_file.h"

namespace osm {

struct Model;

void ReadTribFlow(Model& m, const std::string& workbook, const std::string& sheet);
// The running sum down the river: TribFlow(month, r) = TribQ(month, r) +
// TribFlow(month, r - 1), months 1..lastMonth.
void BuildTribFlow(Model& m, int lastMonth);
void ReadSpateEvents(Model& m, const std::string& workbook, const std::string& sheet);
void ReadRC90(Model& m, const std::string& workbook, const std::string& sheet);
void ReadSubstrate(Model& m, const std::string& workbook, const std::string& sheet);
void ReadFans(Model& m, const std::string& workbook, const std::string& sheet);
void ReadTribAttributes(Model& m, const std::string& workbook, const std::string& sheet);

}  // namespace osm
