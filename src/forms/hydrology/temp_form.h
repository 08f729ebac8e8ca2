#pragma once
// frmTemp, "Base and Experimental temperature for Ostrel Narrows outflows": the
// three monthly release temperature patterns, the experimental years and the
// heat exchange rate. OK/Exit takes them into the model.
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace osm {

struct Model;
class FieldCheck;

class TempForm : public QWidget {
    Q_OBJECT
public:
    explicit TempForm(Model& m, QWidget* parent = nullptr);

    // Toggles "X" in the selected cells of the year grid.
    void ToggleSelected();
    void cmdOK_Click();

    QTableWidget* gdT;
    QTableWidget* gdYear;
    QLineEdit* txHeatEx;
    QCheckBox* chkSave;
    QPushButton* cmdOK;
    QLabel* lbWhy;

private:
    Model& m_;
    FieldCheck* check_;
};

}  // namespace osm
