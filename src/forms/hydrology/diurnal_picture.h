#pragma once
// The pictures of the policy editor: picDiurnal draws the 24 hourly flows of the
// two day types on a fixed scale, pcXAxis labels its hours, and StepButtons are
// the up and down arrows beside a box.
#include <QWidget>

#include <array>

namespace osm {

class DiurnalPicture : public QWidget {
    Q_OBJECT
public:
    using Day = std::array<double, 25>;  // hours 1..24
    explicit DiurnalPicture(QWidget* parent = nullptr);
    // The weekday and Sunday flows on the scale yMin..yMax.
    void Set(const Day& weekday, const Day& sunday, double yMin, double yMax);
    const Day& weekday() const { return day_[0]; }
    QSize sizeHint() const override { return {420, 220}; }

protected:
    void paintEvent(QPaintEvent*) override;

private:
    std::array<Day, 2> day_{};
    double yMin_ = 0, yMax_ = 1;
    bool set_ = false;
};

// Hour labels under the picture, under the mask "000".
class HourAxis : public QWidget {
    Q_OBJECT
public:
    explicit HourAxis(QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
};

class StepButtons : public QWidget {
    Q_OBJECT
public:
    explicit StepButtons(QWidget* parent = nullptr);
signals:
    void stepped(int delta);
};

}  // namespace osm
