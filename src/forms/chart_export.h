#pragma once
// One chart of the graphs or profiles on screen: it draws a ChartState, tells of
// a double-click, and saves itself as PNG or SVG from its context menu.
#include <QtCharts/QChartView>

#include <vector>

#include "presentation/chart_state.h"

QT_BEGIN_NAMESPACE
class QAbstractSeries;
QT_END_NAMESPACE

namespace osm {

class ChartBox : public QChartView {
    Q_OBJECT
public:
    explicit ChartBox(QWidget* parent = nullptr);

    // Draws the state: title, axes, curves and their points.
    void Show(const ChartState& s);
    // Series on screen and their points, for tests.
    int SeriesCount() const;
    int SeriesPointCount(int curve) const;

    // The chart as a picture: PNG at the size on screen, or SVG. False when the
    // file could not be written.
    bool SavePng(const QString& path);
    bool SaveSvg(const QString& path);
    // PNG or SVG by the name's ending (either case); any other ending is refused.
    bool SaveAs(const QString& path);

signals:
    void doubleClicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private:
    void rebuildSeries(const ChartState& s);
    void setXAxis(const ChartState& s);

    std::vector<CurveFormat> shownFormats_;
    std::vector<QAbstractSeries*> series_;
};

}  // namespace osm
