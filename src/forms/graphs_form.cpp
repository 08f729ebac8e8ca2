#include "forms/graphs_form.h"

#include <QResizeEvent>

#include "core/model.h"
#include "forms/chart_export.h"
#include "forms/graph_legend_form.h"
#include "presentation/time_axis.h"
#include "presentation/time_series.h"
#include "presentation/view_layout.h"

namespace osm {

namespace {
constexpr int RedrawMs = 40;
}

GraphsForm::GraphsForm(Model& m, QWidget* parent) : QWidget(parent), m_(m) {
    setObjectName("frmGraphs");
    setWindowTitle(tr("Time Series Graphs"));
    for (int i = 1; i <= 6; ++i) {
        auto* box = new ChartBox(this);
        box->setObjectName(QStringLiteral("Graphs%1").arg(i));
        views_[static_cast<size_t>(i - 1)] = box;
        connect(box, &ChartBox::doubleClicked, this, [this, i] { showLegend(i); });
    }
    redraw_.setSingleShot(true);
    redraw_.setInterval(RedrawMs);
    connect(&redraw_, &QTimer::timeout, this, [this] {
        if (isVisible()) RefreshCharts();
    });
}

void GraphsForm::ChangeGraphs() {
    for (int i = 1; i <= 6; ++i) views_[static_cast<size_t>(i - 1)]->setVisible(m_.graphs.GraphSlot(i) != 0);
    layOut();
}

void GraphsForm::layOut() {
    std::vector<ChartBox*> shown;
    for (int i = 1; i <= 6; ++i)
        if (m_.graphs.GraphSlot(i) != 0) shown.push_back(views_[static_cast<size_t>(i - 1)]);
    const auto rects = TileViews(static_cast<int>(shown.size()), width(), height(), GraphAspect, ViewGap);
    for (size_t k = 0; k < shown.size(); ++k)
        shown[k]->setGeometry(QRectF(rects[k].x, rects[k].y, rects[k].w, rects[k].h).toRect());
}

void GraphsForm::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    layOut();
}

void GraphsForm::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    RefreshCharts();
}

void GraphsForm::chartsChanged() {
    if (!redraw_.isActive()) redraw_.start();
}

void GraphsForm::RefreshCharts() {
    redraw_.stop();
    for (int i = 1; i <= 6; ++i) {
        ChartState& c = Chart(charts_, i);
        if (!c.dirty) continue;
        views_[static_cast<size_t>(i - 1)]->Show(c);
        c.dirty = false;
    }
}

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

int GraphsForm::PointCount(int chart, int curve) const {
    if (chart < 1 || chart > 6) return 0;
    return Chart(charts_, chart).PointCount(curve);
}

ChartBox* GraphsForm::ChartView(int chart) const {
    return chart >= 1 && chart <= 6 ? views_[static_cast<size_t>(chart - 1)] : nullptr;
}

const ChartState& GraphsForm::State(int chart) const { return Chart(charts_, chart); }

void GraphsForm::showLegend(int chart) {
    m_.graphs.ClickedGraph = static_cast<int16_t>(chart);
    m_.graphs.ClickedKind = "time_series";
    if (!legend_) legend_ = new GraphLegendForm(m_, this);
    legend_->ShowKey();
    legend_->show();
    legend_->raise();
}

}  // namespace osm
