#pragma once
// frmTSGraphLeg: the key of the chart last double-clicked, one label and a line
// in the curve's colour for each data set of its variable.
#include <QWidget>

namespace osm {

struct Model;

class GraphLegendForm : public QWidget {
    Q_OBJECT
public:
    explicit GraphLegendForm(const Model& m, QWidget* parent = nullptr);
    // Fills the key for ClickedKind and ClickedGraph.
    void ShowKey();
    // The variable whose key is shown, 0 for none.
    int Variable() const { return var_; }
    int LabelCount() const;
    QString LabelText(int set) const;

private:
    const Model& m_;
    int var_ = 0;
};

}  // namespace osm
