#pragma once
// frmLegEd ("Legend Editor"): edits the colour legends of the maps, continuous
// (limits of the colour ramp) or categorical (breakpoints and colours), and saves
// them to model.mde. Cancel restores the legends the form opened with.
#include <QDialog>

#include <array>
#include <functional>
#include <vector>

#include "forms/entry_guard.h"
#include "presentation/vectormap_module.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace osm {

struct Model;

class LegendEditorForm : public QDialog {
    Q_OBJECT
public:
    // `redraw` repaints the maps after an apply.
    LegendEditorForm(Model& m, std::function<void()> redraw, QWidget* parent = nullptr);

    // Shows legend number `index` + 1.
    void ShowLegend(int index);
    void UpdateScale(bool readLimits);
    // "Apply / Save"; false, with the reason beside the boxes, while a box holds
    // what it cannot take, or when the save failed.
    bool Apply();
    void Cancel();
    void FindMinMax();  // "Find Min Max For Current Map"
    void PickColour(int paletteBox);      // a box of the palette
    void SetCategoryColour(int category);  // a category's colour box takes the picked colour

    QComboBox* MapList() const { return mapList_; }
    QRadioButton* Scale(int member) const { return optScale_[static_cast<size_t>(member)]; }
    QLineEdit* Categories() const { return txtMaxMapCat_; }
    QLineEdit* Lower() const { return txLower_; }
    QLineEdit* Upper() const { return txUpper_; }
    QLineEdit* ContMin() const { return txtContMin_; }
    QLineEdit* ContMax() const { return txtContMax_; }
    QLineEdit* Breakpoint(int k) const { return txTo_[static_cast<size_t>(k - 1)]; }
    QLabel* CategoryColour(int k) const { return capCol_[static_cast<size_t>(k - 1)]; }
    QLabel* Note() const { return note_; }

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    LegendRec& current();
    void getEdits();
    void upDateLeg();
    void showContinuous();
    void showCategorical();
    void setBox(QLabel* box, int32_t colour);
    void guard(QLineEdit* box, EntryCheck check);
    // Every box checked now; a bad text goes back to the last good one.
    bool settleAll();

    Model& m_;
    std::function<void()> redraw_;
    std::vector<LegendRec> backup_;
    int legIdx_ = 0;
    bool edited_ = false;
    int32_t curColour_ = 0;
    QComboBox* mapList_;
    std::array<QRadioButton*, 2> optScale_{};
    QGroupBox* frCont_;
    QGroupBox* frCat_;
    QGroupBox* frColor_;
    QLineEdit* txtContMin_;
    QLineEdit* txtContMax_;
    QLabel* picContScale_;
    QLineEdit* txtMaxMapCat_;
    QLineEdit* txLower_;
    QLineEdit* txUpper_;
    std::array<QLineEdit*, 10> txTo_{};
    std::array<QLabel*, 10> capCol_{};
    std::array<QLabel*, 15> capColor_{};
    QLabel* note_;
    std::vector<EntryGuard*> guards_;
};

}  // namespace osm
