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
#include <QtCharts/QScatterSeries>
#include <QtCharts/QValueAxis>

#include <algorithm>
#include <set>

namespace osm {

namespace {

QColor toQColor(int32_t c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

bool sameFormats(const std::vector<CurveFormat>& a, const std::vector<CurveFormat>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const CurveFormat& x, const CurveFormat& y) {
        return x.style == y.style && x.size == y.size && x.colour == y.colour && x.colour2 == y.colour2;
    });
}

}  // namespace

ChartBox::ChartBox(QWidget* parent) : QChartView(new QChart, parent) {
    setRenderHint(QPainter::Antialiasing, false);
    chart()->legend()->hide();
    // Room on the right for the last tick's label.
    chart()->setMargins(QMargins(2, 2, 14, 2));
    chart()->setBackgroundRoundness(0);
    auto* x = new QCategoryAxis;
    x->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    auto* y = new QValueAxis;
    y->setLabelFormat("%.4g");
    chart()->addAxis(x, Qt::AlignBottom);
    chart()->addAxis(y, Qt::AlignLeft);
    QFont f = chart()->titleFont();
    f.setPointSizeF(std::max(6.0, f.pointSizeF() - 1));
    chart()->setTitleFont(f);
}

void ChartBox::rebuildSeries(const ChartState& s) {
    QChart* c = chart();
    for (QAbstractSeries* old : series_) {
        c->removeSeries(old);
        delete old;
    }
    series_.clear();
    QAbstractAxis* x = c->axes(Qt::Horizontal).value(0);
    QAbstractAxis* y = c->axes(Qt::Vertical).value(0);
    for (const CurveFormat& f : s.formats) {
        QXYSeries* xy = nullptr;
        if (f.style == MarkStyle) {
            auto* marks = new QScatterSeries;
            marks->setMarkerShape(QScatterSeries::MarkerShapeCircle);
            marks->setMarkerSize(std::max<int>(f.size, 1) + 2);
            marks->setColor(toQColor(f.colour2));
            marks->setBorderColor(toQColor(f.colour));
            xy = marks;
        } else {
            auto* line = new QLineSeries;
            QPen pen(toQColor(f.colour));
            pen.setWidthF(std::max<int>(f.size, 1));
            pen.setCosmetic(true);
            line->setPen(pen);
            xy = line;
        }
        c->addSeries(xy);
        xy->attachAxis(x);
        xy->attachAxis(y);
        series_.push_back(xy);
    }
    shownFormats_ = s.formats;
}

void ChartBox::setXAxis(const ChartState& s) {
    auto* x = qobject_cast<QCategoryAxis*>(chart()->axes(Qt::Horizontal).value(0));
    if (!x) return;
    const int span = std::max(s.ShownXSpan(), 1);
    for (const QString& l : x->categoriesLabels()) x->remove(l);
    x->setStartValue(0);
    // The axis wants each label once and in order; blanks of different lengths
    // stand in for labels not set and for repeats.
    std::set<QString> used;
    double last = -1;
    for (int k = 0; k <= s.xTicks && k < static_cast<int>(s.axisLabels.size()); ++k) {
        const double at = std::min(s.TickPosition(k), static_cast<double>(span));
        if (at <= last) continue;
        QString text = QString::fromStdString(s.axisLabels[static_cast<size_t>(k)]);
        if (text.isEmpty()) text = QStringLiteral(" ");
        while (used.count(text)) text += QLatin1Char(' ');
        used.insert(text);
        x->append(text, at);
        last = at;
    }
    x->setRange(0, span);
}

void ChartBox::Show(const ChartState& s) {
    QChart* c = chart();
    c->setTitle(QString::fromStdString(s.title));
    c->setBackgroundBrush(toQColor(s.backColour));
    c->setPlotAreaBackgroundVisible(false);
    if (series_.size() != s.formats.size() || !sameFormats(shownFormats_, s.formats)) rebuildSeries(s);
    for (size_t i = 0; i < series_.size(); ++i) {
        QList<QPointF> pts;
        if (i < s.curves.size()) {
            const auto& curve = s.curves[i];
            pts.reserve(static_cast<qsizetype>(curve.size()));
            for (size_t k = 0; k < curve.size(); ++k) pts.append(QPointF(static_cast<double>(k), curve[k]));
        }
        static_cast<QXYSeries*>(series_[i])->replace(pts);
    }
    setXAxis(s);
    if (auto* y = qobject_cast<QValueAxis*>(c->axes(Qt::Vertical).value(0))) {
        YRange r = s.ShownYRange();
        if (!(r.top > r.bottom)) r.top = r.bottom + 0.001;
        y->setRange(r.bottom, r.top);
        // A chart that scales itself rounds its limits outward to readable steps.
        if (s.autoY) y->applyNiceNumbers();
    }
}

int ChartBox::SeriesCount() const { return static_cast<int>(series_.size()); }

int ChartBox::SeriesPointCount(int curve) const {
    if (curve < 0 || curve >= static_cast<int>(series_.size())) return 0;
    return static_cast<int>(static_cast<QXYSeries*>(series_[static_cast<size_t>(curve)])->count());
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
