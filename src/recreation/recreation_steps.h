#pragma once
// Rafting launches and campsites, trout angling, the recreation file and the
// economic values: the routines that start-up and the run driver call.
#include <string>

#include "recreation/economic_values.h"
#include "recreation/rafting.h"
#include "recreation/recreation_file.h"

namespace osm {

struct Model;

void TroutAngling(Model& m, int iYear);

}  // namespace osm
