// The time-series graphs and the profiles on a physical-only run of the small
// river: points arrive on the charts and on screen, the overlay doubles the
// curves, a double-click shows the key, and a chart saves itself as pictures.
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>

#include "core/run_driver.h"
#include "forms/chart_export.h"
#include "forms/graph_legend_form.h"
#include "forms/graphs_form.h"
#include "forms/profiles_form.h"
#include "forms_test_registry.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

// The views of a run, fed as the program's observer feeds them.
class ViewsObserver : public osm::RunObserver {
public:
    ViewsObserver(osm::GraphsForm& g, osm::ProfilesForm& p) : g_(g), p_(p) {}
    void ClearGraphs() override { g_.ClearGraphs(); }
    void SetupOverlayCurves() override { g_.SetupOverlayCurves(); }
    void ResetProfiles() override { p_.ResetProfiles(); }
    void UpdateGraphs(int y, int mo) override { g_.UpdateGraphs(y, mo); }
    void UpdateProfiles(int y, int mo) override { p_.UpdateProfiles(y, mo); }
    void Yield() override { QCoreApplication::processEvents(); }

private:
    osm::GraphsForm& g_;
    osm::ProfilesForm& p_;
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

    void aRunFeedsGraphsAndProfiles() {
        osm::Model& m = s_->m;
        osm::GraphsForm graphs(m);
        osm::ProfilesForm profiles(m);
        graphs.resize(900, 600);
        profiles.resize(900, 600);
        graphs.SetupGraphs();
        profiles.SetupProfiles();
        ViewsObserver obs(graphs, profiles);
        osm::StartRun(m, obs, 48, 2);
        // Flow (variable 1, two sets, monthly) on chart 1: 24 months, no turnover
        // in a 10-year window.
        QCOMPARE(m.graphs.GraphSlot(1), int16_t{1});
        QCOMPARE(graphs.PointCount(1, 0), 24);
        QCOMPARE(graphs.PointCount(1, 1), 24);
        QCOMPARE(graphs.PointCount(1, 2), 0);
        // A profile holds the last repaint: every reach's block and its zero.
        const int perCurve = profiles.PointCount(1, 0);
        QVERIFY(perCurve > 2);
        graphs.RefreshCharts();
        profiles.RefreshCharts();
        QCOMPARE(graphs.ChartView(1)->SeriesPointCount(0), 24);
        QCOMPARE(profiles.ChartView(1)->SeriesPointCount(0), perCurve);
        // Empty slots stay hidden; filled ones are laid out inside the form.
        QVERIFY(graphs.ChartView(1)->geometry().width() > 0);
        QVERIFY(graphs.rect().contains(graphs.ChartView(6)->geometry()));
    }

    void chartsAreDrawnOnTheRedrawTickAndOnlyWhenShown() {
        osm::Model& m = s_->m;
        osm::GraphsForm graphs(m);
        osm::ProfilesForm profiles(m);
        graphs.resize(900, 600);
        graphs.SetupGraphs();
        profiles.SetupProfiles();
        ViewsObserver obs(graphs, profiles);
        osm::StartRun(m, obs, 48, 1);
        QTest::qWait(100);
        QCOMPARE(graphs.ChartView(1)->SeriesPointCount(0), 0);  // hidden: nothing drawn yet
        graphs.show();
        QCOMPARE(graphs.ChartView(1)->SeriesPointCount(0), 12);
        osm::StartRun(m, obs, 48, 2);
        QTRY_COMPARE(graphs.ChartView(1)->SeriesPointCount(0), 24);
    }

    void anOverlaidRunAddsASecondSetOfCurves() {
        osm::Model& m = s_->m;
        osm::GraphsForm graphs(m);
        osm::ProfilesForm profiles(m);
        graphs.SetupGraphs();
        profiles.SetupProfiles();
        ViewsObserver obs(graphs, profiles);
        osm::StartRun(m, obs, 48, 1);
        QCOMPARE(graphs.State(1).CurveCount(), 2);
        m.main.Overlay = true;
        osm::StartRun(m, obs, 48, 1);
        QCOMPARE(m.main.NRuns, int16_t{1});
        QCOMPARE(graphs.State(1).CurveCount(), 4);
        QCOMPARE(graphs.PointCount(1, 3), 12);
        QCOMPARE(graphs.State(1).formats[2].style, int16_t{2});
        QCOMPARE(profiles.State(1).CurveCount(), 4);
        QCOMPARE(profiles.PointCount(1, 3), profiles.PointCount(1, 0));
        graphs.RefreshCharts();
        QCOMPARE(graphs.ChartView(1)->SeriesCount(), 4);
    }

    void replotAfterAChangeOfReach() {
        osm::Model& m = s_->m;
        osm::GraphsForm graphs(m);
        osm::ProfilesForm profiles(m);
        graphs.SetupGraphs();
        profiles.SetupProfiles();
        ViewsObserver obs(graphs, profiles);
        osm::StartRun(m, obs, 48, 1);
        m.main.IndexReach = m.main.LastReach;
        graphs.ReplotGraphs();
        QCOMPARE(graphs.PointCount(1, 0), 12);
        QCOMPARE(graphs.State(1).curves[0][11], m.main.Results(0, 1, 1, m.main.LastReach, 12));
    }

    void aNewRunLabelsItsOwnWindow() {
        // A run that turned its window leaves the calendar past it; the next run
        // starts its axis at its own first year all the same.
        osm::Model& m = s_->m;
        m.graphs.TimeWindow = 2;
        osm::GraphsForm graphs(m);
        osm::ProfilesForm profiles(m);
        graphs.SetupGraphs();
        profiles.SetupProfiles();
        ViewsObserver obs(graphs, profiles);
        osm::StartRun(m, obs, 48, 5);
        QCOMPARE(graphs.State(1).axisLabels.front(), std::string("52"));
        osm::StartRun(m, obs, 60, 1);
        QCOMPARE(graphs.State(1).axisLabels.front(), std::string("60"));
        QCOMPARE(graphs.State(1).axisLabels.back(), std::string("62"));
        QCOMPARE(graphs.PointCount(1, 0), 12);
    }

    void repeatedYearLabelsAllStandUnderTheirTicks() {
        // Two centuries across: after the fold at 100 the labels repeat, and the
        // axis still shows one under each tick.
        osm::Model& m = s_->m;
        m.graphs.TimeWindow = 200;
        osm::GraphsForm graphs(m);
        graphs.resize(900, 600);
        graphs.SetupGraphs();
        graphs.RefreshCharts();
        const auto& labels = graphs.State(1).axisLabels;
        QCOMPARE(labels.size(), size_t{11});
        QCOMPARE(labels[0], std::string("48"));
        QCOMPARE(labels[5], std::string("48"));
        auto* axis = qobject_cast<QCategoryAxis*>(graphs.ChartView(1)->chart()->axes(Qt::Horizontal).value(0));
        QVERIFY(axis);
        QCOMPARE(axis->count(), 11);
        QCOMPARE(axis->categoriesLabels().at(5).trimmed(), QStringLiteral("48"));
        QCOMPARE(axis->endValue(axis->categoriesLabels().at(10)), 2400.0);
    }

    void doubleClickShowsTheKey() {
        osm::Model& m = s_->m;
        osm::GraphsForm graphs(m);
        graphs.resize(900, 600);
        graphs.SetupGraphs();
        graphs.show();
        QTest::mouseDClick(graphs.ChartView(1)->viewport(), Qt::LeftButton);
        QCOMPARE(m.graphs.ClickedGraph, int16_t{1});
        QCOMPARE(QString::fromStdString(m.graphs.ClickedKind), QStringLiteral("time_series"));
        auto* key = graphs.findChild<osm::GraphLegendForm*>();
        QVERIFY(key);
        QCOMPARE(key->Variable(), 1);
        QCOMPARE(key->LabelCount(), int(m.graphs.VarSets(1)));
        QCOMPARE(key->LabelText(1), QString::fromStdString(m.graphs.VarLabel(1, 1)));

        osm::ProfilesForm profiles(m);
        profiles.resize(900, 600);
        profiles.SetupProfiles();
        profiles.show();
        QTest::mouseDClick(profiles.ChartView(2)->viewport(), Qt::LeftButton);
        QCOMPARE(QString::fromStdString(m.graphs.ClickedKind), QStringLiteral("ds_profile"));
        auto* pkey = profiles.findChild<osm::GraphLegendForm*>();
        QVERIFY(pkey);
        QCOMPARE(pkey->Variable(), int(m.graphs.ProfSlot(2)));
    }

    void aChartSavesAsPngAndSvg() {
        osm::Model& m = s_->m;
        osm::GraphsForm graphs(m);
        graphs.resize(900, 600);
        graphs.SetupGraphs();
        graphs.RefreshCharts();
        QTemporaryDir dir;
        const QString png = dir.filePath("chart.png"), svg = dir.filePath("chart.svg");
        QVERIFY(graphs.ChartView(1)->SavePng(png));
        QVERIFY(graphs.ChartView(1)->SaveSvg(svg));
        QFile p(png), s(svg);
        QVERIFY(p.open(QIODevice::ReadOnly));
        QCOMPARE(p.read(8), QByteArray("\x89PNG\r\n\x1a\n"));
        QVERIFY(s.open(QIODevice::ReadOnly));
        QVERIFY(s.readAll().contains("<svg"));
        QVERIFY(!graphs.ChartView(1)->SavePng(dir.filePath("no/such/folder/chart.png")));
        // The context menu's save goes by the name's ending.
        QVERIFY(graphs.ChartView(1)->SaveAs(dir.filePath("upper.SVG")));
        QFile upper(dir.filePath("upper.SVG"));
        QVERIFY(upper.open(QIODevice::ReadOnly));
        QVERIFY(upper.readAll().contains("<svg"));
        QVERIFY(!graphs.ChartView(1)->SaveAs(dir.filePath("chart.bmp")));
        QVERIFY(!QFile::exists(dir.filePath("chart.bmp")));
    }
};

}  // namespace

OSM_FORMS_TEST(GraphsFormTest);
#include "graphs_form_test.moc"
