// The maps form and the legend editor on the small river: each reach drawn in
// its legend colour at the pixels the projection gives, the whole picture beside
// a reference image, the hit test's list, PNG and SVG export, and a new
// breakpoint applied and repainted.
#include <QComboBox>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QLabel>
#include <QFile>
#include <QLineEdit>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include "core/model.h"
#include "forms/legend_editor_form.h"
#include "forms/maps_form.h"
#include "presentation/legends.h"
#include "presentation/map_projection.h"
#include "support/small_model.h"

namespace {

QColor colour(int32_t c) { return QColor(c & 255, (c >> 8) & 255, (c >> 16) & 255); }

// Pixels of `a` with no pixel of the same colour in `b` within `reach` pixels,
// outside `skip`.
int unmatched(const QImage& a, const QImage& b, int reach, const QRect& skip) {
    int n = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            if (skip.contains(x, y)) continue;
            bool found = false;
            for (int dy = -reach; dy <= reach && !found; ++dy)
                for (int dx = -reach; dx <= reach && !found; ++dx)
                    found = b.valid(x + dx, y + dy) && b.pixel(x + dx, y + dy) == a.pixel(x, y);
            n += found ? 0 : 1;
        }
    return n;
}

class MapsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    std::unique_ptr<osm::MapsForm> maps;

    osm::Model& m() { return s->m; }
    // The pixel halfway along the first segment of reach r on map 1.
    QColor reachPixel(int r) {
        const auto& screen = maps->Map(1)->RiverScreen;
        const int v = m().vectorMap.ReachPoint[static_cast<size_t>(r)];
        const osm::MapPoint a = screen[static_cast<size_t>(v) - 1], b = screen[static_cast<size_t>(v)];
        return maps->Map(1)->Picture().pixelColor((a.X + b.X) / 2, (a.Y + b.Y) / 2);
    }

private slots:
    void init() {
        s = osm::test::StartSmallModel(true);
        QVERIFY(m().vectorMap.Loaded);
        osm::Main& mn = m().main;
        m().graphs.VisForms(2) = 1;
        for (int i = 1; i <= 6; ++i) m().graphs.MapSlot(i) = 0;
        m().graphs.MapSlot(1) = 1;  // Flow, set Min
        osm::LegendRec& l = m().legend.Legends[0];
        l.ScaleMin = 0, l.ScaleMax = 12;
        mn.CumMonth = 1;
        mn.TimeFlags(2) = true;
        const float values[] = {0.1f, 6, 12};
        for (int r = 1; r <= 3; ++r) mn.Results(mn.NRuns, 1, 1, r, 1) = values[r - 1];
        maps = std::make_unique<osm::MapsForm>(m());
        maps->resize(600, 400);
        maps->ChangeMaps();
    }
    void cleanup() {
        maps.reset();
        s.reset();
    }

    void drawsEachReachInItsColourOverTheBaseLayers() {
        QVERIFY(maps->Map(1)->isVisibleTo(maps.get()));
        QVERIFY(!maps->Map(2)->isVisibleTo(maps.get()));  // an empty slot stays hidden
        maps->UpdateMaps();
        QCOMPARE(m().vectorMap.ReachPoint, (std::vector<int16_t>{0, 1, 2, 4, 6}));
        const auto& ramp = osm::ColourRamp();
        QCOMPARE(reachPixel(1), QColor(255, 0, 255));  // the dam row isn't drawn: the lake behind
        QCOMPARE(reachPixel(2), colour(ramp[13]));  // Int(6 * 2) + 1
        QCOMPARE(reachPixel(3), colour(ramp[25]));
        // The tributary runs from river vertex 4 up to (35, 55): black halfway along.
        const osm::MapWindow w = osm::ProjectMap(m().vectorMap, maps->Map(1)->width(), maps->Map(1)->height());
        const osm::MapPoint t = osm::ToScreen(w, osm::MapPoint{33000, 49000});
        bool black = false;
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                black = black || maps->Map(1)->Picture().pixelColor(t.X + dx, t.Y + dy) == QColor(Qt::black);
        QVERIFY(black);

        // A month of a time scale not in hand leaves the map as it stands.
        m().main.TimeFlags(2) = false;
        m().main.Results(m().main.NRuns, 1, 1, 2, 1) = 0.1f;
        maps->UpdateMaps();
        QCOMPARE(reachPixel(2), colour(ramp[13]));
    }

    // The map of the three-reach river beside the picture kept in the tests, within
    // two pixels of placement. The title is drawn in the system's font, which differs
    // from machine to machine: its box is only required to hold some ink.
    void matchesTheReferencePicture() {
        maps->UpdateMaps();
        const QImage drawn = maps->Map(1)->Picture().convertToFormat(QImage::Format_RGB32);
        const QString reference = QStringLiteral(OSM_SOURCE_DIR "/tests/forms/data/small_river_map.png");
        if (qEnvironmentVariableIsSet("OSM_UPDATE_REFERENCE")) QVERIFY(drawn.save(reference, "PNG"));
        const QImage kept = QImage(reference).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(kept.size(), drawn.size());
        const QFontMetrics fm(QGuiApplication::font());
        const QRect title(0, 0, 20 + fm.horizontalAdvance(QString::fromStdString(m().legend.Legends[0].Name)),
                          6 + fm.height());
        int ink = 0;
        for (int y = title.top(); y <= title.bottom(); ++y)
            for (int x = title.left(); x <= title.right(); ++x) ink += drawn.pixelColor(x, y) == Qt::black;
        QVERIFY(ink > 0);
        QVERIFY2(unmatched(drawn, kept, 2, title) <= 4, "the map differs from tests/forms/data/small_river_map.png");
        QVERIFY2(unmatched(kept, drawn, 2, title) <= 4, "tests/forms/data/small_river_map.png differs from the map");
    }

    void clickListsTheReachesUnderTheMouse() {
        maps->UpdateMaps();
        const auto& screen = maps->Map(1)->RiverScreen;
        // Halfway along the segment from vertex 3 (mile 10) to vertex 4.
        const QPoint onReach2((screen[2].X + screen[3].X) / 2, (screen[2].Y + screen[3].Y) / 2);
        QVERIFY(maps->HitTest(1, onReach2));
        QTreeWidget* list = maps->Results();
        QCOMPARE(list->headerItem()->text(0), QStringLiteral("Reach ID/#"));
        QCOMPARE(list->headerItem()->text(3), QString::fromStdString(m().legend.Legends[0].Name));
        QCOMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(list->topLevelItem(0)->text(0), QStringLiteral("2"));
        QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("Upper gorge"));
        QCOMPARE(list->topLevelItem(0)->text(2), QStringLiteral("10"));
        QCOMPARE(list->topLevelItem(0)->text(3), QStringLiteral("6"));
        QVERIFY(!maps->HitTest(1, QPoint(2, 2)));  // far from the river
    }

    void savesTheMapAsPngAndSvg() {
        maps->UpdateMaps();
        QTemporaryDir dir;
        const QString png = dir.filePath("map.png"), svg = dir.filePath("map.SVG");
        QVERIFY(maps->SaveAs(1, png));
        QVERIFY(maps->SaveAs(1, svg));
        QVERIFY(!maps->SaveAs(1, dir.filePath("map.bmp")));
        QCOMPARE(QImage(png), maps->Map(1)->Picture().convertToFormat(QImage(png).format()));
        QFile f(svg);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.readAll().contains("<svg"));
    }

    void legendEditorAppliesABreakpointAndTheMapRepaints() {
        maps->UpdateMaps();
        const std::vector<osm::LegendRec> before = m().legend.Legends;
        osm::LegendEditorForm ed(m(), [this] { maps->RedrawMaps(); });
        QCOMPARE(ed.MapList()->count(), static_cast<int>(before.size()));
        QVERIFY(ed.Scale(1)->isChecked());  // continuous
        QCOMPARE(ed.ContMax()->text(), QStringLiteral("12"));
        ed.Scale(0)->click();
        ed.Lower()->setText("0");
        ed.Upper()->setText("10");
        ed.Categories()->setText("2");
        QTest::keyClick(ed.Categories(), Qt::Key_Return);
        QCOMPARE(ed.Breakpoint(2)->text(), QStringLiteral("10.0"));
        QVERIFY(!ed.Breakpoint(3)->isVisibleTo(&ed));
        ed.PickColour(13);  // red
        ed.SetCategoryColour(1);
        // A breakpoint that is not a number is refused in place, saying why.
        ed.Breakpoint(1)->setText("7 cfs");
        QVERIFY(!ed.Apply());
        QCOMPARE(ed.Breakpoint(1)->text(), QStringLiteral("0.0"));
        QVERIFY(ed.Note()->text().contains(QStringLiteral("Breakpoint 1")));
        ed.Breakpoint(1)->setText("7");
        QVERIFY(ed.Apply());
        const osm::LegendRec& l = m().legend.Legends[0];
        QCOMPARE(l.Categorical, int16_t(1));
        QCOMPARE(l.Breaks, (std::vector<float>{7, 10}));
        QCOMPARE(reachPixel(2), QColor(255, 0, 0));  // 6 <= 7
        QCOMPARE(reachPixel(3), QColor(255, 0, 0));  // 12 above the last break: the colour before
        QCOMPARE(osm::ReadLegends(m().main.ModelMdeFile).Legends[0], l);

        // Cancel brings back the legends the form opened with; the saved file stays.
        osm::LegendEditorForm again(m(), {});
        again.Categories()->setText("3");
        QTest::keyClick(again.Categories(), Qt::Key_Return);
        QCOMPARE(m().legend.Legends[0].NCats, int16_t(3));
        again.Cancel();
        QCOMPARE(m().legend.Legends[0], l);
    }
};

}  // namespace

QTEST_MAIN(MapsTest)
#include "maps_test.moc"
