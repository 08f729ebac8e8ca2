#pragma once
// frmPred, "Trophic Impact Linkages": predators in one column, prey in the
// other, every link a coloured line between them. Choosing a predator and a
// prey shows their link's proportions; typing one above 0 for a pair with no
// link makes one; "Remove link" deletes it.
#include <QColor>
#include <QWidget>

#include <map>
#include <memory>
#include <utility>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace osm {

struct Model;
class LinkEditor;

// The two columns of option buttons and the lines of the links between them.
class LinkPicture : public QWidget {
    Q_OBJECT
public:
    explicit LinkPicture(QWidget* parent);
    // n buttons a column; the lines drawn, by (predator, prey).
    void SetButtons(const std::vector<QRadioButton*>& pred, const std::vector<QRadioButton*>& prey);
    std::map<std::pair<int, int>, QColor> lines;

protected:
    void resizeEvent(QResizeEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    std::vector<QRadioButton*> pred_, prey_;
};

class TrophicLinksForm : public QWidget {
    Q_OBJECT
public:
    explicit TrophicLinksForm(Model& m, QWidget* parent = nullptr);
    ~TrophicLinksForm() override;

    // Shows the links of the model afresh (after a file is loaded).
    void ShowPars();
    // Selects a pair (species or food type indices) as a click on the two buttons does.
    void SelectPair(int pred, int prey);
    int Pred() const { return pred_; }
    int Prey() const { return prey_; }
    void Command1_Click();

    std::vector<QRadioButton*> PredType, PreyType;  // index a - 1
    LinkPicture* picture;
    QLineEdit* PredProp;
    QLineEdit* FoodProp;
    QPushButton* Command1;
    QLabel* lbNote;

private:
    void showPair();
    void drawLink(int pred, int prey);
    void proportion(bool mortality, double v);
    Model& m_;
    std::unique_ptr<LinkEditor> editor_;
    int pred_ = 0, prey_ = 0;
};

}  // namespace osm
