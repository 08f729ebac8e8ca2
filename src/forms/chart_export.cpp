#include "forms/chart_export.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QSvgGenerator>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>
#include <QtCharts/QLineSeries>

#include <algorithm>
#include <cmath>
#include <set>

namespace osm {

namespace {

QColor toQColor(int32_t c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

bool sameFormats(const std::vector<CurveFormat>& a, const std::vector<CurveFormat>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const CurveFormat& x, const CurveFormat& y) {
        return x.style == y.style && x.size == y.size && x.colour == y.colour && x.colour2 == y.colour2;
    });
}

bool sameRoles(const std::vector<CurveRole>& a, const std::vector<CurveRole>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const CurveRole& x, const CurveRole& y) {
        return x.run == y.run && x.set == y.set && x.observed == y.observed;
    });
}

// Few ticks on a small chart: its labels must stay readable.
constexpr int YTicks = 4;
constexpr int MileTicks = 6;

// A category axis wants each label once and in order; blanks of different
// lengths tell repeats and empty labels apart.
void appendLabel(QCategoryAxis* axis, std::set<QString>& used, QString text, double at) {
    if (text.isEmpty()) text = QStringLiteral(" ");
    while (used.count(text)) text += QLatin1Char(' ');
    used.insert(text);
    axis->append(text, at);
}

void clearLabels(QCategoryAxis* axis) {
    for (const QString& l : axis->categoriesLabels()) axis->remove(l);
}

QFont smaller(QFont f, double points) {
    f.setPointSizeF(points);
    return f;
}

}  // namespace

CurveLook LookOf(const CurveFormat& f, const CurveRole& r) {
    CurveLook look;
    look.colour = toQColor(f.colour);
    const bool overlaid = r.run > 0;
    // The overlaid run's model sets come with the mark style too; they are its
    // lines, drawn dashed.
    look.marks = f.style == MarkStyle && (r.observed || !overlaid);
    look.line = r.observed ? Qt::DotLine : overlaid ? Qt::DashLine : Qt::SolidLine;
    look.width = overlaid ? 2.0 : std::clamp<double>(f.size, 1.0, 3.0);
    look.shape = overlaid ? QScatterSeries::MarkerShapeRectangle : QScatterSeries::MarkerShapeCircle;
    look.filled = !overlaid;
    // Small marks, so that they do not hide the lines under them.
    look.markSize = overlaid ? 6.0 : std::clamp<double>(f.size, 4.0, 6.0);
    return look;
}

QString XAxisTitle(const ChartState& s) {
    return s.xMiles.empty() ? QStringLiteral("Year") : QStringLiteral("River mile below the dam");
}

ChartBox::ChartBox(QWidget* parent) : QChartView(new QChart, parent) {
    setRenderHint(QPainter::Antialiasing, false);
    QChart* c = chart();
    c->legend()->hide();
    // Room on the right for half of the last tick's label. The chart lets its
    // axes take at most two fifths of its height before it cuts their texts
    // short, so on a small chart every point of font size counts.
    c->setMargins(QMargins(2, 0, 14, 0));
    c->setBackgroundRoundness(0);
    c->setTitleFont(smaller(c->titleFont(), 7.5));
    for (Qt::Alignment side : {Qt::AlignBottom, Qt::AlignLeft}) {
        auto* axis = new QCategoryAxis;
        axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
        axis->setLabelsFont(smaller(axis->labelsFont(), 7));
        axis->setTitleFont(smaller(axis->titleFont(), 7));
        // Labels are kept short; none is ever cut to an ellipsis.
        axis->setTruncateLabels(false);
        c->addAxis(axis, side);
    }
}

QXYSeries* ChartBox::newPiece(const CurveLook& look) {
    QXYSeries* xy = nullptr;
    if (look.marks) {
        auto* marks = new QScatterSeries;
        marks->setMarkerShape(look.shape);
        marks->setMarkerSize(look.markSize);
        marks->setColor(look.filled ? look.colour : QColor(Qt::transparent));
        marks->setBorderColor(look.colour);
        xy = marks;
    } else {
        auto* line = new QLineSeries;
        QPen pen(look.colour);
        pen.setWidthF(look.width);
        pen.setStyle(look.line);
        pen.setCosmetic(true);
        line->setPen(pen);
        xy = line;
    }
    QChart* c = chart();
    c->addSeries(xy);
    xy->attachAxis(c->axes(Qt::Horizontal).value(0));
    xy->attachAxis(c->axes(Qt::Vertical).value(0));
    return xy;
}

void ChartBox::rebuildCurves(const ChartState& s) {
    for (Curve& curve : curves_)
        for (QXYSeries* piece : curve.pieces) {
            chart()->removeSeries(piece);
            delete piece;
        }
    curves_.clear();
    for (size_t i = 0; i < s.formats.size(); ++i) {
        const CurveRole role = i < s.roles.size() ? s.roles[i] : CurveRole{};
        curves_.push_back({LookOf(s.formats[i], role), {}});
    }
    shownFormats_ = s.formats;
    shownRoles_ = s.roles;
}

// Marks skip the places with nothing to draw; a line breaks there, one piece
// for each run of values.
void ChartBox::drawCurve(Curve& c, const std::vector<float>& values, const std::vector<double>& xs) {
    std::vector<QList<QPointF>> pieces(1);
    for (size_t k = 0; k < values.size(); ++k) {
        if (std::isnan(values[k])) {
            if (!c.look.marks && !pieces.back().isEmpty()) pieces.emplace_back();
            continue;
        }
        const double x = k < xs.size() ? xs[k] : static_cast<double>(k);
        pieces.back().append(QPointF(x, values[k]));
    }
    if (pieces.size() > 1 && pieces.back().isEmpty()) pieces.pop_back();
    while (c.pieces.size() < pieces.size()) c.pieces.push_back(newPiece(c.look));
    while (c.pieces.size() > pieces.size()) {
        chart()->removeSeries(c.pieces.back());
        delete c.pieces.back();
        c.pieces.pop_back();
    }
    for (size_t p = 0; p < pieces.size(); ++p) c.pieces[p]->replace(pieces[p]);
}

void ChartBox::setXAxis(const ChartState& s) {
    auto* x = qobject_cast<QCategoryAxis*>(chart()->axes(Qt::Horizontal).value(0));
    if (!x) return;
    clearLabels(x);
    x->setTitleText(XAxisTitle(s));
    std::set<QString> used;
    if (!s.xMiles.empty()) {
        // River miles, ticked at round miles inside the river's extent.
        const double lo = s.xMiles.front(), hi = std::max(s.xMiles.back(), lo + 1);
        const AxisTicks t = RoundTicks(lo, hi, MileTicks);
        x->setStartValue(lo);
        for (double v : t.values)
            if (v >= lo && v <= hi) appendLabel(x, used, QString::fromStdString(TickText(v, t.step)), v);
        x->setRange(lo, hi);
        return;
    }
    const int span = std::max(s.ShownXSpan(), 1);
    x->setStartValue(0);
    double last = -1;
    for (int k = 0; k <= s.xTicks && k < static_cast<int>(s.axisLabels.size()); ++k) {
        const double at = std::min(s.TickPosition(k), static_cast<double>(span));
        if (at <= last) continue;
        appendLabel(x, used, QString::fromStdString(s.axisLabels[static_cast<size_t>(k)]), at);
        last = at;
    }
    x->setRange(0, span);
}

// A chart that scales itself widens its limits to round steps; fixed limits
// stay as they are, ticked at the round steps inside them.
void ChartBox::setYAxis(const ChartState& s) {
    auto* y = qobject_cast<QCategoryAxis*>(chart()->axes(Qt::Vertical).value(0));
    if (!y) return;
    YRange r = s.ShownYRange();
    if (!(r.top > r.bottom)) r.top = r.bottom + 0.001;
    const AxisTicks t = RoundTicks(r.bottom, r.top, YTicks);
    const double lo = s.autoY ? t.lo : r.bottom, hi = s.autoY ? t.hi : r.top;
    clearLabels(y);
    y->setStartValue(lo);
    std::set<QString> used;
    const double slack = t.step * 1e-9;
    for (double v : t.values)
        if (v >= lo - slack && v <= hi + slack) appendLabel(y, used, QString::fromStdString(TickText(v, t.step)), v);
    y->setRange(lo, hi);
}

void ChartBox::Show(const ChartState& s) {
    QChart* c = chart();
    c->setTitle(QString::fromStdString(s.title));
    c->setBackgroundBrush(toQColor(s.backColour));
    c->setPlotAreaBackgroundVisible(false);
    if (curves_.size() != s.formats.size() || !sameFormats(shownFormats_, s.formats) ||
        !sameRoles(shownRoles_, s.roles))
        rebuildCurves(s);
    static const std::vector<float> none;
    for (size_t i = 0; i < curves_.size(); ++i) drawCurve(curves_[i], i < s.curves.size() ? s.curves[i] : none, s.xMiles);
    setXAxis(s);
    setYAxis(s);
}

int ChartBox::SeriesCount() const { return static_cast<int>(curves_.size()); }

int ChartBox::SeriesPointCount(int curve) const {
    if (curve < 0 || curve >= static_cast<int>(curves_.size())) return 0;
    int n = 0;
    for (const QXYSeries* piece : curves_[static_cast<size_t>(curve)].pieces) n += static_cast<int>(piece->count());
    return n;
}

CurveLook ChartBox::Look(int curve) const {
    if (curve < 0 || curve >= static_cast<int>(curves_.size())) return {};
    return curves_[static_cast<size_t>(curve)].look;
}

bool ChartBox::SavePng(const QString& path) {
    return grab().save(path, "PNG");
}

bool ChartBox::SaveSvg(const QString& path) {
    QSvgGenerator svg;
    svg.setFileName(path);
    svg.setSize(size());
    svg.setViewBox(rect());
    svg.setTitle(chart()->title());
    QPainter p;
    if (!p.begin(&svg)) return false;
    render(&p);
    return p.end();
}

bool ChartBox::SaveAs(const QString& path) {
    if (path.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive)) return SavePng(path);
    if (path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) return SaveSvg(path);
    return false;
}

void ChartBox::mouseDoubleClickEvent(QMouseEvent* e) {
    QChartView::mouseDoubleClickEvent(e);
    emit doubleClicked();
}

void ChartBox::contextMenuEvent(QContextMenuEvent* e) {
    QMenu menu(this);
    QAction* png = menu.addAction(tr("Save as PNG..."));
    menu.addAction(tr("Save as SVG..."));
    QAction* chosen = menu.exec(e->globalPos());
    if (!chosen) return;
    const bool asPng = chosen == png;
    QString path = QFileDialog::getSaveFileName(this, tr("Save Chart"), QString(),
                                                asPng ? tr("PNG image (*.png)") : tr("SVG image (*.svg)"));
    if (path.isEmpty()) return;
    const QString suffix = asPng ? QStringLiteral(".png") : QStringLiteral(".svg");
    if (!path.endsWith(suffix, Qt::CaseInsensitive)) path += suffix;
    if (!SaveAs(path)) QMessageBox::warning(this, tr("Save Chart"), tr("Could not write ") + path);
}

}  // namespace osm
