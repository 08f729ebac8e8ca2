#pragma once
// DisSedIn, "Define Water and Sediment Discharge Monthly Patterns": the dam's
// monthly release volumes and the two tributaries' flows and sediment, from the
// record or from a pattern of twelve months sketched with the mouse, and the
// sediment content of the release. Exit writes them into the model.
#include <QWidget>

#include <array>
#include <vector>

#include "hydrology/monthly_patterns.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace osm {

struct Model;
class FieldCheck;

// SetFlow: twelve bars on the scale 0..top; a held mouse button sets the month
// under the pointer to the value under it.
class PatternChart : public QWidget {
    Q_OBJECT
public:
    explicit PatternChart(QWidget* parent = nullptr);
    void Set(const MonthPattern& values, double top);
    const MonthPattern& values() const { return values_; }
    QSize sizeHint() const override { return {520, 260}; }
    // The month and value under a point of the chart (month 0 outside the bars).
    std::pair<int, double> At(QPointF p) const;

signals:
    void changed(int month, double value);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;

private:
    void take(QPointF p);
    MonthPattern values_{};
    double top_ = 1;
};

class PatternForm : public QWidget {
    Q_OBJECT
public:
    PatternForm(Model& m, QWidget* parent = nullptr);

    // The series of cbTribList: 1 the dam, 2.. the tributaries.
    int Series() const;
    void cbTribList_Click();
    void opSeqType_Click(int kind);
    void cbMonRel_Click();
    void PlotFlow();
    void SetMonth(int month, double value);
    void cmdExit_Click();
    const MonthPattern& Pattern(int series) const { return pattern_[size_t(series)]; }

    QComboBox* cbTribList;
    QGroupBox* frFlow;
    PatternChart* SetFlow;
    std::array<QRadioButton*, 3> opSeqType{};
    QLineEdit* txRepYr;
    QLineEdit* txYMax;
    QLineEdit* txConstFlow;
    QLabel* lbCurVal;
    QLabel* lbAnnVol;
    QLabel* lbAnnVolCap;
    QComboBox* cbMonRel;
    QComboBox* cbRun;
    QGroupBox* frOSD;
    QLineEdit* txMaxRelSeasonAdjust;
    QCheckBox* chkRelative;
    QLineEdit* txOSDSSConc;
    QLineEdit* txPreOSDPropSand;
    QLineEdit* txPostOSDPropSand;
    QCheckBox* chkHistOSDSSConc;
    QPushButton* cmdExit;
    QLabel* lbWhy;

private:
    void PopulateListBoxes();
    void caption();
    Model& m_;
    FieldCheck* check_;
    std::vector<TraceInfo> runs_;
    std::array<MonthPattern, 4> pattern_{};
    std::array<double, 4> yMax_{};
    std::array<int, 4> seqType_{}, repYr_{};  // taken into the model on Exit
};

}  // namespace osm
