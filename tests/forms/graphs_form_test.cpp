// The time-series graphs and the profiles on a physical-only run of the small
// river: points on the charts and on screen, the overlay, the year labels, the
// key on a double-click, and a chart saved as pictures.
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>

#include "core/run_driver.h"
#include "forms/chart_export.h"
#include "forms/forms_observer.h"
#include "forms/graph_legend_form.h"
#include "forms/graphs_form.h"
#include "forms/profiles_form.h"
#include "forms_test_registry.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

// Both views set up on the model, laid out in 900 x 600, and the program's
// observer feeding them.
struct Views {
    osm::GraphsForm graphs;
    osm::ProfilesForm profiles;
    osm::FormsRunObserver obs;
    explicit Views(osm::Model& m) : graphs(m), profiles(m) {
        graphs.resize(900, 600);
        profiles.resize(900, 600);
        graphs.SetupGraphs();
        profiles.SetupProfiles();
        obs.SetViews(&graphs, true, &profiles, true);
    }
};

class GraphsFormTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<osm::test::SmallModel> s_;
    osm::test::CollectMessages messages_;  // the small river's sand balance notes

private slots:
    void init() {
        s_ = osm::test::StartSmallModel(true);
        s_->m.messages = &messages_;
    }
    void cleanup() { s_.reset(); }

    void aRunFeedsTheChartsWhichDrawOnlyWhenShown() {
        osm::Model& m = s_->m;
        Views v(m);
        osm::StartRun(m, v.obs, 48, 2);
        QCOMPARE(v.graphs.PointCount(1, 1), 24);
        QCOMPARE(v.graphs.PointCount(1, 2), 0);
        const int perCurve = v.profiles.PointCount(1, 0);
        QVERIFY(perCurve > 2);
        QCoreApplication::processEvents();
        QCOMPARE(v.graphs.ChartView(1)->SeriesPointCount(0), 0);  // hidden: nothing drawn
        v.graphs.show();
        QCOMPARE(v.graphs.ChartView(1)->SeriesPointCount(0), 24);
        v.profiles.RefreshCharts();
        QCOMPARE(v.profiles.ChartView(1)->SeriesPointCount(0), perCurve);
        QVERIFY(v.graphs.rect().contains(v.graphs.ChartView(6)->geometry()));
    }

    void anOverlaidRunAddsASecondSetOfCurves() {
        osm::Model& m = s_->m;
        Views v(m);
        osm::StartRun(m, v.obs, 48, 1);
        QCOMPARE(v.graphs.State(1).CurveCount(), 2);
        m.main.Overlay = true;
        osm::StartRun(m, v.obs, 48, 1);
        QCOMPARE(v.graphs.PointCount(1, 3), 12);
        QCOMPARE(v.graphs.State(1).formats[2].style, int16_t{2});
        QCOMPARE(v.profiles.PointCount(1, 3), v.profiles.PointCount(1, 0));
        v.graphs.RefreshCharts();
        QCOMPARE(v.graphs.ChartView(1)->SeriesCount(), 4);
    }

    void aNewRunLabelsItsOwnWindow() {
        // A run that turned its window leaves the calendar past it.
        osm::Model& m = s_->m;
        m.graphs.TimeWindow = 2;
        Views v(m);
        osm::StartRun(m, v.obs, 48, 5);
        QCOMPARE(v.graphs.State(1).axisLabels.front(), std::string("52"));
        osm::StartRun(m, v.obs, 60, 1);
        QCOMPARE(v.graphs.State(1).axisLabels.front(), std::string("60"));
        QCOMPARE(v.graphs.PointCount(1, 0), 12);
    }

    void repeatedYearLabelsAllStandUnderTheirTicks() {
        // Over two centuries the labels repeat after the fold at 100.
        s_->m.graphs.TimeWindow = 200;
        osm::GraphsForm graphs(s_->m);
        graphs.SetupGraphs();
        graphs.RefreshCharts();
        auto* axis = qobject_cast<QCategoryAxis*>(graphs.ChartView(1)->chart()->axes(Qt::Horizontal).value(0));
        QVERIFY(axis);
        QCOMPARE(axis->count(), 11);
        QCOMPARE(axis->categoriesLabels().at(0).trimmed(), QStringLiteral("48"));
        QCOMPARE(axis->categoriesLabels().at(5).trimmed(), QStringLiteral("48"));
        QCOMPARE(axis->endValue(axis->categoriesLabels().at(10)), 2400.0);
    }

    void doubleClickShowsTheKey() {
        osm::Model& m = s_->m;
        Views v(m);
        v.graphs.show();
        QTest::mouseDClick(v.graphs.ChartView(1)->viewport(), Qt::LeftButton);
        QCOMPARE(QString::fromStdString(m.graphs.ClickedKind), QStringLiteral("time_series"));
        auto* key = v.graphs.findChild<osm::GraphLegendForm*>();
        QVERIFY(key);
        QCOMPARE(key->LabelText(1), QString::fromStdString(m.graphs.VarLabel(1, 1)));
        v.profiles.show();
        QTest::mouseDClick(v.profiles.ChartView(2)->viewport(), Qt::LeftButton);
        QCOMPARE(QString::fromStdString(m.graphs.ClickedKind), QStringLiteral("ds_profile"));
        auto* pkey = v.profiles.findChild<osm::GraphLegendForm*>();
        QVERIFY(pkey);
        QCOMPARE(pkey->Variable(), int(m.graphs.ProfSlot(2)));
    }

    void aChartSavesByTheNamesEnding() {
        osm::GraphsForm graphs(s_->m);
        graphs.SetupGraphs();
        graphs.RefreshCharts();
        osm::ChartBox* chart = graphs.ChartView(1);
        QTemporaryDir dir;
        QVERIFY(chart->SaveAs(dir.filePath("chart.png")));
        QVERIFY(chart->SaveAs(dir.filePath("upper.SVG")));
        QFile png(dir.filePath("chart.png")), svg(dir.filePath("upper.SVG"));
        QVERIFY(png.open(QIODevice::ReadOnly));
        QCOMPARE(png.read(8), QByteArray("\x89PNG\r\n\x1a\n"));
        QVERIFY(svg.open(QIODevice::ReadOnly));
        QVERIFY(svg.readAll().contains("<svg"));
        QVERIFY(!chart->SavePng(dir.filePath("no/such/folder/chart.png")));
        QVERIFY(!chart->SaveAs(dir.filePath("chart.bmp")));
        QVERIFY(!QFile::exists(dir.filePath("chart.bmp")));
    }
};

}  // namespace

OSM_FORMS_TEST(GraphsFormTest);
#include "graphs_form_test.moc"
