#include "forms/forms_observer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "forms/graphs_form.h"
#include "forms/maps_form.h"
#include "forms/profiles_form.h"
#include "forms/status_form.h"

namespace osm {

void FormsRunObserver::ShowProgress(const std::string& year, const std::string& month) {
    if (status_) status_->ShowProgress(QString::fromStdString(year), QString::fromStdString(month));
}

void FormsRunObserver::SetViews(GraphsForm* graphs, bool graphsOn, ProfilesForm* profiles, bool profilesOn) {
    graphs_ = graphsOn ? graphs : nullptr;
    profiles_ = profilesOn ? profiles : nullptr;
}

void FormsRunObserver::ClearGraphs() {
    if (graphs_) graphs_->ClearGraphs();
}

void FormsRunObserver::SetupOverlayCurves() {
    if (graphs_) graphs_->SetupOverlayCurves();
}

void FormsRunObserver::ResetProfiles() {
    if (profiles_) profiles_->ResetProfiles();
}

void FormsRunObserver::UpdateGraphs(int iYear, int iMonth) {
    if (graphs_) graphs_->UpdateGraphs(iYear, iMonth);
}

void FormsRunObserver::UpdateMaps(int, int) {
    if (maps_) maps_->UpdateMaps();
}

void FormsRunObserver::UpdateProfiles(int iYear, int iMonth) {
    if (profiles_) profiles_->UpdateProfiles(iYear, iMonth);
}

void FormsRunObserver::PausedAtYearEnd() {
    if (status_) status_->PausedAtYearEnd();
}

void FormsRunObserver::Yield() { QCoreApplication::processEvents(); }

void FormsRunObserver::PauseSleep() {
    QEventLoop wait;
    QTimer::singleShot(100, &wait, &QEventLoop::quit);
    wait.exec();
}

}  // namespace osm
