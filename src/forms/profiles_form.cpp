#include "forms/profiles_form.h"

#include "core/model.h"
#include "presentation/profile_points.h"
#include "presentation/view_layout.h"

namespace osm {

ProfilesForm::ProfilesForm(Model& m, QWidget* parent)
    : ChartSetForm(m, &Graphs::ProfSlot, ProfileAspect, QStringLiteral("Profile"), "ds_profile", parent) {
    setObjectName("frmProfiles");
    setWindowTitle(tr("River Profiles"));
}

void ProfilesForm::ChangeProfiles() { showChosenCharts(); }

void ProfilesForm::SetupProfiles() {
    ChangeProfiles();
    osm::SetupProfiles(m_, charts_);
    chartsChanged();
}

void ProfilesForm::ResetProfiles() {
    for (auto& c : charts_) c.Clear();
    osm::SetupProfiles(m_, charts_);
    chartsChanged();
}

void ProfilesForm::UpdateProfiles(int iYear, int iMonth) {
    osm::UpdateProfiles(m_, charts_, iYear, iMonth);
    chartsChanged();
}

void ProfilesForm::ReplotProfiles() {
    osm::ReplotProfiles(m_, charts_);
    chartsChanged();
}

}  // namespace osm
