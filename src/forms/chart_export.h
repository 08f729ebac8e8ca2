#pragma once
// One chart of the graphs or profiles on screen: it draws a ChartState, tells of
// a double-click, and saves itself as PNG or SVG from its context menu.
#include <QtCharts/QChartView>
#include <QtCharts/QScatterSeries>

#include <vector>

#include "presentation/chart_state.h"

QT_BEGIN_NAMESPACE
class QXYSeries;
QT_END_NAMESPACE

namespace osm {

// How a curve looks on screen and in its key. A run's model sets are solid
// lines, its observed sets filled round marks (dotted lines on a profile); the
// overlaid run's model sets are dashed lines and its observed sets hollow
// square marks. The colour is the curve's own.
struct CurveLook {
    bool marks = false;
    QColor colour;
    Qt::PenStyle line = Qt::SolidLine;
    double width = 1;
    QScatterSeries::MarkerShape shape = QScatterSeries::MarkerShapeCircle;
    bool filled = true;
    double markSize = 7;
};
CurveLook LookOf(const CurveFormat& f, const CurveRole& r);

// The axis titles of a chart: years across a time series, river miles across a
// profile; the y unit stands in the chart's title.
QString XAxisTitle(const ChartState& s);

class ChartBox : public QChartView {
    Q_OBJECT
public:
    explicit ChartBox(QWidget* parent = nullptr);

    // Draws the state: title, axes, curves and their points.
    void Show(const ChartState& s);
    // Curves on screen and the points drawn of each (a curve with gaps is drawn
    // as several pieces), for tests.
    int SeriesCount() const;
    int SeriesPointCount(int curve) const;
    // The look each curve is drawn with, for tests.
    CurveLook Look(int curve) const;

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
    // One curve: its look and the series that draw its pieces.
    struct Curve {
        CurveLook look;
        std::vector<QXYSeries*> pieces;
    };
    void rebuildCurves(const ChartState& s);
    void drawCurve(Curve& c, const std::vector<float>& values, const std::vector<double>& xs);
    QXYSeries* newPiece(const CurveLook& look);
    void setXAxis(const ChartState& s);
    void setYAxis(const ChartState& s);

    std::vector<CurveFormat> shownFormats_;
    std::vector<CurveRole> shownRoles_;
    std::vector<Curve> curves_;
};

}  // namespace osm
