#pragma once
// frmProfiles ("River Profiles"): up to six charts of one quantity along the
// river, every reach from the dam down, redrawn for the month in hand. A
// double-click shows the chart's key.
#include <QTimer>
#include <QWidget>

#include <array>

#include "presentation/chart_state.h"

namespace osm {

struct Model;
class ChartBox;
class GraphLegendForm;

class ProfilesForm : public QWidget {
    Q_OBJECT
public:
    explicit ProfilesForm(Model& m, QWidget* parent = nullptr);
    void SetupProfiles();
    void ResetProfiles();
    void UpdateProfiles(int iYear, int iMonth);
    void ReplotProfiles();
    int PointCount(int chart, int curve) const;

    // Shows and lays out the charts whose slot holds a variable.
    void ChangeProfiles();
    // Draws every changed chart now rather than at the next redraw tick.
    void RefreshCharts();
    ChartBox* ChartView(int chart) const;
    const ChartState& State(int chart) const;

protected:
    void resizeEvent(QResizeEvent* e) override;
    // A hidden form keeps its charts' changes and draws them when it shows.
    void showEvent(QShowEvent* e) override;

private:
    void layOut();
    void chartsChanged();
    void showLegend(int chart);

    Model& m_;
    ChartSet charts_;
    std::array<ChartBox*, 6> views_{};
    GraphLegendForm* legend_ = nullptr;
    QTimer redraw_;
};

}  // namespace osm
