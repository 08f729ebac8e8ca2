#pragma once
// The downstream profiles: one x position for about each mile of river, each
// reach drawn as a flat-topped block closed by a zero.
#include <vector>

#include "presentation/chart_state.h"

namespace osm {

struct Model;

// x positions across a profile: the river's miles from the first reach's top to
// the last reach's foot, whole.
int ProfilePointCount(const Model& m);
// Value points of reach r before its closing zero: |Int(length) - 1|, so a reach
// under a mile still gets one.
int ReachValuePoints(const Model& m, int r);

// The river mile of each point place of a profile: a reach's value points
// spread from its top to its foot, and its closing zero at the foot.
std::vector<double> ProfileMiles(const Model& m);
void SetupProfiles(const Model& m, ChartSet& charts);
void LabelMileAxis(const Model& m, ChartSet& charts);
// The month's profiles when their variable's time scale is due.
void UpdateProfiles(const Model& m, ChartSet& charts, int iYear, int iMonth);
// The profiles of the month in hand whatever the time scale, a yearly variable
// at the first month of the run year.
void ReplotProfiles(const Model& m, ChartSet& charts);

}  // namespace osm
