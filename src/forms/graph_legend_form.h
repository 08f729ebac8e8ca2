#pragma once
// frmTSGraphLeg: the key of the chart last double-clicked. One row for each curve
// as it is drawn: a sample of its line or marks, and its data set's label with
// the run it comes from, named by that run's scenario.
#include <QWidget>

namespace osm {

struct ChartState;
struct Model;

class GraphLegendForm : public QWidget {
    Q_OBJECT
public:
    explicit GraphLegendForm(const Model& m, QWidget* parent = nullptr);
    // Fills the key for ClickedKind and ClickedGraph, whose curves `chart` holds.
    void ShowKey(const ChartState& chart);
    // The variable whose key is shown, 0 for none.
    int Variable() const { return var_; }
    int LabelCount() const { return rows_; }
    // The text of the key's row for curve 0.. of the chart.
    QString LabelText(int curve) const;

private:
    void clearRows();

    const Model& m_;
    int var_ = 0;
    int rows_ = 0;
};

}  // namespace osm
