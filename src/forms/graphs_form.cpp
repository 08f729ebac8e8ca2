#include "forms/graphs_form.h"

#include "core/model.h"
#include "presentation/time_axis.h"
#include "presentation/time_series.h"
#include "presentation/view_layout.h"

namespace osm {

GraphsForm::GraphsForm(Model& m, QWidget* parent)
    : ChartSetForm(m, &Graphs::GraphSlot, GraphAspect, QStringLiteral("Graphs"), "time_series", parent) {
    setObjectName("frmGraphs");
    setWindowTitle(tr("Time Series Graphs"));
}

void GraphsForm::ChangeGraphs() { showChosenCharts(); }

void GraphsForm::SetupGraphs() {
    ChangeGraphs();
    osm::SetupGraphs(m_, charts_);
    LabelTimeAxis(m_, charts_);
    chartsChanged();
}

void GraphsForm::ClearGraphs() {
    osm::ClearGraphs(charts_);
    osm::SetupGraphs(m_, charts_);
    LabelTimeAxis(m_, charts_);
    chartsChanged();
}

void GraphsForm::SetupOverlayCurves() {
    osm::SetupGraphs(m_, charts_);
    chartsChanged();
}

void GraphsForm::UpdateGraphs(int iYear, int iMonth) {
    // A run clears the charts before it sets its calendar; its first month
    // labels the window for the run's own years.
    if (m_.main.CumMonth == 1 && m_.graphs.VisForms(1) != 0) LabelTimeAxis(m_, charts_);
    osm::UpdateGraphs(m_, charts_, iYear, iMonth);
    chartsChanged();
}

void GraphsForm::ReplotGraphs() {
    osm::ReplotGraphs(m_, charts_);
    chartsChanged();
}

}  // namespace osm
