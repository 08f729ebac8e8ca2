// The population editors: FparEdit, frmPred, Fishhabe, fishing and HatchMan,
// opened on the default data, each edited through its boxes or with the mouse
// and seen in the model's tables and the drawing; bad text refused in place; a
// file loaded while they are open; a population file with no species; an edit
// made during a pause counting from the next year.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QToolButton>
#include <QTimer>
#include <QtTest/QtTest>

#include "core/model.h"
#include "core/numbers.h"
#include "core/start_up.h"
#include "forms/file_dialogs.h"
#include "forms/forms_observer.h"
#include "forms/main_window.h"
#include "core/run_driver.h"
#include "forms/population/fpar_edit_form.h"
#include "forms/population/habitat_links_form.h"
#include "forms/population/harvest_form.h"
#include "forms/population/hatchery_form.h"
#include "forms/population/trophic_links_form.h"
#include "forms/status_form.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

class OneAnswer : public osm::FileDialogs {
public:
    QString answer;
    QString Open(QWidget*, const QString&, const QString&, const QString&) override { return answer; }
    QString Save(QWidget*, const QString&, const QString&, const QString&) override { return answer; }
};

// Text typed into a box and the box left, as a user does it.
void type(QLineEdit* box, const QString& text) {
    box->setText(text);
    box->setModified(true);
    emit box->editingFinished();
}

QString num(float x) { return QString::fromStdString(osm::NumText(x)); }

// With OSM_FORM_SHOTS naming a folder, a form is also saved there as a picture,
// to be looked at as a user sees it (run under Xvfb with QT_QPA_PLATFORM=xcb).
void shoot(QWidget& form, const char* name) {
    const QString folder = qEnvironmentVariable("OSM_FORM_SHOTS");
    if (folder.isEmpty()) return;
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QTest::qWait(200);
    QVERIFY(form.grab().save(folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png")));
}

}  // namespace

class PopulationFormsTest : public QObject {
    Q_OBJECT

    osm::Model data;  // the default data, whole model
    osm::test::CollectMessages messages;

    osm::Popsubs& ps() { return data.popsubs; }

private slots:
    void initTestCase() {
        osm::StartUp(data, osm::StartOptions{OSM_SOURCE_DIR "/data", false, {}});
        data.messages = &messages;
    }
    void init() { messages.seen.clear(); }

    // One column a species; a value typed goes into the record; a bad text, a
    // value out of range or a fraction where a whole number belongs is refused
    // in place with the reason; the compensation ratio moves the fry survival.
    void fparEdit() {
        osm::FparEditForm f(data);
        QCOMPARE(f.windowTitle(), QStringLiteral("Animal Population Parameters"));
        const int n = ps().NSpecies;
        QVERIFY(n >= 2);
        QVERIFY(f.Box("alpha", n) && !f.Box("alpha", n + 1));
        QCOMPARE(f.Box("fname", 2)->text(), QString::fromStdString(ps().SpName(2)));
        QCOMPARE(f.Box("sbase", 1)->text(), num(ps().sbase(1)));
        QCOMPARE(f.Box("rho", 1)->toolTip(), QStringLiteral("Ford-Walford plot slope (growth parameter, slope of wa+1 vs wa)"));

        type(f.Box("alpha", 2), QStringLiteral("0.42"));
        QCOMPARE(ps().alpha(2), 0.42f);
        const float rho = ps().rho(2);
        type(f.Box("rho", 2), QStringLiteral("1.5"));
        QCOMPARE(ps().rho(2), rho);
        QCOMPARE(f.Box("rho", 2)->text(), num(rho));
        QVERIFY(f.lbNote->text().contains(QStringLiteral("out of range")));
        type(f.Box("sfry", 2), QStringLiteral("x"));
        QVERIFY(f.lbNote->text().contains(QStringLiteral("not a number")));
        type(f.Box("wk", 2), QStringLiteral("2.5"));
        QVERIFY(f.lbNote->text().contains(QStringLiteral("whole number")));
        type(f.Box("wk", 2), QStringLiteral("5"));
        QCOMPARE(ps().wk(2), int16_t{5});
        type(f.Box("fname", 2), QString());
        QVERIFY(!f.Box("fname", 2)->text().isEmpty());
        type(f.Box("fname", 2), QStringLiteral("Chub, gorge"));
        QCOMPARE(ps().SpName(2), std::string("Chub, gorge"));

        // Twice the ratio, twice the survival from fry to age 1, shown at once.
        ps().RcJuv(1) = 8;
        ps().Sejuv(1) = 0.3f;
        f.ShowPars();
        type(f.Box("RcJuv", 1), QStringLiteral("16"));
        QCOMPARE(ps().Sejuv(1), 0.6f);
        QCOMPARE(f.Box("Sejuv", 1)->text(), QStringLiteral("0.6"));
        shoot(f, "fpar_edit");
    }

    // Buttons for every species and food type, a line for every link; a new
    // pair's proportion makes a link and its line; the sum message of the prey
    // and of the predator with their exact texts; Remove link takes it away.
    void frmPred() {
        osm::TrophicLinksForm f(data);
        QCOMPARE(f.windowTitle(), QStringLiteral("Trophic Impact Linkages"));
        const int n = ps().NSpecies, links = ps().NLinks;
        QCOMPARE(int(f.PredType.size()), n + 3);
        QCOMPARE(f.PreyType[n]->text(), QStringLiteral("Aquat. insects"));
        QCOMPARE(f.PredType[n + 2]->text(), QStringLiteral("Cladophora"));
        QCOMPARE(int(f.picture->lines.size()), links);  // the file names each pair once
        QCOMPARE(f.Pred(), int(ps().LinkPred(1)));
        QCOMPARE(f.PredProp->text(), num(ps().LinkMort(1)));

        // Species 2 feeding on species 1, which no link joins yet.
        QVERIFY(!f.picture->lines.count({2, 1}));
        f.PredType[1]->click();
        f.PreyType[0]->click();
        QCOMPARE(f.PredProp->text(), QString());
        type(f.PredProp, QStringLiteral("0.99"));
        QCOMPARE(int(ps().NLinks), links + 1);
        QCOMPARE(ps().LinkMort(links + 1), 0.99f);
        QVERIFY(f.picture->lines.count({2, 1}));
        const std::string prey = ps().SpName(1);
        QCOMPARE(messages.seen.back().text,
                 "Predation proportions on prey " + prey + " sum to >1.0, REENTER BEFORE RUNNING MODEL");
        type(f.FoodProp, QStringLiteral("1"));
        QCOMPARE(messages.seen.back().text,
                 "Diet proportions for " + ps().SpName(2) + " sum to >1.0, REENTER BEFORE RUNNING MODEL");
        type(f.FoodProp, QStringLiteral("two"));
        QCOMPARE(ps().LinkDiet(links + 1), 1.0f);
        QCOMPARE(f.FoodProp->text(), QStringLiteral("1"));

        f.Command1->click();
        QCOMPARE(int(ps().NLinks), links);
        QVERIFY(!f.picture->lines.count({2, 1}));
        QCOMPARE(f.PredProp->text(), QString());
        f.grab();  // the picture draws the lines that are left
        shoot(f, "trophic_links");
    }

    // A species at a time: the chosen link's cells and scale go into the curve
    // tables, a value on a link that was off turns it on, "remove" turns it
    // off; the vulnerabilities, the month of age 1, the flag; bad text refused;
    // after a first year the axis ends in the variable's units.
    void fishhabe() {
        osm::HabitatLinksForm f(data);
        QCOMPARE(f.windowTitle(), QStringLiteral("Edit anmal habitat dependencies"));
        QCOMPARE(f.cbSpecies->count(), int(ps().NSpecies));
        QCOMPARE(f.Species(), 1);
        QCOMPARE(int(f.panels.size()), 18);
        QCOMPARE(f.findChild<QLabel*>(QStringLiteral("lbEffect_2"))->text(), QString::fromStdString(ps().HabEffectName(2)));
        f.cbSpecies->setCurrentIndex(2);
        QCOMPARE(f.Species(), 3);

        // Variable 1 on effect 2: linked for every species of the default data.
        QCOMPARE(ps().HabLinked(3, 1, 2), int16_t{-1});
        f.panels[1].title->click();
        QCOMPARE(f.Panel(), 1);
        QCOMPARE(f.panels[1].baseval->text(), QStringLiteral("n.a."));  // no first year yet
        QCOMPARE(f.gdCurve->item(4, 0)->text(), num(ps().HabCurve(3, 1, 2, 5)));
        f.gdCurve->item(4, 0)->setText(QStringLiteral("1.5"));
        QCOMPARE(ps().HabCurve(3, 1, 2, 5), 1.5f);
        f.gdCurve->item(5, 0)->setText(QStringLiteral("abc"));
        QCOMPARE(f.gdCurve->item(5, 0)->text(), num(ps().HabCurve(3, 1, 2, 6)));
        QVERIFY(f.lbNote->text().contains(QStringLiteral("not a number")));
        f.gdCurve->item(5, 0)->setText(QStringLiteral("11"));
        QVERIFY(f.lbNote->text().contains(QStringLiteral("out of range")));
        type(f.txScale, QStringLiteral("12"));
        QCOMPARE(ps().HabScale(3, 1, 2), 12.0f);
        type(f.txScale, QStringLiteral("25"));
        QCOMPARE(ps().HabScale(3, 1, 2), 12.0f);
        type(f.setwhen, QStringLiteral("20"));
        type(f.dur, QStringLiteral("8"));
        type(f.setwhere, QStringLiteral("3"));
        QCOMPARE(ps().setwhen(3, 1, 2), int16_t{20});
        QCOMPARE(ps().dur(3, 1, 2), int16_t{8});
        QCOMPARE(ps().setwhere(3, 1, 2), int16_t{3});
        type(f.setwhere, QStringLiteral("99"));
        QCOMPARE(ps().setwhere(3, 1, 2), int16_t{3});

        // Variable 5 on effect 3, off: a value links it, with the middle scale.
        const int j = 14;
        QCOMPARE(ps().HabLinked(3, 5, 3), int16_t{0});
        f.SelectPanel(j);
        QVERIFY(!f.panels[j].Patternclear->isEnabled() && !f.txScale->isEnabled());
        f.gdCurve->item(9, 0)->setText(QStringLiteral("2"));
        QCOMPARE(ps().HabLinked(3, 5, 3), int16_t{-1});
        QCOMPARE(ps().HabScale(3, 5, 3), 10.0f);
        QCOMPARE(ps().HabCurve(3, 5, 3, 10), 2.0f);
        QCOMPARE(f.txScale->text(), QStringLiteral("10"));
        QVERIFY(f.panels[j].title->font().bold());
        f.panels[j].Patternclear->click();
        QCOMPARE(ps().HabLinked(3, 5, 3), int16_t{0});
        QVERIFY(!f.panels[j].title->font().bold());

        f.gdVulTime->item(2, 0)->setText(QStringLiteral("2.5"));
        QCOMPARE(ps().VulMonth(3, 3), 2.5f);
        type(f.breedtime, QStringLiteral("13"));
        QCOMPARE(f.breedtime->text(), num(ps().breedtime(3)));
        type(f.breedtime, QStringLiteral("4"));
        QCOMPARE(ps().breedtime(3), int16_t{4});
        const bool flag = ps().SetHabFlag(3);
        f.SetHabFlag->click();
        QCOMPARE(ps().SetHabFlag(3), !flag);
        f.SelectPanel(1);
        shoot(f, "fishhabe");

        // After a year of the small river the trout's stage range on the risk
        // (scale 10) ends its axis at twice the first-year mean.
        auto s = osm::test::StartSmallModel(false);
        osm::RunObserver quiet;
        osm::StartRun(s->m, quiet, 48, 1);
        osm::HabitatLinksForm g(s->m);
        const float mean = s->m.popsubs.HabMean(1, 1, 0);
        QVERIFY(mean > 0);
        QCOMPARE(g.panels[1].baseval->text(), QString::fromStdString(osm::Format(20.0 / 10 * mean, "####.#")));
        QCOMPARE(g.panels[0].baseval->text(), QStringLiteral("n.a."));
    }

    // A column of harvest rates for each species, a row for each year of the
    // run; the minimum age taken is a whole number.
    void fishing() {
        osm::HarvestForm f(data);
        QCOMPARE(f.windowTitle(), QStringLiteral("Edit harvest mortality rates over time"));
        QCOMPARE(f.gdHarvest->columnCount(), int(ps().NSpecies));
        QCOMPARE(f.gdHarvest->rowCount(), 100);
        QCOMPARE(f.gdHarvest->item(9, 2)->text(), num(ps().HarvestRate(3, 10)));
        f.gdHarvest->item(29, 2)->setText(QStringLiteral("0.5"));
        QCOMPARE(ps().HarvestRate(3, 30), 0.5f);
        QCOMPARE(ps().HarvestRate(3, 31), 0.05f);
        f.gdHarvest->item(30, 2)->setText(QStringLiteral("1.5"));
        QCOMPARE(ps().HarvestRate(3, 31), 0.05f);
        QCOMPARE(f.gdHarvest->item(30, 2)->text(), QStringLiteral("0.05"));
        QVERIFY(f.lbNote->text().contains(QStringLiteral("out of range")));

        QCOMPARE(osm::HarvestForm::At(f.agef, 3)->text(), num(ps().MinAgeTaken(3)));
        type(osm::HarvestForm::At(f.agef, 3), QStringLiteral("3"));
        QCOMPARE(ps().MinAgeTaken(3), int16_t{3});
        type(osm::HarvestForm::At(f.agef, 3), QStringLiteral("2.5"));
        QCOMPARE(ps().MinAgeTaken(3), int16_t{3});
        QVERIFY(f.lbNote->text().contains(QStringLiteral("minimum age taken")));
        shoot(f, "harvest");
    }

    // The base recruits of the equilibrium worked by hand for the small river's
    // chub: Alpha0 = 0.2 * 0.35 / (1 - 0.8^4), R0 = 0.36 * 4 / (0.8/0.2 Alpha0 +
    // 0.35) / 0.45^3 = 19.1718; the stocking fields go into the record.
    void hatchMan() {
        auto s = osm::test::StartSmallModel(false);
        osm::HatcheryForm f(s->m);
        QCOMPARE(f.windowTitle(), QStringLiteral("Set Hatchery Stocking Policy"));
        QCOMPARE(osm::HatcheryForm::At(f.basejuv, 2)->text(), QStringLiteral("19.172"));
        type(osm::HatcheryForm::At(f.fert, 2), QStringLiteral("500"));
        type(osm::HatcheryForm::At(f.fertyr1, 2), QStringLiteral("3"));
        type(osm::HatcheryForm::At(f.fertyr2, 2), QStringLiteral("7"));
        QCOMPARE(s->m.popsubs.fert(2), 500.0f);
        QCOMPARE(s->m.popsubs.fertyr1(2), int16_t{3});
        QCOMPARE(s->m.popsubs.fertyr2(2), 7.0f);
        type(osm::HatcheryForm::At(f.fertyr1, 2), QStringLiteral("1.5"));
        QCOMPARE(s->m.popsubs.fertyr1(2), int16_t{3});
        QCOMPARE(osm::HatcheryForm::At(f.fertyr1, 2)->text(), QStringLiteral("3"));
        type(osm::HatcheryForm::At(f.fert, 2), QStringLiteral("-1"));
        QCOMPARE(s->m.popsubs.fert(2), 500.0f);
        QVERIFY(f.lbNote->text().contains(QStringLiteral("Hatch.add/yr")));

        // Opened on the default data, every species has its row.
        osm::HatcheryForm d(data);
        QCOMPARE(int(d.fert.size()), int(ps().NSpecies));
        shoot(d, "hatchery");
    }

    // The editors opened from the menus show a population file loaded while
    // they are open.
    void aLoadShowsInTheOpenEditors() {
        auto s = osm::test::StartSmallModel(false);
        OneAnswer dialogs;
        osm::MainWindow w(s->m, &dialogs);
        dialogs.answer = QString::fromStdString(s->folder.File("mine.fis"));
        w.Entry("MnuSavePopPars")->trigger();
        w.Entry("mnupopdyn")->trigger();
        w.Entry("trophlink")->trigger();
        w.Entry("mnupophatch")->trigger();
        w.Entry("mnupophab")->trigger();
        w.Entry("MnuPopharv")->trigger();
        auto* fpar = w.findChild<osm::FparEditForm*>();
        auto* pred = w.findChild<osm::TrophicLinksForm*>();
        auto* hatch = w.findChild<osm::HatcheryForm*>();
        QVERIFY(fpar && pred && hatch);
        type(fpar->Box("sbase", 2), QStringLiteral("0.5"));
        type(osm::HatcheryForm::At(hatch->fert, 1), QStringLiteral("70"));
        pred->SelectPair(2, 1);
        type(pred->PredProp, QStringLiteral("0.3"));
        QCOMPARE(s->m.popsubs.sbase(2), 0.5f);
        QCOMPARE(int(pred->picture->lines.size()), 4);

        w.Entry("MnuPopParLoad")->trigger();
        QCOMPARE(s->m.popsubs.sbase(2), 0.8f);
        QCOMPARE(fpar->Box("sbase", 2)->text(), QStringLiteral("0.8"));
        QCOMPARE(osm::HatcheryForm::At(hatch->fert, 1)->text(), QStringLiteral("0"));
        QCOMPARE(int(pred->picture->lines.size()), 3);
        QCOMPARE(w.findChild<osm::HabitatLinksForm*>()->cbSpecies->count(), 2);
        QCOMPARE(w.findChild<osm::HarvestForm*>()->gdHarvest->columnCount(), 2);
        w.Entry("mnupopdyn")->trigger();  // the one open instance comes forward
        QCOMPARE(int(w.findChildren<osm::FparEditForm*>().size()), 1);

        // What the editors change is saved and read back.
        type(fpar->Box("alphamax", 1), QStringLiteral("1.75"));
        type(osm::HatcheryForm::At(hatch->fertyr2, 2), QStringLiteral("9"));
        pred->SelectPair(2, 1);
        type(pred->FoodProp, QStringLiteral("0.25"));
        dialogs.answer = QString::fromStdString(s->folder.File("edited.fis"));
        w.Entry("MnuSavePopPars")->trigger();
        osm::Model again;
        osm::StartUp(again, osm::StartOptions{s->folder.path(), false, {{"fis", s->folder.File("edited.fis")}}});
        QCOMPARE(again.popsubs.alphamax(1), 1.75f);
        QCOMPARE(again.popsubs.fertyr2(2), 9.0f);
        QCOMPARE(int(again.popsubs.NLinks), 4);
        QCOMPARE(int(again.popsubs.LinkPred(4)), 2);
        QCOMPARE(again.popsubs.LinkDiet(4), 0.25f);
        QCOMPARE(again.popsubs.LinkMort(4), 0.0f);
    }

    // A population file with no species: every editor opens on nothing but the
    // food types.
    void noSpecies() {
        auto s = osm::test::StartSmallModel(false);
        osm::test::CollectMessages seen;
        s->m.messages = &seen;
        OneAnswer dialogs;
        osm::MainWindow w(s->m, &dialogs);
        dialogs.answer = QString::fromStdString(s->folder.Write("none.fis", "0 20 6 3\r\na\r\nb\r\nc\r\nd\r\ne\r\nf\r\nx\r\ny\r\nz\r\n"));
        w.Entry("MnuPopParLoad")->trigger();
        QCOMPARE(s->m.popsubs.NSpecies, int16_t{0});
        QVERIFY(seen.seen.empty());
        for (const char* entry : {"mnupopdyn", "trophlink", "mnupophatch", "mnupophab", "MnuPopharv"}) w.Entry(entry)->trigger();
        QCOMPARE(w.findChild<osm::HarvestForm*>()->gdHarvest->columnCount(), 0);
        auto* pred = w.findChild<osm::TrophicLinksForm*>();
        QCOMPARE(int(pred->PredType.size()), 3);
        QCOMPARE(pred->Pred(), 0);
        QVERIFY(!pred->PredProp->isEnabled());
        QVERIFY(!w.findChild<osm::FparEditForm*>()->Box("alpha", 1));
        QVERIFY(w.findChild<osm::HatcheryForm*>()->fert.empty());
        auto* hab = w.findChild<osm::HabitatLinksForm*>();
        QCOMPARE(hab->Species(), 0);
        QVERIFY(!hab->gdCurve->isEnabled());
        QCOMPARE(hab->panels[1].baseval->text(), QStringLiteral("n.a."));
    }

    // Stocking typed while the run waits at the end of year 1 enters year 2.
    void editDuringAPauseCountsFromTheNextYear() {
        auto s = osm::test::StartSmallModel(false);
        osm::Model& m = s->m;
        osm::test::CollectMessages seen;
        m.messages = &seen;
        osm::FormsRunObserver observer;
        osm::StatusForm status(m, observer);
        observer.SetStatus(&status);
        osm::HatcheryForm hatch(m);
        status.txNYears->setText(QStringLiteral("2"));
        status.chkAnnPause->click();
        int pausedAt = 0;
        float recruitsYear1 = 0;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            if (!m.main.Paused || pausedAt) return;
            pausedAt = m.main.CumMonth;
            recruitsYear1 = m.popsubs.Recruits(2);
            type(osm::HatcheryForm::At(hatch.fert, 2), QStringLiteral("1000"));
            type(osm::HatcheryForm::At(hatch.fertyr1, 2), QStringLiteral("2"));
            type(osm::HatcheryForm::At(hatch.fertyr2, 2), QStringLiteral("2"));
            status.chkAnnPause->click();
            status.btPause->click();  // Continue
        });
        poll.start(20);
        status.BtStart->click();
        QCOMPARE(pausedAt, 12);
        QVERIFY(recruitsYear1 < 1000);
        QVERIFY(m.popsubs.Recruits(2) >= 1000);
        QCOMPARE(m.popsubs.NAge(1, 2), m.popsubs.Recruits(2));
    }
};

QTEST_MAIN(PopulationFormsTest)
#include "population_forms_test.moc"
