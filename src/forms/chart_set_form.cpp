#include "forms/chart_set_form.h"

#include <QResizeEvent>
#include <QShowEvent>

#include <utility>
#include <vector>

#include "core/model.h"
#include "forms/chart_export.h"
#include "forms/graph_legend_form.h"
#include "presentation/view_layout.h"

namespace osm {

namespace {
constexpr int RedrawMs = 40;
}

ChartSetForm::ChartSetForm(Model& m, Table1<int16_t> Graphs::* slotTable, double aspect, const QString& namePrefix,
                           std::string legendKind, QWidget* parent)
    : QWidget(parent), m_(m), slotTable_(slotTable), aspect_(aspect), legendKind_(std::move(legendKind)) {
    for (int i = 1; i <= 6; ++i) {
        auto* box = new ChartBox(this);
        box->setObjectName(namePrefix + QString::number(i));
        views_[static_cast<size_t>(i - 1)] = box;
        connect(box, &ChartBox::doubleClicked, this, [this, i] { showLegend(i); });
    }
    redraw_.setSingleShot(true);
    redraw_.setInterval(RedrawMs);
    connect(&redraw_, &QTimer::timeout, this, [this] {
        if (isVisible()) RefreshCharts();
    });
}

bool ChartSetForm::chosen(int chart) const { return (m_.graphs.*slotTable_)(chart) != 0; }

void ChartSetForm::showChosenCharts() {
    for (int i = 1; i <= 6; ++i) views_[static_cast<size_t>(i - 1)]->setVisible(chosen(i));
    layOut();
}

void ChartSetForm::layOut() {
    std::vector<ChartBox*> shown;
    for (int i = 1; i <= 6; ++i)
        if (chosen(i)) shown.push_back(views_[static_cast<size_t>(i - 1)]);
    const auto rects = TileViews(static_cast<int>(shown.size()), width(), height(), aspect_, ViewGap);
    for (size_t k = 0; k < shown.size(); ++k)
        shown[k]->setGeometry(QRectF(rects[k].x, rects[k].y, rects[k].w, rects[k].h).toRect());
}

void ChartSetForm::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    layOut();
}

void ChartSetForm::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    RefreshCharts();
}

void ChartSetForm::chartsChanged() {
    if (!redraw_.isActive()) redraw_.start();
}

void ChartSetForm::RefreshCharts() {
    redraw_.stop();
    for (int i = 1; i <= 6; ++i) {
        ChartState& c = Chart(charts_, i);
        if (!c.dirty) continue;
        views_[static_cast<size_t>(i - 1)]->Show(c);
        c.dirty = false;
    }
}

int ChartSetForm::PointCount(int chart, int curve) const {
    if (chart < 1 || chart > 6) return 0;
    return Chart(charts_, chart).PointCount(curve);
}

ChartBox* ChartSetForm::ChartView(int chart) const {
    return chart >= 1 && chart <= 6 ? views_[static_cast<size_t>(chart - 1)] : nullptr;
}

const ChartState& ChartSetForm::State(int chart) const { return Chart(charts_, chart); }

void ChartSetForm::showLegend(int chart) {
    m_.graphs.ClickedGraph = static_cast<int16_t>(chart);
    m_.graphs.ClickedKind = legendKind_;
    if (!legend_) legend_ = new GraphLegendForm(m_, this);
    legend_->ShowKey(Chart(charts_, chart));
    legend_->show();
    legend_->raise();
}

}  // namespace osm
