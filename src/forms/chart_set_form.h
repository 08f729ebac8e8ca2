#pragma once
// What the graphs and the profiles forms have in common: six charts, of which
// those whose slot holds a variable are shown and tiled, drawn from six
// ChartStates at most every few tens of milliseconds, each showing its key on
// a double-click. The derived form fills the states.
#include <QString>
#include <QTimer>
#include <QWidget>

#include <array>
#include <cstdint>
#include <string>

#include "core/table.h"
#include "presentation/chart_state.h"
#include "presentation/graphs_module.h"

namespace osm {

struct Model;
class ChartBox;
class GraphLegendForm;

class ChartSetForm : public QWidget {
    Q_OBJECT
public:
    // Draws every changed chart now rather than at the next redraw tick.
    void RefreshCharts();
    int PointCount(int chart, int curve) const;  // for tests: points on a curve (chart 1..6, curve from 0)
    ChartBox* ChartView(int chart) const;
    const ChartState& State(int chart) const;

protected:
    // The form's chart boxes are named namePrefix1..namePrefix6; the slot table
    // chooses which are shown, and the key's kind tells the legend which set of
    // charts the clicked one belongs to.
    ChartSetForm(Model& m, Table1<int16_t> Graphs::* slotTable, double aspect, const QString& namePrefix,
                 std::string legendKind, QWidget* parent);

    // Shows and lays out the charts whose slot holds a variable.
    void showChosenCharts();
    // Asks for a redraw at the next tick; the states changed.
    void chartsChanged();

    void resizeEvent(QResizeEvent* e) override;
    // A hidden form keeps its charts' changes and draws them when it shows.
    void showEvent(QShowEvent* e) override;

    Model& m_;
    ChartSet charts_;

private:
    bool chosen(int chart) const;
    void layOut();
    void showLegend(int chart);

    Table1<int16_t> Graphs::* slotTable_;
    double aspect_;
    std::string legendKind_;
    std::array<ChartBox*, 6> views_{};
    GraphLegendForm* legend_ = nullptr;
    // Charts are drawn at most every few tens of milliseconds: a run feeds them
    // much faster than anyone can read them.
    QTimer redraw_;
};

}  // namespace osm
