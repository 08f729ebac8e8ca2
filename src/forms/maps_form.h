#pragma once
// frmMaps: up to six river maps, each showing one legend's quantity reach by
// reach over the tributaries, lakes and label marks. Fed month by month during a
// run; a click lists the results under the mouse; the context menu redraws,
// opens the legend editor or saves the map as PNG or SVG.
#include <QImage>
#include <QWidget>

#include <array>
#include <vector>

#include "presentation/vectormap_module.h"

class QPainter;
class QTreeWidget;

namespace osm {

struct Model;

// One picture box of the maps: what has been drawn stays until drawn over.
class MapBox : public QWidget {
    Q_OBJECT
public:
    MapBox(int slot, QWidget* parent);
    int Slot() const { return slot_; }
    const QImage& Picture() const { return picture_; }
    QImage& Picture() { return picture_; }
    // The river's vertices in pixels of the map last drawn, for the hit test.
    std::vector<MapPoint> RiverScreen;

signals:
    void clicked(int slot, QPoint at);
    void menuWanted(int slot, QPoint globalAt);

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;

private:
    int slot_;
    QImage picture_;
};

class MapsForm : public QWidget {
    Q_OBJECT
public:
    explicit MapsForm(Model& m, QWidget* parent = nullptr);

    // Shows and lays out the maps whose slot holds a legend.
    void ChangeMaps();
    // A run's month: the maps whose quantity has this month's time scale,
    // drawn at the run's month count.
    void UpdateMaps();
    // Every filled map projected and drawn anew.
    void RedrawMaps();
    // Draws one map at a row of the results store (0: no results yet).
    void DrawMap(int slot, int month);
    // Lists the reaches under pixel `at` of a map; false when the river isn't there.
    bool HitTest(int slot, QPoint at);
    // The map as a picture file, PNG or SVG by the name's ending.
    bool SaveAs(int slot, const QString& path);

    MapBox* Map(int slot) const { return maps_[static_cast<size_t>(slot - 1)]; }
    QTreeWidget* Results() const { return results_; }
    // The legend number of the map last pressed.
    int PressedLegend() const { return pressedLegend_; }

signals:
    void legendEditorWanted(int legendNumber);

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    // Title, tributaries, lakes and label marks; returns the river's vertices in pixels.
    std::vector<MapPoint> paintBase(QPainter& p, QSize size, int slot) const;
    // Each reach in its legend colour for the results at `month`.
    void paintRiver(QPainter& p, int slot, int month, const std::vector<MapPoint>& river) const;
    void showMenu(int slot, QPoint globalAt);
    int timeRow(int var) const;

    Model& m_;
    std::array<MapBox*, 6> maps_{};
    std::array<int, 7> drawnMonth_{};  // the row each slot shows
    QTreeWidget* results_ = nullptr;   // frmDisResults
    int pressedLegend_ = 0;
};

}  // namespace osm
