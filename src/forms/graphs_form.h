#pragma once
// frmGraphs: up to six time-series charts of the index reach, fed month by month
// during a run and rebuilt from the results store on a change of reach, slot or
// setup. A double-click shows the chart's key.
#include <QWidget>

#include "forms/chart_set_form.h"

namespace osm {

struct Model;

class GraphsForm : public ChartSetForm {
    Q_OBJECT
public:
    explicit GraphsForm(Model& m, QWidget* parent = nullptr);
    void SetupGraphs();                      // after start-up and after a setup change (ChangeGraphs)
    void ClearGraphs();                      // a run starts (RunObserver::ClearGraphs)
    void SetupOverlayCurves();               // an overlaid run starts
    void UpdateGraphs(int iYear, int iMonth);
    void ReplotGraphs();                     // the reach, a slot or the setup changed

    // Shows and lays out the charts whose slot holds a variable.
    void ChangeGraphs();
};

}  // namespace osm
