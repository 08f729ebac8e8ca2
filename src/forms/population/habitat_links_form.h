#pragma once
// Fishhabe, "Edit anmal habitat dependencies": for one species at a time, a
// panel for each habitat variable and effect, showing whether the variable acts
// on the effect and the right end of the link's axis; the chosen link's 20-cell
// curve and axis scale in a grid, with its index week, duration and reach;
// beside them the vulnerability by month of life, the calendar month of age 1
// and the habitat-only flag. Every change goes straight into the species record.
#include <QWidget>

#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QToolButton;

namespace osm {

struct Model;
class FieldCheck;

// One variable on one effect.
struct HabPanel {
    QToolButton* title;  // chooses the panel for the grid and the index boxes
    QLabel* baseval;     // right end of the axis, or "n.a."
    QPushButton* Patternclear;
};

class HabitatLinksForm : public QWidget {
    Q_OBJECT
public:
    explicit HabitatLinksForm(Model& m, QWidget* parent = nullptr);

    // Shows the species of the model afresh (after a file is loaded).
    void ShowPars();
    // Shows species i (0: none) in every panel.
    void RefreshData(int i);
    // The panel (0..17) whose curve, scale and index boxes are shown.
    void SelectPanel(int j);
    int Species() const { return species_; }
    int Panel() const { return panel_; }

    QComboBox* cbSpecies;
    std::vector<HabPanel> panels;  // by panel number 0..17
    QTableWidget* gdCurve;         // the chosen link's cells 1..20
    QLineEdit* txScale;            // its axis scale, a cell number
    QLineEdit* setwhen;
    QLineEdit* dur;
    QLineEdit* setwhere;
    QTableWidget* gdVulTime;       // vulnerability by month of life 1..12
    QLineEdit* breedtime;
    QCheckBox* SetHabFlag;
    QLabel* lbPanel;
    QPushButton* ex;
    QLabel* lbNote;

private:
    HabPanel makePanel(int j);
    void showPanel(int j);
    void showChosenLink();
    Model& m_;
    FieldCheck* cells_;
    int species_ = 0;
    int panel_ = 0;
};

}  // namespace osm
