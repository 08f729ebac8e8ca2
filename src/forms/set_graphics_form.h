#pragma once
// frmSetGraphics, "Set Graphics": which views are on and what each chart, map
// and profile shows. Apply writes the choices into the graphics setup and asks
// the main window to rebuild the views.
#include <QDialog>

#include <array>
#include <vector>

#include "core/table.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace osm {

class EntryGuard;
struct Model;

class SetGraphicsForm : public QDialog {
    Q_OBJECT
public:
    explicit SetGraphicsForm(Model& m, QWidget* parent = nullptr);

    // The limit check of every row with a text in either box: a top less than
    // 0.0001 above the bottom is raised to that.
    void CheckLimits();
    void GetSelGraphs();
    void GetSelMap();
    void GetSelProf();
    // Why Apply cannot take the boxes as they stand (a box that is not a number
    // in its range, a Y max below its Y min), "" when it can.
    QString ApplyProblem() const;

    struct Slot {
        QComboBox* select = nullptr;
        QCheckBox* visible = nullptr;
        QLineEdit* yMin = nullptr;  // graphs and profiles only
        QLineEdit* yMax = nullptr;
    };

    QLineEdit* txTimeWindow;
    QLineEdit* txtProfMonth;
    std::array<QCheckBox*, 4> chkVisForms{};
    QCheckBox* chkSandBox;
    QCheckBox* chkPlotObsAvg;
    std::array<QCheckBox*, 3> chCXProfiles{};
    std::array<Slot, 6> graphSlots{};
    std::array<Slot, 6> mapSlots{};
    std::array<Slot, 6> profileSlots{};
    QRadioButton* opCampingBeaches;
    QRadioButton* opReachBreaks;
    QPushButton* btMatch;
    QPushButton* btApply;
    QLabel* lbNote;  // why an entry or an Apply was refused

signals:
    // The setup changed: the views are to be rebuilt and laid out again.
    void applied();

private:
    QWidget* slotPage(std::array<Slot, 6>& rows, bool limits, bool& edited);
    void loadSlots(std::array<Slot, 6>& rows, const Table1<int16_t>& slot, int kind);
    void btApply_Click();
    void btMatch_Click();

    Model& m_;
    bool graphsEdited_ = false, mapsEdited_ = false, profilesEdited_ = false;
    std::vector<EntryGuard*> guards_;
};

}  // namespace osm
