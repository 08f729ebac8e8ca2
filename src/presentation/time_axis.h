#pragma once
// The time axis of the time-series graphs: how a window of years is divided into
// ticks, which year the window starts on, and the labels under the ticks.
#include <string>

#include "presentation/chart_state.h"

namespace osm {

struct Model;

struct TimeDivision {
    int ticks = 1;  // the largest of 15..1 that divides the window
    int step = 1;   // years between two ticks
};

// A window of 0 years (or fewer) divides by zero: a fault that says so.
TimeDivision DivideTimeWindow(int timeWindow);

// The year (two-digit count from 1900, before the fold at 100) under tick 0 of a
// chart of the given time scale.
int FirstYearShown(const Model& m, int timeScale);

// Ticks, point counts and labels of the six graphs.
void LabelTimeAxis(const Model& m, ChartSet& charts);

}  // namespace osm
