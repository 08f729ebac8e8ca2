#pragma once
// The run driver: calendar, month step, year step, spin-up and run control.
// It knows nothing of the user interface; it reports through a RunObserver and
// yields to it at the end of each month and inside the pause wait. Parameters and
// flags may change only at those points.
#include <string>

namespace osm {

struct Model;

class RunObserver {
public:
    virtual ~RunObserver() = default;
    // Year and month texts of the status form.
    virtual void ShowProgress(const std::string& /*year*/, const std::string& /*month*/) {}
    // Views of a run start: clear the graphs and reset their axes and time window;
    // set up the overlay curves; reset the profile view.
    virtual void ClearGraphs() {}
    virtual void SetupOverlayCurves() {}
    virtual void ResetProfiles() {}
    // Cross-section panels, redrawn only when open.
    virtual void HourlyPanel() {}
    virtual void VegetationPanel(int /*iMonth*/) {}
    virtual void SandVegetationPanel() {}
    // Views fed from the results store.
    virtual void UpdateGraphs(int /*iYear*/, int /*iMonth*/) {}
    virtual void UpdateMaps(int /*iYear*/, int /*iMonth*/) {}
    virtual void UpdateProfiles(int /*iYear*/, int /*iMonth*/) {}
    // The program pressed Pause at a year's end.
    virtual void PausedAtYearEnd() {}
    // Pending user events run here.
    virtual void Yield() {}
    // One wait of the pause loop (100 ms), after the events have run.
    virtual void PauseSleep();
};

// Calendar of month iMonth of run year iYear.
void SetCalendar(Model& m, int iYear, int iMonth);
// The year and month texts: CurYr while below 98, SimYr from then on.
void ShowProgress(Model& m, RunObserver& obs, int iMonth);

// Why a run of nYears from startYr cannot be made, "" when it can: the start a
// whole year 48..147 and the run ending by 147 (2047), where the input record
// runs out.
std::string RunYearsProblem(double startYr, double nYears);

// Everything a Start does before the run: flags, calendar, views, resets.
void PrepareRun(Model& m, RunObserver& obs, int startYr, int nYears);
void SpinUp(Model& m);
void RunModel(Model& m, RunObserver& obs);
// A Start: PrepareRun, the overlay slot, RunModel; StopRun is True afterwards.
void StartRun(Model& m, RunObserver& obs, int startYr, int nYears);

void WaitWhilePaused(Model& m, RunObserver& obs);
void AddOverlaySlot(Model& m);

// The month step and the year step, each call point in its order.
void MonthStep(Model& m, RunObserver& obs, int iYear, int iMonth);
void YearStep(Model& m, RunObserver& obs, int iYear);

}  // namespace osm
