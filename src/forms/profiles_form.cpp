#include "forms/profiles_form.h"

#include <QResizeEvent>

#include "core/model.h"
#include "forms/chart_export.h"
#include "forms/graph_legend_form.h"
#include "presentation/profile_points.h"
#include "presentation/view_layout.h"

namespace osm {

namespace {
constexpr int RedrawMs = 40;
}

ProfilesForm::ProfilesForm(Model& m, QWidget* parent) : QWidget(parent), m_(m) {
    setObjectName("frmProfiles");
    setWindowTitle(tr("River Profiles"));
    for (int i = 1; i <= 6; ++i) {
        auto* box = new ChartBox(this);
        box->setObjectName(QStringLiteral("Profile%1").arg(i));
        views_[static_cast<size_t>(i - 1)] = box;
        connect(box, &ChartBox::doubleClicked, this, [this, i] { showLegend(i); });
    }
    redraw_.setSingleShot(true);
    redraw_.setInterval(RedrawMs);
    connect(&redraw_, &QTimer::timeout, this, [this] {
        if (isVisible()) RefreshCharts();
    });
}

void ProfilesForm::ChangeProfiles() {
    for (int i = 1; i <= 6; ++i) views_[static_cast<size_t>(i - 1)]->setVisible(m_.graphs.ProfSlot(i) != 0);
    layOut();
}

void ProfilesForm::layOut() {
    std::vector<ChartBox*> shown;
    for (int i = 1; i <= 6; ++i)
        if (m_.graphs.ProfSlot(i) != 0) shown.push_back(views_[static_cast<size_t>(i - 1)]);
    const auto rects = TileViews(static_cast<int>(shown.size()), width(), height(), ProfileAspect, ViewGap);
    for (size_t k = 0; k < shown.size(); ++k)
        shown[k]->setGeometry(QRectF(rects[k].x, rects[k].y, rects[k].w, rects[k].h).toRect());
}

void ProfilesForm::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    layOut();
}

void ProfilesForm::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    RefreshCharts();
}

void ProfilesForm::chartsChanged() {
    if (!redraw_.isActive()) redraw_.start();
}

void ProfilesForm::RefreshCharts() {
    redraw_.stop();
    for (int i = 1; i <= 6; ++i) {
        ChartState& c = Chart(charts_, i);
        if (!c.dirty) continue;
        views_[static_cast<size_t>(i - 1)]->Show(c);
        c.dirty = false;
    }
}

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

int ProfilesForm::PointCount(int chart, int curve) const {
    if (chart < 1 || chart > 6) return 0;
    return Chart(charts_, chart).PointCount(curve);
}

ChartBox* ProfilesForm::ChartView(int chart) const {
    return chart >= 1 && chart <= 6 ? views_[static_cast<size_t>(chart - 1)] : nullptr;
}

const ChartState& ProfilesForm::State(int chart) const { return Chart(charts_, chart); }

void ProfilesForm::showLegend(int chart) {
    m_.graphs.ClickedGraph = static_cast<int16_t>(chart);
    m_.graphs.ClickedKind = "ds_profile";
    if (!legend_) legend_ = new GraphLegendForm(m_, this);
    legend_->ShowKey();
    legend_->show();
    legend_->raise();
}

}  // namespace osm
