// The main window on a small river: its menu, the entries hidden in the
// physical-only mode, a run feeding the views, the views switched off, and the
// files loaded and saved from the menu.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
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
    QString answer, ext;
    QString Open(QWidget*, const QString&, const QString& e, const QString&) override {
        ext = e;
        return answer;
    }
    QString Save(QWidget*, const QString&, const QString& e, const QString&) override {
        ext = e;
        return answer;
    }
};

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
    void choose(const std::string& path) { dialogs.answer = QString::fromStdString(path); }

private slots:
    void init() {
        messages.seen.clear();
        dialogs = FixedDialogs{};
    }
    void cleanup() {
        w.reset();
        s.reset();
    }

    void menuAndTheEntriesHiddenInThePhysicalOnlyMode() {
        start(false);
        QStringList captions;
        for (const QAction* a : w->menuBar()->actions()) captions << a->text();
        QCOMPARE(captions, (QStringList{"File", "Policies", "Parameters", "View", "Options"}));
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

    void aRunFeedsTheViewsThatAreOn() {
        start(true);
        m().graphs.VisForms(1) = 0;
        w->ChangeLayout();
        QVERIFY(!w->Graphs()->isVisible());
        run();
        QCOMPARE(w->Graphs()->PointCount(1, 0), 0);
        QVERIFY(w->Profiles()->PointCount(1, 0) > 0);
        // The status form and the one view share the window side by side.
        QVERIFY(w->Status()->geometry().right() < w->Profiles()->geometry().left());
        m().graphs.VisForms(1) = 1;
        w->ChangeLayout();
        run();
        QVERIFY(w->Graphs()->isVisible());
        QVERIFY(w->Graphs()->PointCount(1, 0) >= 12);
    }

    void graphicsSetupSavedAndLoadedFromTheMenu() {
        start(true);
        osm::Graphs& g = m().graphs;
        g.TimeWindow = 17;
        g.VisForms(3) = 0;
        m().main.IndexQ(4) = 52000;
        choose(s->folder.File("mine.grs"));
        w->Entry("mnuSaveGraphSet")->trigger();
        QCOMPARE(dialogs.ext, QStringLiteral("grs"));
        osm::SetGraphSetupDefaults(m());
        w->Entry("mnuGraphSet")->trigger();
        QCOMPARE(g.TimeWindow, 17);
        QCOMPARE(w->Status()->txtIndSlice[3]->text(), QStringLiteral("52000"));
        QCOMPARE(m().main.GrsFile, s->folder.File("mine.grs"));
        QVERIFY(!w->Profiles()->isVisible());
        QVERIFY(messages.seen.empty());
        // A file that fails sets the defaults and rebuilds the views.
        choose(s->folder.Write("short.grs", "\"VisForms-1\",1\n\"VisForms-2\",0\n"));
        w->Entry("mnuGraphSet")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("short.grs\n Will Use Defaults") != std::string::npos);
        QCOMPARE(g.TimeWindow, 10);
        QVERIFY(w->Profiles()->isVisible());
    }

    void selectGraphicsAppliesToTheWindowOrReportsWhatItCannotShow() {
        start(true);
        w->Entry("mnuSelGraphics")->trigger();
        auto* f = w->findChild<osm::SetGraphicsForm*>();
        QVERIFY(f);
        f->txTimeWindow->setText(QStringLiteral("0"));
        f->btApply->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("time window of 0") != std::string::npos);
        f->txTimeWindow->setText(QStringLiteral("10"));
        f->chkVisForms[2]->setChecked(false);
        f->graphSlots[0].visible->setChecked(false);
        f->btApply->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(!w->Profiles()->isVisible());
        run();
        QCOMPARE(w->Graphs()->PointCount(1, 0), 0);
        QVERIFY(w->Graphs()->PointCount(2, 0) >= 12);
        QCOMPARE(w->Profiles()->PointCount(1, 0), 0);
    }

    void aNewReachBreaksFileRefillsTheReachList() {
        start(true);
        auto* list = w->Status()->cbSelReach;
        const int reaches = list->count();
        choose(m().main.ReachFile);
        w->Entry("mnuFNewRBrks")->trigger();
        QVERIFY2(messages.seen.empty(), messages.seen.empty() ? "" : messages.seen[0].text.c_str());
        QCOMPARE(list->count(), reaches);
        choose(s->folder.File("missing.csv"));
        w->Entry("mnuFNewRBrks")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("missing.csv") != std::string::npos);
        QCOMPARE(list->count(), reaches);
    }

    void aCancelledOrBadParameterFileKeepsTheFileInForce() {
        start(true);
        const std::string before = m().main.PhyFile;
        w->Entry("mnuLoadPhysPar")->trigger();
        QCOMPARE(dialogs.ext, QStringLiteral("phy"));
        QVERIFY(messages.seen.empty());
        choose(s->folder.Write("bad.phy", "nonsense\n"));
        w->Entry("mnuLoadPhysPar")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("bad.phy") != std::string::npos);
        QCOMPARE(m().main.PhyFile, before);
    }
};

}  // namespace

OSM_FORMS_TEST(MainWindowTest);
#include "main_window_test.moc"
