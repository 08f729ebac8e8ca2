#pragma once
// frmGraphs: up to six time-series charts of the index reach, fed month by month
// during a run and rebuilt from the results store on a change of reach, slot or
// setup. A double-click shows the chart's key.
#include <QTimer>
#include <QWidget>

#include <array>

#include "presentation/chart_state.h"

namespace osm {

struct Model;
class ChartBox;
class GraphLegendForm;

class GraphsForm : public QWidget {
    Q_OBJECT
public:
    explicit GraphsForm(Model& m, QWidget* parent = nullptr);
    void SetupGraphs();                      // after start-up and after a setup change (ChangeGraphs)
    void ClearGraphs();                      // a run starts (RunObserver::ClearGraphs)
    void SetupOverlayCurves();               // an overlaid run starts
    void UpdateGraphs(int iYear, int iMonth);
    void ReplotGraphs();                     // the reach, a slot or the setup changed
    int PointCount(int chart, int curve) const;  // for tests: points on a curve (chart 1..6, curve from 0)

    // Shows and lays out the charts whose slot holds a variable.
    void ChangeGraphs();
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
    // Charts are drawn at most every few tens of milliseconds: a run feeds them
    // much faster than anyone can read them.
    QTimer redraw_;
};

}  // namespace osm
