#pragma once
// fishing, "Edit harvest mortality rates over time": for each species its
// harvest rate in each year of the run (a column of the grid) and the minimum
// age taken. Every change goes straight into the species record.
#include <QWidget>

#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace osm {

struct Model;
class FieldCheck;

class HarvestForm : public QWidget {
    Q_OBJECT
public:
    explicit HarvestForm(Model& m, QWidget* parent = nullptr);

    // Shows the species of the model afresh (after a file is loaded).
    void ShowPars();

    QTableWidget* gdHarvest;        // row y - 1: year y of the run; column i - 1: species i
    std::vector<QLineEdit*> agef;   // by species, 1-based through At()
    static QLineEdit* At(const std::vector<QLineEdit*>& v, int i) { return v.at(static_cast<size_t>(i - 1)); }
    QPushButton* Command1;
    QLabel* lbNote;

private:
    Model& m_;
    FieldCheck* cells_;
    QWidget* ages_;
    QGridLayout* agesLayout_;
};

}  // namespace osm
