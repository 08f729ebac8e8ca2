#include "forms/maps_form.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QSvgGenerator>
#include <QTreeWidget>

#include "core/model.h"
#include "core/numbers.h"
#include "presentation/legends.h"
#include "presentation/map_layers.h"
#include "presentation/map_projection.h"
#include "presentation/view_layout.h"

namespace osm {

namespace {

QColor colour(int32_t c) { return QColor(c & 255, (c >> 8) & 255, (c >> 16) & 255); }

std::vector<QPoint> qpoints(const std::vector<MapPoint>& pts, size_t from = 0, size_t n = SIZE_MAX) {
    std::vector<QPoint> out;
    for (size_t k = from; k < pts.size() && out.size() < n; ++k) out.emplace_back(pts[k].X, pts[k].Y);
    return out;
}

}  // namespace

MapBox::MapBox(int slot, QWidget* parent) : QWidget(parent), slot_(slot) {
    setObjectName(QStringLiteral("Maps%1").arg(slot));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void MapBox::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Qt::white);
    if (!picture_.isNull()) p.drawImage(0, 0, picture_);
}

void MapBox::mousePressEvent(QMouseEvent* e) {
    const QPoint at = e->position().toPoint();
    if (e->button() == Qt::RightButton) emit menuWanted(slot_, e->globalPosition().toPoint());
    else if (e->button() == Qt::LeftButton) emit clicked(slot_, at);
}

MapsForm::MapsForm(Model& m, QWidget* parent) : QWidget(parent), m_(m) {
    setObjectName(QStringLiteral("frmMaps"));
    setWindowTitle(tr("Maps"));
    for (int i = 1; i <= 6; ++i) {
        auto* box = new MapBox(i, this);
        maps_[static_cast<size_t>(i - 1)] = box;
        connect(box, &MapBox::clicked, this, [this](int slot, QPoint at) {
            pressedLegend_ = m_.graphs.MapSlot(slot);
            HitTest(slot, at);
        });
        connect(box, &MapBox::menuWanted, this, &MapsForm::showMenu);
    }
    results_ = new QTreeWidget(this);
    results_->setObjectName(QStringLiteral("frmDisResults"));
    results_->setWindowFlags(Qt::Tool);
    results_->setWindowTitle(tr("Results"));
    results_->setRootIsDecorated(false);
}

void MapsForm::ChangeMaps() {
    const double w = width(), h = height();
    std::vector<MapBox*> shown;
    for (MapBox* b : maps_) {
        const bool on = m_.graphs.MapSlot(b->Slot()) != 0 && m_.vectorMap.Loaded;
        b->setVisible(on);
        if (on) shown.push_back(b);
    }
    const auto rects = TileViews(static_cast<int>(shown.size()), w, h, MapAspect, ViewGap);
    for (size_t k = 0; k < shown.size(); ++k) {
        // A slot may show another legend now: its title and base are drawn afresh.
        m_.vectorMap.MapDirty[shown[k]->Slot()] = true;
        shown[k]->setGeometry(QRectF(rects[k].x, rects[k].y, rects[k].w, rects[k].h).toRect());
    }
}

void MapsForm::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    for (bool& d : m_.vectorMap.MapDirty) d = true;
    ChangeMaps();
    for (MapBox* b : maps_)
        if (b->isVisible()) DrawMap(b->Slot(), drawnMonth_[static_cast<size_t>(b->Slot())]);
}

int MapsForm::timeRow(int var) const {
    const Main& mn = m_.main;
    return m_.graphs.VarTime(var) == TimeYearly ? mn.RunYear0 * 12 + 1 : mn.CumMonth;
}

void MapsForm::UpdateMaps() {
    const int cumMonth = m_.main.CumMonth;
    if (m_.graphs.VisForms(2) == 0 || !m_.vectorMap.Loaded) return;
    for (int slot = 1; slot <= 6; ++slot) {
        const int n = m_.graphs.MapSlot(slot);
        if (n == 0) continue;
        const int v = VarOfLegend(m_, n);
        if (v != 0 && m_.main.TimeFlags(m_.graphs.VarTime(v))) DrawMap(slot, cumMonth);
    }
}

void MapsForm::RedrawMaps() {
    if (m_.graphs.VisForms(2) == 0 || !m_.vectorMap.Loaded) return;
    for (bool& d : m_.vectorMap.MapDirty) d = true;
    ChangeMaps();
    for (int slot = 1; slot <= 6; ++slot) {
        const int n = m_.graphs.MapSlot(slot);
        if (n == 0) continue;
        const int v = VarOfLegend(m_, n);
        if (v == 0 || m_.graphs.VarTime(v) == TimeWeekly) continue;
        DrawMap(slot, timeRow(v));
    }
}

void MapsForm::DrawMap(int slot, int month) {
    MapBox* box = Map(slot);
    if (box->width() <= 0 || box->height() <= 0) return;
    QImage& picture = box->Picture();
    if (m_.vectorMap.MapDirty[slot] || picture.size() != box->size()) {
        picture = QImage(box->size(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter base(&picture);
        box->RiverScreen = paintBase(base, picture.size(), slot);
        m_.vectorMap.MapDirty[slot] = false;
    }
    // Month by month only the river is drawn, over itself.
    QPainter p(&picture);
    paintRiver(p, slot, month, box->RiverScreen);
    p.end();
    drawnMonth_[static_cast<size_t>(slot)] = month;
    box->update();
}

std::vector<MapPoint> MapsForm::paintBase(QPainter& p, QSize size, int slot) const {
    const VectorMap& map = m_.vectorMap;
    const MapWindow w = ProjectMap(map, static_cast<float>(size.width()), static_cast<float>(size.height()));
    std::vector<MapPoint> river = ToScreen(w, map.RiverPoints);
    const int n = m_.graphs.MapSlot(slot);
    const int var = VarOfLegend(m_, n);
    if (var == 0) return river;
    const LegendRec& legend = m_.legend.Legends[static_cast<size_t>(n) - 1];
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(Qt::black);
    p.drawText(QPoint(10, 3 + p.fontMetrics().ascent()), QString::fromStdString(LegendName(m_, var, legend.Set)));
    // Tributaries, then lakes; the blue pen of a lake stays for what follows.
    QPen pen(Qt::black);
    for (const std::vector<MapShape>* layer : {&map.TribShapes, &map.LakeShapes})
        for (const MapShape& s : *layer) {
            const std::vector<QPoint> pts = qpoints(ToScreen(w, s.Points));
            if (pts.empty()) continue;
            if (s.ShapeType == ShapePolyline) {
                p.setPen(pen);
                p.drawPolyline(pts.data(), static_cast<int>(pts.size()));
            } else if (s.ShapeType == ShapePolygon) {
                pen.setColor(QColor(0, 0, 255));
                p.setPen(pen);
                p.setBrush(QColor(255, 0, 255));
                p.drawPolygon(pts.data(), static_cast<int>(pts.size()));
                p.setBrush(Qt::NoBrush);
            }
        }
    p.setPen(QColor(255, 0, 0));
    for (const MapLabel& l : map.MapLabels) {
        const int v = MileToPoint(m_, map, l.Mile);
        if (v >= 1 && v <= static_cast<int>(river.size()))
            p.drawEllipse(QPoint(river[static_cast<size_t>(v) - 1].X, river[static_cast<size_t>(v) - 1].Y), 2, 2);
    }
    return river;
}

void MapsForm::paintRiver(QPainter& p, int slot, int month, const std::vector<MapPoint>& river) const {
    const VectorMap& map = m_.vectorMap;
    const Main& mn = m_.main;
    const int n = m_.graphs.MapSlot(slot);
    const int var = VarOfLegend(m_, n);
    if (var == 0 || month < 1 || mn.Results.empty() || month > mn.Results.hi(4)) return;
    const LegendRec& legend = m_.legend.Legends[static_cast<size_t>(n) - 1];
    p.setRenderHint(QPainter::Antialiasing, false);
    int32_t inForce = 0;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        if (r + 1 >= static_cast<int>(map.ReachPoint.size())) break;
        const float value = mn.Results(mn.NRuns, var, legend.Set, r, month);
        inForce = ColourOfValue(legend, value, inForce);
        const int first = map.ReachPoint[static_cast<size_t>(r)];
        const int count = map.ReachPoint[static_cast<size_t>(r) + 1] - first + 1;
        const std::vector<QPoint> pts = qpoints(river, static_cast<size_t>(first) - 1, static_cast<size_t>(count));
        p.setPen(QPen(colour(inForce), 2));
        p.drawPolyline(pts.data(), static_cast<int>(pts.size()));
    }
}

bool MapsForm::HitTest(int slot, QPoint at) {
    const MapBox* box = Map(slot);
    const std::vector<ReachHit> rows = HitReaches(m_, HitVertices(m_.vectorMap, box->RiverScreen, at.x(), at.y()));
    if (rows.empty()) return false;
    const int n = m_.graphs.MapSlot(slot);
    const int var = VarOfLegend(m_, n);
    if (var == 0) return false;
    const LegendRec& legend = m_.legend.Legends[static_cast<size_t>(n) - 1];
    results_->clear();
    results_->setHeaderLabels({tr("Reach ID/#"), tr("Reach Name"), tr("River Mile"),
                               QString::fromStdString(legend.Name)});
    const Main& mn = m_.main;
    const int time = timeRow(var);
    for (const ReachHit& h : rows) {
        const float mile = m_.vectorMap.RiverMiles[static_cast<size_t>(h.Vertex) - 1].RiverMile;
        QString value;
        if (h.Reach >= 1 && time >= 1 && !mn.Results.empty() && time <= mn.Results.hi(4))
            value = QString::fromStdString(NumText(mn.Results(mn.NRuns, var, legend.Set, h.Reach, time)));
        const QString label = h.Reach >= 1 ? QString::fromStdString(mn.ReachLabel(h.Reach)) : QString();
        new QTreeWidgetItem(results_, {QString::number(h.Reach), label, QString::fromStdString(NumText(mile)), value});
    }
    for (int c = 0; c < 4; ++c) results_->resizeColumnToContents(c);
    results_->show();
    results_->raise();
    return true;
}

bool MapsForm::SaveAs(int slot, const QString& path) {
    const MapBox* box = Map(slot);
    const int month = drawnMonth_[static_cast<size_t>(slot)];
    if (path.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive)) return box->Picture().save(path, "PNG");
    if (!path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) return false;
    QSvgGenerator svg;
    svg.setFileName(path);
    svg.setSize(box->size());
    svg.setViewBox(QRect(QPoint(0, 0), box->size()));
    QPainter p;
    if (!p.begin(&svg)) return false;
    p.fillRect(QRect(QPoint(0, 0), box->size()), Qt::white);
    paintRiver(p, slot, month, paintBase(p, box->size(), slot));
    return p.end();
}

void MapsForm::showMenu(int slot, QPoint globalAt) {
    pressedLegend_ = m_.graphs.MapSlot(slot);
    QMenu menu(this);
    QAction* redraw = menu.addAction(tr("RedrawMaps"));
    QAction* editor = menu.addAction(tr("Show Legend Editor"));
    menu.addSeparator();
    QAction* png = menu.addAction(tr("Save as PNG..."));
    QAction* svg = menu.addAction(tr("Save as SVG..."));
    QAction* chosen = menu.exec(globalAt);
    if (chosen == redraw) RedrawMaps();
    if (chosen == editor) emit legendEditorWanted(pressedLegend_);
    if (chosen != png && chosen != svg) return;
    const bool asPng = chosen == png;
    QString path = QFileDialog::getSaveFileName(this, tr("Save Map"), QString(),
                                                asPng ? tr("PNG image (*.png)") : tr("SVG image (*.svg)"));
    if (path.isEmpty()) return;
    const QString suffix = asPng ? QStringLiteral(".png") : QStringLiteral(".svg");
    if (!path.endsWith(suffix, Qt::CaseInsensitive)) path += suffix;
    if (!SaveAs(slot, path)) QMessageBox::warning(this, tr("Save Map"), tr("Could not write ") + path);
}

}  // namespace osm
