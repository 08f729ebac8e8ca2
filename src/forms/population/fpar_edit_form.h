#pragma once
// FparEdit, "Animal Population Parameters": one column of boxes for each
// species, one row for each field of the species record, grouped as growth,
// survivals, reproduction, egg/juvenile predation and dispersal. A value typed
// goes straight into the species record and counts from the next step that
// reads it.
#include <QWidget>

#include <map>
#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace osm {

struct Model;

class FparEditForm : public QWidget {
    Q_OBJECT
public:
    explicit FparEditForm(Model& m, QWidget* parent = nullptr);

    // The box of a field ("alpha", "RcJuv", ..., "fname") for species i, or null.
    QLineEdit* Box(const QString& field, int i) const;
    // Shows the species of the model afresh (after a file is loaded).
    void ShowPars();

    QLabel* lbNote;

private:
    Model& m_;
    QWidget* grid_ = nullptr;
    QGridLayout* layout_ = nullptr;
    std::map<QString, std::vector<QLineEdit*>> boxes_;
};

}  // namespace osm
