#pragma once
// frmProfiles ("River Profiles"): up to six charts of one quantity along the
// river, every reach from the dam down, redrawn for the month in hand. A
// double-click shows the chart's key.
#include <QWidget>

#include "forms/chart_set_form.h"

namespace osm {

struct Model;

class ProfilesForm : public ChartSetForm {
    Q_OBJECT
public:
    explicit ProfilesForm(Model& m, QWidget* parent = nullptr);
    void SetupProfiles();
    void ResetProfiles();
    void UpdateProfiles(int iYear, int iMonth);
    void ReplotProfiles();

    // Shows and lays out the charts whose slot holds a variable.
    void ChangeProfiles();
};

}  // namespace osm
