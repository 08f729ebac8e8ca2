#pragma once
// HatchMan, "Set Hatchery Stocking Policy": for each species the equilibrium
// age-1 recruits of its present parameters, and the age-1 fish added each year
// of the run from a first to a last year. Opening it puts every population back
// on its equilibrium, so that the base shown is that of the parameters in force.
#include <QWidget>

#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace osm {

struct Model;

class HatcheryForm : public QWidget {
    Q_OBJECT
public:
    explicit HatcheryForm(Model& m, QWidget* parent = nullptr);

    // Shows the species of the model afresh (after a file is loaded).
    void ShowPars();

    // Control arrays by species, 1-based through At().
    std::vector<QLineEdit*> basejuv, fert, fertyr1, fertyr2;
    static QLineEdit* At(const std::vector<QLineEdit*>& boxes, int i) { return boxes.at(i - 1); }
    QLabel* lbNote;

private:
    Model& m_;
    QWidget* rows_;
    QGridLayout* layout_;
};

}  // namespace osm
