// The desktop forms on the small river, physical model only unless told: the
// main window's menu and views, the run controls, the graphics setup form, the
// dump form, and the graphs and profiles fed by a run.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>

#include <functional>

#include "core/model.h"
#include "core/run_driver.h"
#include "forms/chart_export.h"
#include "forms/dump_form.h"
#include "forms/file_dialogs.h"
#include "forms/forms_observer.h"
#include "forms/graph_legend_form.h"
#include "forms/graphs_form.h"
#include "forms/main_window.h"
#include "forms/profiles_form.h"
#include "forms/set_graphics_form.h"
#include "forms/status_form.h"
#include "presentation/graph_table.h"
#include "presentation/graphics_setup.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

// Answers every file dialog with a fixed name and counts the questions.
class FixedDialogs : public osm::FileDialogs {
public:
    QString answer;
    int asked = 0;
    QString Open(QWidget*, const QString&, const QString&, const QString&) override { return ++asked, answer; }
    QString Save(QWidget*, const QString&, const QString&, const QString&) override { return ++asked, answer; }
};

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

// Runs `f` at the driver's next yield.
void atNextYield(std::function<void()> f) { QTimer::singleShot(0, std::move(f)); }

QString mark(const QTableWidget* grid, int row) { return grid->item(row, 1)->text(); }

void toggleRows(QTableWidget* grid, int first, int last) {
    grid->clearSelection();
    grid->setRangeSelected(QTableWidgetSelectionRange(first, 0, last, 1), true);
    osm::DumpForm::ToggleSelected(grid);
}

class FormsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;  // the small river's sand balance notes among them
    FixedDialogs dialogs;
    std::unique_ptr<osm::MainWindow> w;
    osm::FormsRunObserver observer;
    std::unique_ptr<osm::StatusForm> f;

    osm::Model& m() { return s->m; }
    osm::Graphs& g() { return s->m.graphs; }
    void load(bool physOnly = true) {
        s = osm::test::StartSmallModel(physOnly);
        m().messages = &messages;
    }
    void start(bool physOnly) {
        load(physOnly);
        osm::SetGraphSetupDefaults(m());
        w = std::make_unique<osm::MainWindow>(m(), &dialogs);
        w->resize(1200, 800);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        w->Status()->txNYears->setText(QStringLiteral("1"));
    }
    void startStatus() {
        load();
        f = std::make_unique<osm::StatusForm>(m(), observer);
        observer.SetStatus(f.get());
        f->txNYears->setText(QStringLiteral("1"));
    }
    void startSetup() {
        load();
        osm::SetGraphSetupDefaults(m());
        for (int i = 1; i <= 6; ++i) g().MapSlot(i) = 0;
    }
    void startDump() {
        load();
        g().DumpVar.fill(false);
        g().DumpReach.fill(false);
    }
    void choose(const std::string& path) { dialogs.answer = QString::fromStdString(path); }
    // "Start caption|Pause caption|Pause on or off|CumMonth|paused|stopped".
    QString now() {
        return QStringList{f->BtStart->text(), f->btPause->text(), f->btPause->isEnabled() ? "on" : "off",
                           QString::number(m().main.CumMonth), m().main.Paused ? "paused" : "",
                           m().main.StopRun ? "stopped" : ""}
            .join('|');
    }

private slots:
    void init() {
        messages.seen.clear();
        dialogs = FixedDialogs{};
    }
    void cleanup() {
        observer.SetStatus(nullptr);
        f.reset();
        w.reset();
        s.reset();
    }

    // The main window.

    void menuAndTheEntriesHiddenInThePhysicalOnlyMode() {
        start(false);
        QStringList captions;
        for (const QAction* a : w->menuBar()->actions()) captions << a->text();
        QCOMPARE(captions, (QStringList{"File", "Policies", "Parameters", "View", "Options", "Help"}));
        QVERIFY(!w->Entry("mnuSed")->isEnabled());  // its form comes later
        QVERIFY(w->Entry("mnuTrout")->isVisible());
        w.reset();
        start(true);
        for (const char* hidden : {"mnuLoadProdPar", "mnuSaveProdPar", "mnublank99", "MnuPopParLoad", "MnuSavePopPars",
                                   "mnublank4", "mnuLoadTribHabData", "mnuSaveTribHabData", "mnublank6", "MnuPopharv",
                                   "mnupophatch", "mnubaseprod", "mnuVegetation", "mnuReachPop", "mnuAnimal",
                                   "mnupopdyn", "mnupophab", "mnuTribHab", "mnuTrout"})
            QVERIFY2(!w->Entry(QString::fromLatin1(hidden))->isVisible(), hidden);
        for (const char* kept : {"mnuSed", "mnuRaft", "mnuRecreation", "mnuLoadRec", "mnublank5", "mnuOSDRelease"})
            QVERIFY2(w->Entry(QString::fromLatin1(kept))->isVisible(), kept);
    }

    void selectGraphicsAppliesToTheWindowOrReportsWhatItCannotShow() {
        start(true);
        w->Entry("mnuSelGraphics")->trigger();
        auto* sf = w->findChild<osm::SetGraphicsForm*>();
        QVERIFY(sf);
        sf->txTimeWindow->setText(QStringLiteral("0"));  // refused: nothing is applied
        sf->btApply->click();
        QVERIFY(messages.seen.empty());
        QVERIFY(sf->lbNote->text().contains(QStringLiteral("Number of Years to Display")));
        QCOMPARE(g().TimeWindow, 10);
        sf->txTimeWindow->setText(QStringLiteral("10"));
        sf->chkVisForms[2]->setChecked(false);
        sf->graphSlots[0].visible->setChecked(false);
        sf->btApply->click();
        QVERIFY(!w->Profiles()->isVisible());
        w->Status()->BtStart->click();
        QCOMPARE(w->Graphs()->PointCount(1, 0), 0);
        QVERIFY(w->Graphs()->PointCount(2, 0) >= 12);
        QCOMPARE(w->Profiles()->PointCount(1, 0), 0);
    }

    void aMissingOrBadFileFromTheMenuKeepsTheOneInForce() {
        start(true);
        const int reaches = w->Status()->cbSelReach->count();
        choose(s->folder.File("missing.csv"));
        w->Entry("mnuFNewRBrks")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("missing.csv") != std::string::npos);
        QCOMPARE(w->Status()->cbSelReach->count(), reaches);
        const std::string before = m().main.PhyFile;
        choose(s->folder.Write("bad.phy", "nonsense\n"));
        w->Entry("mnuLoadPhysPar")->trigger();
        QCOMPARE(messages.seen.size(), size_t{2});
        QVERIFY(messages.seen[1].text.find("bad.phy") != std::string::npos);
        QCOMPARE(m().main.PhyFile, before);
    }

    void graphicsSetupSavedAndLoadedFromTheMenu() {
        start(true);
        g().TimeWindow = 17;
        g().VisForms(3) = 0;
        choose(s->folder.File("mine.grs"));
        w->Entry("mnuSaveGraphSet")->trigger();
        osm::SetGraphSetupDefaults(m());
        w->Entry("mnuGraphSet")->trigger();
        QCOMPARE(g().TimeWindow, 17);
        QVERIFY(!w->Profiles()->isVisible());
        // A file that fails sets the defaults and rebuilds the views.
        choose(s->folder.Write("short.grs", "\"VisForms-1\",1\n\"VisForms-2\",0\n"));
        w->Entry("mnuGraphSet")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(w->Profiles()->isVisible());
    }

    // The run controls.

    void startRunsEveryMonthWithTheRunningCaptions() {
        startStatus();
        QCOMPARE(now(), QStringLiteral("Start|Pause|off|0||"));
        QString running;
        atNextYield([&] { running = now(); });
        f->BtStart->click();
        QCOMPARE(running, QStringLiteral("Stop|Pause|on|1||"));
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|12||stopped"));
        QCOMPARE(f->lbMon->text(), QString::fromStdString(m().main.MonthName(12)));
    }

    void stopWhilePausedWaitsUntilTheNextStart() {
        startStatus();
        QString afterStop, secondRunning;
        atNextYield([&] {
            atNextYield([&] {
                f->BtStart->click();  // Stop, while paused
                afterStop = now();
                // The next Start begins a new run inside the old pause wait.
                atNextYield([&] { secondRunning = now(); });
                f->txNYears->setText(QStringLiteral("2"));
                f->BtStart->click();
            });
            f->btPause->click();
        });
        f->BtStart->click();
        QCOMPARE(afterStop, QStringLiteral("Start|Pause|off|1|paused|stopped"));  // the pause stays
        QCOMPARE(secondRunning, QStringLiteral("Stop|Pause|on|1||"));
        // The first run woke after the second ended, found the stop and ran no further month.
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|24||stopped"));
    }

    void reachListAndIndexStagesWriteTheModel() {
        startStatus();
        f->cbSelReach->setCurrentIndex(1);
        QCOMPARE(m().main.IndexReach, m().main.FirstReach + 1);
        f->txtIndSlice[1]->setText(QStringLiteral("0"));  // zero is ignored
        QCOMPARE(m().main.IndexQ(2), 20000.0f);
    }

    void aYearPastTheRecordIsRefusedWithAMessage() {
        startStatus();
        f->txStartYr->setText(QStringLiteral("148"));
        f->BtStart->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(messages.seen[0].kind, std::string("run not started"));
        QVERIFY(messages.seen[0].text.find("2047") != std::string::npos);
        QCOMPARE(now(), QStringLiteral("Start|Pause|off|0||"));
    }

    // The graphics setup form.

    void theWindowAndMonthWriteAtOnceAndAMonthThatDoesNotFitIsKept() {
        startSetup();
        osm::SetGraphicsForm sf(m());
        sf.txTimeWindow->setText(QStringLiteral("16"));
        QCOMPARE(g().TimeWindow, 16);
        sf.txtProfMonth->setText(QStringLiteral("6"));
        sf.txtProfMonth->setText(QStringLiteral("99999"));
        QCOMPARE(m().main.ProfileMonth, 6);
    }

    void applyReadsTheEditedPagesOnly() {
        startSetup();
        osm::SetGraphicsForm sf(m());
        QSignalSpy applied(&sf, &osm::SetGraphicsForm::applied);
        g().ProfSlot(1) = 9;  // changed behind the form; its page is not edited
        sf.graphSlots[0].visible->setChecked(false);
        sf.graphSlots[1].select->setCurrentIndex(6);
        sf.graphSlots[1].yMin->setText(QStringLiteral("2.5"));
        sf.chkVisForms[2]->setChecked(false);
        sf.btApply->click();
        QCOMPARE(applied.count(), 1);
        QCOMPARE(g().GraphSlot(1), 0);
        QCOMPARE(g().GraphSlot(2), 7);
        QCOMPARE(g().YMin(1, 2), 2.5f);
        QCOMPARE(g().ProfSlot(1), 9);
        QCOMPARE(g().VisForms(3), 0);
    }

    void limitCheckRaisesATopThatIsNotAboveTheBottom() {
        startSetup();
        osm::SetGraphicsForm sf(m());
        QCOMPARE(sf.graphSlots[0].yMax->text(), QString());  // automatic top
        sf.graphSlots[0].yMin->setText(QStringLiteral("5"));
        sf.graphSlots[0].yMax->setText(QStringLiteral("3"));
        sf.profileSlots[3].yMin->setText(QStringLiteral("1"));  // top left empty: Val gives 0
        sf.graphSlots[4].yMax->setText(QStringLiteral("8"));
        sf.btApply->click();
        QCOMPARE(sf.graphSlots[0].yMax->text(), QStringLiteral("5.0001"));
        QCOMPARE(g().YMax(2, 4), 1.0001f);
        QCOMPARE(sf.graphSlots[4].yMax->text(), QStringLiteral("8"));  // already above
    }

    void matchGivesTheProfilesTheGraphsChoice() {
        startSetup();
        osm::SetGraphicsForm sf(m());
        sf.graphSlots[0].select->setCurrentIndex(4);
        sf.graphSlots[1].visible->setChecked(false);
        sf.graphSlots[2].yMax->setText(QStringLiteral("12"));
        sf.btMatch->click();
        sf.btApply->click();
        QCOMPARE(g().ProfSlot(1), 5);
        QCOMPARE(g().ProfSlot(2), 0);
        QCOMPARE(g().YMax(2, 3), 12.0f);
    }

    // The dump form.

    void aToggleFlipsEachChosenRowAndCancelKeepsTheModel() {
        startDump();
        g().DumpVar(2) = true;
        osm::DumpForm d(m(), dialogs);
        toggleRows(d.g, 1, 3);
        QCOMPARE(QStringList({mark(d.g, 0), mark(d.g, 1), mark(d.g, 2), mark(d.g, 3)}).join('|'),
                 QStringLiteral("|X||X"));  // row 2 was on
        QVERIFY(d.g->selectionModel()->selectedRows().isEmpty());
        d.cmdCancel->click();
        QVERIFY(g().DumpVar(2));
        QVERIFY(!g().DumpVar(1));
    }

    void anEmptyChoiceOrACancelledSaveStaysOpen() {
        startDump();
        g().DumpVar(0) = true;
        osm::DumpForm d(m(), dialogs);
        d.cmdOK->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(messages.seen[0].text,
                 std::string("No variables or reaches selected. Select variables/reaches and click on OK or click "
                             "on Cancel button to Exit."));
        QCOMPARE(dialogs.asked, 0);
        toggleRows(d.gR, 0, 0);
        d.cmdOK->click();
        QCOMPARE(dialogs.asked, 1);
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(d.result(), int(QDialog::Rejected));
    }

    void okWritesTheChosenColumns() {
        startDump();
        osm::DumpForm d(m(), dialogs);
        toggleRows(d.g, 0, 0);
        toggleRows(d.gR, 1, 1);
        choose(s->folder.File("chosen.out"));
        d.cmdOK->click();
        QVERIFY2(messages.seen.empty(), messages.seen.empty() ? "" : messages.seen[0].text.c_str());
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QVERIFY(g().DumpReach(m().main.FirstReach + 1));
        QCOMPARE(s->folder.Read("chosen.out"),
                 "\"Yr\",\"Month\",\"CumMonth\",\"2 - " + osm::GraphRowLabel(g(), 1, 1) + "\"\r\n");
    }

    // The graphs and profiles.

    void aRunFeedsTheChartsWhichDrawOnlyWhenShown() {
        load();
        Views v(m());
        osm::StartRun(m(), v.obs, 48, 2);
        QCOMPARE(v.graphs.PointCount(1, 1), 24);
        const int perCurve = v.profiles.PointCount(1, 0);
        QVERIFY(perCurve > 2);
        QCoreApplication::processEvents();
        QCOMPARE(v.graphs.ChartView(1)->SeriesPointCount(0), 0);  // hidden: nothing drawn
        v.graphs.show();
        QCOMPARE(v.graphs.ChartView(1)->SeriesPointCount(0), 24);
        v.profiles.RefreshCharts();
        QCOMPARE(v.profiles.ChartView(1)->SeriesPointCount(0), perCurve);
    }

    void aNewRunLabelsItsOwnWindow() {
        load();
        g().TimeWindow = 2;  // a run that turned its window leaves the calendar past it
        Views v(m());
        osm::StartRun(m(), v.obs, 48, 5);
        osm::StartRun(m(), v.obs, 60, 1);
        QCOMPARE(v.graphs.State(1).axisLabels.front(), std::string("60"));
        QCOMPARE(v.graphs.PointCount(1, 0), 12);
    }

    void repeatedYearLabelsAllStandUnderTheirTicks() {
        load();
        g().TimeWindow = 200;  // over two centuries the labels repeat after the fold at 100
        osm::GraphsForm graphs(m());
        graphs.SetupGraphs();
        graphs.RefreshCharts();
        auto* axis = qobject_cast<QCategoryAxis*>(graphs.ChartView(1)->chart()->axes(Qt::Horizontal).value(0));
        QVERIFY(axis);
        QCOMPARE(axis->count(), 11);
        QCOMPARE(axis->categoriesLabels().at(5).trimmed(), QStringLiteral("48"));
        QCOMPARE(axis->endValue(axis->categoriesLabels().at(10)), 2400.0);
    }

    void doubleClickShowsTheKey() {
        load();
        Views v(m());
        v.profiles.show();
        QTest::mouseDClick(v.profiles.ChartView(2)->viewport(), Qt::LeftButton);
        QCOMPARE(QString::fromStdString(g().ClickedKind), QStringLiteral("ds_profile"));
        auto* key = v.profiles.findChild<osm::GraphLegendForm*>();
        QVERIFY(key);
        QCOMPARE(key->Variable(), int(g().ProfSlot(2)));
    }

    void onlyFilledProfileSlotsAreLaidOut() {
        load();
        g().ProfSlot(2) = g().ProfSlot(5) = 0;
        osm::ProfilesForm p(m());
        p.resize(1200, 800);
        p.show();
        p.SetupProfiles();
        QVERIFY(p.ChartView(2)->isHidden());
        // Four charts three times as wide as high: two columns of two.
        QCOMPARE(p.ChartView(3)->geometry().top(), p.ChartView(1)->geometry().top());
        QVERIFY(p.ChartView(4)->geometry().top() > p.ChartView(1)->geometry().bottom());
    }

    void aChartSavesByTheNamesEnding() {
        load();
        osm::GraphsForm graphs(m());
        graphs.SetupGraphs();
        graphs.RefreshCharts();
        osm::ChartBox* chart = graphs.ChartView(1);
        QTemporaryDir dir;
        QVERIFY(chart->SaveAs(dir.filePath("chart.png")));
        QVERIFY(chart->SaveAs(dir.filePath("upper.SVG")));
        QFile png(dir.filePath("chart.png")), svg(dir.filePath("upper.SVG"));
        QVERIFY(png.open(QIODevice::ReadOnly) && svg.open(QIODevice::ReadOnly));
        QCOMPARE(png.read(8), QByteArray("\x89PNG\r\n\x1a\n"));
        QVERIFY(svg.readAll().contains("<svg"));
        QVERIFY(!chart->SaveAs(dir.filePath("chart.bmp")));
        QVERIFY(!QFile::exists(dir.filePath("chart.bmp")));
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    FormsTest t;
    return QTest::qExec(&t, argc, argv);
}

#include "forms_test.moc"
