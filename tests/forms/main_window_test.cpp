// The main window on a small river: its menu, the hiding of the biological
// entries in the physical-only mode, a run feeding the charts and profiles, the
// overlay's second set of curves, the tiling of the views, and the graphics
// setup saved, loaded and failing to load.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "core/model.h"
#include "forms/file_dialogs.h"
#include "forms/graphs_form.h"
#include "forms/main_window.h"
#include "forms/profiles_form.h"
#include "forms/set_graphics_form.h"
#include "forms/status_form.h"
#include "forms_test_registry.h"
#include "presentation/graphics_setup.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

using osm::MainWindow;

class FixedDialogs : public osm::FileDialogs {
public:
    QString answer, title, ext;
    QString Open(QWidget*, const QString& t, const QString& e, const QString&) override {
        title = t, ext = e;
        return answer;
    }
    QString Save(QWidget*, const QString& t, const QString& e, const QString&) override {
        title = t, ext = e;
        return answer;
    }
};

// Control names of a menu's entries, separators included, in their order.
QStringList names(const QMenu* menu) {
    QStringList out;
    for (const QAction* a : menu->actions()) out << a->objectName();
    return out;
}

// Curves of a chart that hold points.
int curvesWithPoints(const osm::GraphsForm* g, int chart) {
    int n = 0;
    for (int c = 0; c < 24; ++c) n += g->PointCount(chart, c) > 0 ? 1 : 0;
    return n;
}

class MainWindowTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;
    FixedDialogs dialogs;
    std::unique_ptr<MainWindow> w;

    osm::Model& m() { return s->m; }
    void start(bool physOnly) {
        s = osm::test::StartSmallModel(physOnly);
        m().messages = &messages;
        osm::SetGraphSetupDefaults(m());
        w = std::make_unique<MainWindow>(m(), &dialogs);
        w->resize(1200, 800);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        w->Status()->txNYears->setText(QStringLiteral("1"));
    }
    void run() { w->Status()->BtStart->click(); }

private slots:
    void init() {
        messages.seen.clear();
        dialogs = FixedDialogs{};
    }
    void cleanup() {
        w.reset();
        s.reset();
    }

    void menuHoldsEveryEntryInItsOrder() {
        start(false);
        QCOMPARE(w->windowTitle(), QStringLiteral("Ostrel Gorge Ecosystem Model - Nov.17/98"));
        const QList<QAction*> top = w->menuBar()->actions();
        QCOMPARE(top.size(), 5);
        QStringList captions;
        for (const QAction* a : top) captions << a->text();
        QCOMPARE(captions, (QStringList{"File", "Policies", "Parameters", "View", "Options"}));
        QCOMPARE(names(top[0]->menu()),
                 (QStringList{"mnuFNewRBrks", "mnublank0", "mnuGraphSet", "mnuSaveGraphSet", "mnublank1",
                              "mnuLoadPhysPar", "mnuSavePhysPar", "mnublank2", "mnuLoadProdPar", "mnuSaveProdPar",
                              "mnublank99", "MnuPopParLoad", "MnuSavePopPars", "mnublank4", "mnuLoadTribHabData",
                              "mnuSaveTribHabData", "mnublank6", "mnuLoadRec", "mnuSaveRec", "mnublank5",
                              "mnuLoadOSDExp", "mnuSaveOSDExp", "mnublank65", "mnuDump", "mnublank3", "mnuExit"}));
        QCOMPARE(names(top[2]->menu()),
                 (QStringList{"mnuSed", "mnubaseprod", "mnuVegetation", "mnuReachPop", "mnuAnimal", "mnuRecreation"}));
        QCOMPARE(names(w->Entry("mnuAnimal")->menu()), (QStringList{"mnupopdyn", "mnupophab", "mnuTribHab", "trophlink"}));
        QCOMPARE(w->Entry("mnuOSDRelease")->text(), QStringLiteral("Set OSD Release Hydrograph (Diurnal/Spike)"));
        QCOMPARE(w->Entry("mnuSelGraphics")->text(), QStringLiteral("Select Graphics"));
        QCOMPARE(w->Entry("mnuMapsRedraw")->text(), QStringLiteral("RedrawMaps"));
        QVERIFY(w->Entry("mnublank0")->isSeparator());
        // Entries with a command are on; those whose forms come later are off.
        QVERIFY(w->Entry("mnuGraphSet")->isEnabled());
        QVERIFY(w->Entry("mnuDump")->isEnabled());
        QVERIFY(!w->Entry("mnuSed")->isEnabled());
        // The whole model hides nothing.
        QVERIFY(w->Entry("mnuTrout")->isVisible());
        QVERIFY(w->Entry("mnublank99")->isVisible());
    }

    void physicalOnlyHidesTheBiologicalEntries() {
        start(true);
        for (const char* hidden : {"mnuLoadProdPar", "mnuSaveProdPar", "mnublank99", "MnuPopParLoad", "MnuSavePopPars",
                                   "mnublank4", "mnuLoadTribHabData", "mnuSaveTribHabData", "mnublank6", "MnuPopharv",
                                   "mnupophatch", "mnubaseprod", "mnuVegetation", "mnuReachPop", "mnuAnimal",
                                   "mnupopdyn", "mnupophab", "mnuTribHab", "mnuTrout"})
            QVERIFY2(!w->Entry(QString::fromLatin1(hidden))->isVisible(), hidden);
        for (const char* kept : {"mnuSed", "mnuRaft", "mnuRecreation", "mnuLoadRec", "mnublank5", "mnuOSDRelease"})
            QVERIFY2(w->Entry(QString::fromLatin1(kept))->isVisible(), kept);
    }

    void aRunFeedsTheChartsAndProfiles() {
        start(true);
        QCOMPARE(w->Graphs()->PointCount(1, 0), 0);
        run();
        QVERIFY(w->Graphs()->PointCount(1, 0) >= 12);
        QVERIFY(w->Profiles()->PointCount(1, 0) > 0);
        QVERIFY(w->Graphs()->isVisible());
        QVERIFY(w->Profiles()->isVisible());
    }

    void anOverlaidRunAddsASecondSetOfCurves() {
        start(true);
        run();
        const int single = curvesWithPoints(w->Graphs(), 1);
        QVERIFY(single > 0);
        w->Status()->chkOverlay->setChecked(true);
        run();
        QCOMPARE(curvesWithPoints(w->Graphs(), 1), 2 * single);
        w->Status()->chkOverlay->setChecked(false);
        run();
        QCOMPARE(curvesWithPoints(w->Graphs(), 1), single);
    }

    void viewsThatAreOffAreHiddenAndNotFed() {
        start(true);
        m().graphs.VisForms(1) = 0;
        w->ChangeLayout();
        QVERIFY(!w->Graphs()->isVisible());
        QVERIFY(w->Profiles()->isVisible());
        run();
        QCOMPARE(w->Graphs()->PointCount(1, 0), 0);
        QVERIFY(w->Profiles()->PointCount(1, 0) > 0);
        // The status form and the one view share the window side by side.
        const QRect status = w->Status()->geometry(), profiles = w->Profiles()->geometry();
        QVERIFY(status.right() < profiles.left());
        QVERIFY(profiles.width() > status.width());
        w->resize(1500, 900);
        QTest::qWait(20);
        QVERIFY(w->Profiles()->geometry().right() > profiles.right());
    }

    void graphicsSetupSavedAndLoadedBack() {
        start(true);
        osm::Graphs& g = m().graphs;
        g.TimeWindow = 17;
        g.GraphSlot(2) = 0;
        g.YMax(1, 3) = 55;
        g.VisForms(3) = 0;
        m().main.IndexQ(4) = 52000;
        dialogs.answer = QString::fromStdString(s->folder.File("mine.grs"));
        w->Entry("mnuSaveGraphSet")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Save Graphics Setup to File"));
        QCOMPARE(dialogs.ext, QStringLiteral("grs"));
        osm::SetGraphSetupDefaults(m());
        QCOMPARE(g.TimeWindow, 10);
        w->Entry("mnuGraphSet")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Load Graphics Setup File"));
        QCOMPARE(g.TimeWindow, 17);
        QCOMPARE(g.GraphSlot(2), 0);
        QCOMPARE(g.YMax(1, 3), 55.0f);
        QCOMPARE(m().main.IndexQ(4), 52000.0f);
        QCOMPARE(w->Status()->txtIndSlice[3]->text(), QStringLiteral("52000"));
        QCOMPARE(m().main.GrsFile, s->folder.File("mine.grs"));
        // The views follow the file.
        QVERIFY(w->Graphs()->isVisible());
        QVERIFY(!w->Profiles()->isVisible());
        QVERIFY(messages.seen.empty());
    }

    void aFailedLoadSetsTheDefaultsAndRebuildsTheViews() {
        start(true);
        osm::Graphs& g = m().graphs;
        g.VisForms(1) = 0;
        g.VisForms(3) = 0;
        g.TimeWindow = 16;
        g.MapSlot(1) = 4;
        w->ChangeLayout();
        s->folder.Write("short.grs", "\"VisForms-1\",1\n\"VisForms-2\",0\n");
        dialogs.answer = QString::fromStdString(s->folder.File("short.grs"));
        w->Entry("mnuGraphSet")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.rfind("Failed to load Graphics SetUp File \n", 0) == 0);
        QVERIFY(messages.seen[0].text.find("short.grs\n Will Use Defaults") != std::string::npos);
        QCOMPARE(g.TimeWindow, 10);
        QCOMPARE(g.MapSlot(1), 4);  // the maps keep their choice
        QVERIFY(w->Graphs()->isVisible());
        QVERIFY(w->Profiles()->isVisible());
    }

    void selectGraphicsAppliesToTheWindow() {
        start(true);
        w->Entry("mnuSelGraphics")->trigger();
        auto* f = w->findChild<osm::SetGraphicsForm*>();
        QVERIFY(f);
        QVERIFY(f->isVisible());
        f->chkVisForms[2]->setChecked(false);
        f->graphSlots[0].visible->setChecked(false);
        f->btApply->click();
        QVERIFY(!w->Profiles()->isVisible());
        QVERIFY(w->Graphs()->isVisible());
        QCOMPARE(m().graphs.GraphSlot(1), 0);
        run();
        QCOMPARE(w->Profiles()->PointCount(1, 0), 0);
        QVERIFY(w->Graphs()->PointCount(2, 0) > 0);
        f->close();
    }

    void aSetupTheViewsCannotShowIsReported() {
        start(true);
        w->Entry("mnuSelGraphics")->trigger();
        auto* f = w->findChild<osm::SetGraphicsForm*>();
        QVERIFY(f);
        f->txTimeWindow->setText(QStringLiteral("0"));
        f->btApply->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("time window of 0") != std::string::npos);
        QVERIFY(w->isVisible());
        f->txTimeWindow->setText(QStringLiteral("10"));
        f->btApply->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        run();
        QVERIFY(w->Graphs()->PointCount(1, 0) >= 12);
        f->close();
    }

    void aNewReachBreaksFileRefillsTheReachList() {
        start(true);
        auto* list = w->Status()->cbSelReach;
        const int reaches = list->count();
        dialogs.answer = QString::fromStdString(m().main.ReachFile);
        w->Entry("mnuFNewRBrks")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Open a new Reach Breaks File"));
        QCOMPARE(dialogs.ext, QStringLiteral("csv"));
        QVERIFY2(messages.seen.empty(), messages.seen.empty() ? "" : messages.seen[0].text.c_str());
        QCOMPARE(list->count(), reaches);
        // A file that is not there is reported and changes nothing.
        dialogs.answer = QString::fromStdString(s->folder.File("missing.csv"));
        w->Entry("mnuFNewRBrks")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("missing.csv") != std::string::npos);
        QCOMPARE(list->count(), reaches);
        run();
        QVERIFY(w->Graphs()->PointCount(1, 0) >= 12);
    }

    void aCancelledDialogDoesNothing() {
        start(true);
        const std::string before = m().main.PhyFile;
        w->Entry("mnuLoadPhysPar")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Load Physical Submodel Parameter File"));
        QCOMPARE(dialogs.ext, QStringLiteral("phy"));
        QCOMPARE(m().main.PhyFile, before);
        QVERIFY(messages.seen.empty());
    }

    void aBadParameterFileIsReportedAndKeepsTheFileInForce() {
        start(true);
        const std::string before = m().main.PhyFile;
        s->folder.Write("bad.phy", "nonsense\n");
        dialogs.answer = QString::fromStdString(s->folder.File("bad.phy"));
        w->Entry("mnuLoadPhysPar")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("bad.phy") != std::string::npos);
        QCOMPARE(m().main.PhyFile, before);
    }
};

}  // namespace

OSM_FORMS_TEST(MainWindowTest);
#include "main_window_test.moc"
