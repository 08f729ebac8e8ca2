// The release policy editors on the small river: the policy form's year grid,
// spikes and power figures, the monthly pattern form, the outflow temperature
// form, a spike added during a pause, and the policy file against osm-batch.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <filesystem>

#include "core/model.h"
#include "core/run_driver.h"
#include "forms/file_dialogs.h"
#include "forms/forms_observer.h"
#include "forms/hydrology/pattern_form.h"
#include "forms/hydrology/policy_form.h"
#include "forms/hydrology/temp_form.h"
#include "forms/status_form.h"
#include "hydrology/release_policy.h"
#include "presentation/results_csv.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

class FixedDialogs : public osm::FileDialogs {
public:
    QString answer;
    QString Open(QWidget*, const QString&, const QString&, const QString&) override { return answer; }
    QString Save(QWidget*, const QString&, const QString&, const QString&) override { return answer; }
};

QString codes(const QTableWidget* g, int first, int last) {
    QStringList out;
    for (int r = first; r <= last; ++r) out << g->item(r, 1)->text();
    return out.join(QLatin1Char(','));
}

void select(QTableWidget* g, int r0, int c0, int r1, int c1) {
    g->clearSelection();
    g->setRangeSelected(QTableWidgetSelectionRange(r0, c0, r1, c1), true);
}

void enter(QLineEdit* box, const QString& text) {
    box->setText(text);
    emit box->editingFinished();
}

class PolicyFormsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;
    FixedDialogs dialogs;

    osm::Model& m() { return s->m; }
    osm::Physical& p() { return s->m.physical; }
    void load() {
        s = osm::test::StartSmallModel(true);
        m().messages = &messages;
        messages.seen.clear();
    }

private slots:
    void yearGridAppliesPatternsCopiesPastesDeletesAndRefuses() {
        load();
        osm::PolicyForm f(m(), dialogs);
        QCOMPARE(f.lstDiurnalPattern->count(), 2);
        // 1950..1952 take the second scenario, as a drag along them does.
        f.lstDiurnalPattern->setCurrentRow(1);
        select(f.gdYear, 2, 0, 4, 1);
        f.ApplyDiurnalPattern();
        QCOMPARE(p().DiurnalCode(50), int16_t{2});
        QCOMPARE(p().DiurnalCode(52), int16_t{2});
        QCOMPARE(p().DiurnalCode(53), int16_t{1});
        // Copy the codes of 1950..1952 and paste them at 1960.
        select(f.gdYear, 2, 1, 4, 1);
        f.cmdCopy->click();
        select(f.gdYear, 12, 1, 12, 1);
        f.cmdPast->click();
        QCOMPARE(codes(f.gdYear, 11, 15), QStringLiteral("1,2,2,2,1"));
        QCOMPARE(p().DiurnalCode(62), int16_t{2});
        // Whole rows copied land on the codes only; the years stay.
        select(f.gdYear, 2, 0, 3, 1);
        f.cmdCopy->click();
        select(f.gdYear, 30, 0, 30, 0);
        f.cmdPast->click();
        QCOMPARE(f.gdYear->item(30, 0)->text(), QStringLiteral("1978"));
        QCOMPARE(p().DiurnalCode(79), int16_t{2});
        // Delete gives the years back the first scenario.
        select(f.gdYear, 12, 1, 13, 1);
        f.cmdDelete->click();
        QCOMPARE(codes(f.gdYear, 12, 14), QStringLiteral("1,1,2"));
        QCOMPARE(p().DiurnalCode(61), int16_t{1});
        f.cmdAll->click();
        QCOMPARE(f.gdYear->selectedItems().size(), 200);
        // A code the list does not hold is refused in place.
        f.gdYear->item(20, 1)->setText(QStringLiteral("3"));
        QCOMPARE(f.gdYear->item(20, 1)->text(), QStringLiteral("1"));
        QCOMPARE(p().DiurnalCode(68), int16_t{1});
        QVERIFY(f.lbWhy->text().contains(QStringLiteral("from 1 to 2")));
    }

    void spikesAddedClearedAndTheirVolumes() {
        load();
        osm::PolicyForm f(m(), dialogs);
        QCOMPARE(f.lsSpikes->count(), 0);
        enter(f.txSpikeYr, QStringLiteral("96"));
        enter(f.txSpikeMon, QStringLiteral("3"));
        QCOMPARE(f.lbMonVol->text(), QStringLiteral("700,000"));
        f.btAddSpike->click();
        enter(f.txSpikeYr, QStringLiteral("1996"));  // refused: two-digit years of the record
        QCOMPARE(f.txSpikeYr->text(), QStringLiteral("96"));
        f.btAddSpike->click();
        QCOMPARE(f.lsSpikes->count(), 1);
        QCOMPARE(f.lsSpikes->item(0)->text(), QStringLiteral("Year: 96 Month: 3"));
        QVERIFY(p().SpikeFlag(579));
        f.lsSpikes->item(0)->setSelected(true);
        f.btClearSpike->click();
        QCOMPARE(f.lsSpikes->count(), 0);
        QVERIFY(!p().SpikeFlag(579));

        enter(f.txSpikeMag, QStringLiteral("31500"));
        QCOMPARE(f.lbExcess->text(), QStringLiteral("0"));
        enter(f.txSpikeMag, QStringLiteral("45000"));
        enter(f.txSpikeDur, QStringLiteral("2"));
        QCOMPARE(f.lbSpikeVol->text(), QStringLiteral("178,512"));
        QCOMPARE(f.lbExcess->text(), QStringLiteral("53,554"));
        enter(f.txSpikeStDay, QStringLiteral("28"));
        f.btOk->click();  // a spike to the 29th leaves February no ordinary day
        QVERIFY(f.lbWhy->text().contains(QStringLiteral("by day 28")));
        enter(f.txSpikeStDay, QStringLiteral("5"));
        f.btOk->click();
        QCOMPARE(p().SpikeVol, 178512.0f);
        QCOMPARE(p().SpikeStartDay, int16_t{5});
        // The trace spikes need a spike trace chosen on the monthly pattern form.
        f.opSpikeType[0]->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(f.opSpikeType[1]->isChecked());
    }

    void powerFiguresOfTheScenarioInHand() {
        load();
        // Power 101 per level against 40 of the no-action scenario, levels of 200,000 acre-feet.
        for (int L = 1; L <= 6; ++L)
            for (int mo = 1; mo <= 12; ++mo) p().PowerVal(mo, L) = 101.0f * float(L), p().PowerValNoAction(mo, L) = 40.0f * float(L);
        osm::PolicyForm f(m(), dialogs);
        QCOMPARE(f.lbAnnLoss->text(), QStringLiteral("$3,447"));
        f.cbMonRelVol->setCurrentIndex(2);
        emit f.cbMonRelVol->activated(2);
        QCOMPARE(f.cbMonRelVol->currentText(), QStringLiteral("600,000"));
        QCOMPARE(f.lbPowerValue->text(), QStringLiteral("$303"));
        QCOMPARE(f.lbLoss->text(), QStringLiteral("$183"));
        // The scale of level 3: weekday peaks of 1.2 times the mean of 9,900 cfs.
        QCOMPARE(f.lbYMax->text(), QStringLiteral("11,880"));
        QCOMPARE(f.lbYMin->text(), QStringLiteral("7,425"));
        // A flow parameter out of range is refused and kept.
        const QString before = f.txUpRamp->text();
        enter(f.txUpRamp, QStringLiteral("fast"));
        QCOMPARE(f.txUpRamp->text(), before);
        QVERIFY(f.lbWhy->text().startsWith(QStringLiteral("Upramp rate")));
    }

    void monthlyPatternReachesTheReleaseVolumes() {
        load();
        osm::PatternForm f(m());
        QCOMPARE(f.cbTribList->count(), 1);  // the small river has no named tributary
        f.opSeqType[1]->click();
        enter(f.txConstFlow, QStringLiteral("500000"));
        // A click half way up March's bar sets it to half the chart's top of 2,000,000.
        osm::PatternChart* c = f.SetFlow;
        const double w = (c->width() - 48) / 12.0;
        QTest::mouseClick(c, Qt::LeftButton, {}, QPoint(int(24 + 2.5 * w), int(24 + (c->height() - 48) / 2.0)));
        QVERIFY(std::abs(f.Pattern(1)[3] - 1000000) < 2000000.0 / (c->height() - 48));
        QCOMPARE(f.lbAnnVol->text().remove(QLatin1Char(',')).toDouble(), 11 * 500000 + std::round(f.Pattern(1)[3]));
        enter(f.txPostOSDPropSand, QStringLiteral("1.5"));  // refused, a proportion
        QCOMPARE(f.txPostOSDPropSand->text(), QStringLiteral("0.500"));
        enter(f.txOSDSSConc, QStringLiteral("12"));
        f.cmdExit->click();
        QCOMPARE(p().MonthlyVol(1), 500000.0f);
        QCOMPARE(p().MonthlyVol(3), float(f.Pattern(1)[3]));
        QCOMPARE(p().MonthlyVol(579), float(f.Pattern(1)[3]));  // every year alike
        QCOMPARE(m().sediment.OSDSSConc, 12.0f);
        QCOMPARE(p().RelSeason(0, 2), 500000.0f);
        QCOMPARE(p().SeqType(1), int16_t{2});
    }

    // A spike trace chosen on the pattern form gives the policy form its spikes.
    void spikeTraceFromThePatternFormFillsTheSpikeList() {
        load();
        std::string trace = "YR,MNTH,Run1,Run2\r\n", flags = "Run1,Run2\r\n";
        for (int i = 1; i <= 600; ++i) {
            trace += std::to_string(48 + (i - 1) / 12) + "," + std::to_string((i - 1) % 12 + 1) + ",900000,950000\r\n";
            flags += std::string("0,") + (i == 579 ? "-1" : "0") + "\r\n";
        }
        s->folder.Write("riverware.xls/Spike_Traces.csv", trace);
        s->folder.Write("riverware.xls/spike.csv", flags);
        s->folder.Write("riverware.xls/RunList.csv", "Nruns,RunType\r\n1,0\r\n2,45\r\n");
        osm::PatternForm d(m());
        QCOMPARE(d.cbMonRel->findText(QStringLiteral("spike$")), -1);  // flags and the trace list are no record
        d.cbMonRel->setCurrentIndex(d.cbMonRel->findText(QStringLiteral("Spike_Traces$")));
        d.cbRun->setCurrentIndex(1);
        QCOMPARE(d.cbRun->currentText(), QStringLiteral("Run2 (45 kcfs)"));
        emit d.cbRun->activated(1);
        QCOMPARE(p().MonthlyVol(7), 950000.0f);
        osm::PolicyForm f(m(), dialogs);
        f.opSpikeType[0]->click();
        QVERIFY(messages.seen.empty());
        QCOMPARE(f.lsSpikes->count(), 1);
        QCOMPARE(f.lsSpikes->item(0)->text(), QStringLiteral("Year: 96 Month: 3"));
        QVERIFY(!f.btAddSpike->isEnabled());
    }

    void outflowTemperatureForm() {
        load();
        osm::TempForm f(m());
        f.gdT->item(6, 2)->setText(QStringLiteral("14.5"));
        f.gdT->item(7, 2)->setText(QStringLiteral("warm"));  // refused
        QCOMPARE(f.gdT->item(7, 2)->text(), QStringLiteral("10"));
        select(f.gdYear, 42, 0, 44, 1);  // 1990..1992
        f.ToggleSelected();
        select(f.gdYear, 44, 1, 44, 1);
        f.ToggleSelected();  // 1992 back off
        enter(f.txHeatEx, QStringLiteral("0.25"));
        f.cmdOK->click();
        QCOMPARE(p().ExpTemp(7), 14.5f);
        QCOMPARE(p().ExpTemp(8), 10.0f);
        QVERIFY(p().ExpTempYr(90) && p().ExpTempYr(91) && !p().ExpTempYr(92));
        QCOMPARE(p().HeatEx, 0.25f);
    }

    // Process runs the pipeline into a new scenario that joins the lists; a
    // failed or cancelled run keeps the old file and says where it stopped.
    void processMakesAScenarioAndAFailureOrCancelKeepsTheOld() {
        load();
        namespace fs = std::filesystem;
        const fs::path hydro = s->folder.File("hydro");
        fs::create_directories(hydro);
        fs::copy_file(OSPSW95B_EXE, hydro / "ospsw95b");
        fs::copy_file(USFLOW_EXE, hydro / "USFlow");
        osm::PolicyForm f(m(), dialogs);
        const std::string old = s->folder.Read("noaction.sts");
        f.txFileName->setText(QStringLiteral("noaction.sts"));
        f.cmdProcessHydro->click();  // the scheduler finds no prices
        QVERIFY(f.lbWhy->text().contains(QStringLiteral("month jan")));
        QVERIFY(f.lbWhy->text().contains(QStringLiteral("ospsw95b")));
        QVERIFY(f.lbWhy->text().contains(QStringLiteral("The old file is unchanged")));
        for (const char* name : {"caddqd.In", "ospsw95b.dat"})
            fs::copy_file(std::string(OSM_SOURCE_DIR) + "/data/hydro/" + name, hydro / name);
        QTimer::singleShot(0, f.cmdCancel, &QPushButton::click);
        f.cmdProcessHydro->click();
        QVERIFY(f.lbWhy->text().contains(QStringLiteral("cancelled")));
        QCOMPARE(s->folder.Read("noaction.sts"), old);
        QVERIFY(f.cmdProcessHydro->isEnabled());

        // Modified low fluctuating flows, which the scheduler can meet at every level.
        enter(f.txMaxDailyFlow, QStringLiteral("25000"));
        enter(f.txUpRamp, QStringLiteral("4000"));
        enter(f.txDownRamp, QStringLiteral("2500"));
        for (int mo = 0; mo < 12; ++mo) {
            f.gdMaxDailyFlowChange->item(0, mo)->setText(QStringLiteral("8000"));
            for (int h = 0; h < 24; ++h)
                f.gdMinDailyFlow->item(h, mo)->setText(h >= 7 && h <= 18 ? QStringLiteral("8000") : QStringLiteral("5000"));
        }
        f.txFileName->setText(QStringLiteral("trial.sts"));
        f.cmdProcessHydro->click();
        QCOMPARE(p().MinFlowMH(4, 8), 8000.0f);
        QCOMPARE(f.lbWhy->text(), QString());
        QCOMPARE(f.pbProcess->value(), 72);
        QVERIFY(fs::exists(s->folder.File("trial.sts")));
        QCOMPARE(f.fileScenarios->currentItem()->text(), QStringLiteral("trial.sts"));
        QCOMPARE(f.lstDiurnalPattern->count(), 3);
        QCOMPARE(p().DiurnalName(3), std::string("trial"));
    }

    // A spike added while the run waits at a year's end falls in the next year.
    void editDuringAPauseTakesEffectAtTheNextMonth() {
        load();
        osm::FormsRunObserver observer;
        osm::StatusForm status(m(), observer);
        observer.SetStatus(&status);
        osm::PolicyForm f(m(), dialogs);
        status.txNYears->setText(QStringLiteral("2"));
        status.chkAnnPause->click();
        int pausedAt = 0;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            if (!m().main.Paused || pausedAt) return;
            pausedAt = m().main.CumMonth;
            f.AddSpike(49, 3);
            f.btOk->click();
            status.chkAnnPause->click();
            status.btPause->click();  // Continue
        });
        poll.start(20);
        status.BtStart->click();
        QCOMPARE(pausedAt, 12);
        QCOMPARE(m().main.CumMonth, int16_t{24});
        QCOMPARE(m().main.Results(0, 1, 2, 2, 15), 45.0f);  // March 1949: the spike's 45 kcfs
        QVERIFY(m().main.Results(0, 1, 2, 2, 3) < 20.0f);
    }

    // The policy file saved from the form, applied by osm-batch, gives the run
    // the form's choices give.
    void policyFileRoundTripAndBatchRunAgree() {
        load();
        std::string saved;
        {
            osm::PolicyForm f(m(), dialogs);
            f.lstDiurnalPattern->setCurrentRow(1);
            select(f.gdYear, 0, 1, 0, 1);
            f.ApplyDiurnalPattern();
            f.AddSpike(48, 6);
            enter(f.txSpikeMag, QStringLiteral("40000"));
            const QString pol = QString::fromStdString(s->folder.File("choice.pol"));
            dialogs.answer = pol;
            f.btSavePolicy->click();
            QCOMPARE(QString::fromStdString(p().PolicyFile), pol);

            osm::RunObserver quiet;
            osm::StartRun(m(), quiet, 48, 2);
            const std::string mine = s->folder.File("form.csv"), theirs = s->folder.File("batch.csv");
            osm::WriteResultsCsv(m(), mine);
            const std::string cmd = std::string(OSM_BATCH_EXE) + " --folder " + s->folder.path() +
                                    " --phys-only --years 2 --policy " + pol.toStdString() + " --csv " + theirs + " 2>" +
                                    s->folder.File("err.txt");
            QCOMPARE(std::system(cmd.c_str()), 0);
            QCOMPARE(s->folder.Read("batch.csv"), s->folder.Read("form.csv"));
            QVERIFY(s->folder.Read("form.csv").size() > 1000);
            saved = s->folder.Read("choice.pol");
        }

        // Loaded into a fresh program through the form.
        load();
        osm::PolicyForm g(m(), dialogs);
        dialogs.answer = QString::fromStdString(s->folder.Write("choice.pol", saved));
        g.btLoadPolicy->click();
        QCOMPARE(p().DiurnalCode(48), int16_t{2});
        QCOMPARE(g.gdYear->item(0, 1)->text(), QStringLiteral("2"));
        QCOMPARE(g.lsSpikes->count(), 1);
        QCOMPARE(g.txSpikeMag->text(), QStringLiteral("40000"));
        // A bad file is refused with its line, and nothing changes.
        dialogs.answer = QString::fromStdString(s->folder.Write("bad.pol", "diurnal 1950 steady\nspikes 1999-01\n"));
        g.btLoadPolicy->click();
        QVERIFY(g.lbWhy->text().contains(QStringLiteral("bad.pol:2:")));
        QCOMPARE(p().DiurnalCode(50), int16_t{1});
    }
};

}  // namespace

QTEST_MAIN(PolicyFormsTest)
#include "policy_forms_test.moc"
