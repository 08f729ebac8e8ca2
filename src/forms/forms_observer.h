#pragma once
// The run observer of the desktop program: progress on the status form, the
// views fed each month while they are on, and the driver's yields served by the
// Qt event loop. The driver runs on the GUI thread, so user events, and with them
// every change of a parameter or flag, happen only at those yields.
#include "core/run_driver.h"

namespace osm {

class GraphsForm;
class MapsForm;
class ProfilesForm;
class StatusForm;

class FormsRunObserver : public RunObserver {
public:
    void SetStatus(StatusForm* status) { status_ = status; }
    // The views, and whether each is on; a view that is off is not fed.
    void SetViews(GraphsForm* graphs, bool graphsOn, ProfilesForm* profiles, bool profilesOn);

    void ShowProgress(const std::string& year, const std::string& month) override;
    void ClearGraphs() override;
    void SetupOverlayCurves() override;
    void ResetProfiles() override;
    // The maps form while it is on, else null.
    void SetMaps(MapsForm* maps) { maps_ = maps; }
    void UpdateGraphs(int iYear, int iMonth) override;
    void UpdateMaps(int iYear, int iMonth) override;
    void UpdateProfiles(int iYear, int iMonth) override;
    void PausedAtYearEnd() override;
    void Yield() override;
    // The pause wait serves events while it waits, so the window stays alive.
    void PauseSleep() override;

private:
    StatusForm* status_ = nullptr;
    GraphsForm* graphs_ = nullptr;
    ProfilesForm* profiles_ = nullptr;
    MapsForm* maps_ = nullptr;
};

}  // namespace osm
