// The run controls of the status form on a small river, physical model only:
// every state of Start and Pause, the annual pause, stop while paused, overlay,
// and the other controls.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>

#include "core/model.h"
#include "forms/forms_observer.h"
#include "forms/status_form.h"
#include "forms_test_registry.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

using osm::StatusForm;

// Runs `f` at the driver's next yield.
void atNextYield(std::function<void()> f) { QTimer::singleShot(0, std::move(f)); }

struct Buttons {
    QString start, pause;
    bool pauseEnabled = false;
    int cumMonth = -1;
    bool paused = false, stopRun = false;
};

class StatusFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;
    osm::FormsRunObserver observer;
    std::unique_ptr<StatusForm> f;

    osm::Model& m() { return s->m; }
    Buttons now() {
        return {f->BtStart->text(), f->btPause->text(), f->btPause->isEnabled(), m().main.CumMonth,
                m().main.Paused, m().main.StopRun};
    }
    void verifyReadyAfterRun() {
        QCOMPARE(f->BtStart->text(), QStringLiteral("Start"));
        QCOMPARE(f->btPause->text(), QStringLiteral("Continue"));
        QVERIFY(!f->btPause->isEnabled());
        QVERIFY(m().main.StopRun);
    }

private slots:
    void init() {
        s = osm::test::StartSmallModel(true);
        messages.seen.clear();
        m().messages = &messages;
        f = std::make_unique<StatusForm>(m(), observer);
        observer.SetStatus(f.get());
        f->txNYears->setText(QStringLiteral("1"));
    }
    void cleanup() {
        observer.SetStatus(nullptr);
        f.reset();
        s.reset();
    }

    void loadsFromTheModel() {
        QCOMPARE(f->windowTitle(), QStringLiteral("Controls and Model Progress"));
        QCOMPARE(f->txStartYr->text(), QStringLiteral("48"));
        QCOMPARE(f->BtStart->text(), QStringLiteral("Start"));
        QCOMPARE(f->btPause->text(), QStringLiteral("Pause"));
        QVERIFY(!f->btPause->isEnabled());
        QCOMPARE(f->cbSelReach->count(), m().main.LastReach - m().main.FirstReach + 1);
        QCOMPARE(f->txtIndSlice[0]->text(), QStringLiteral("5000"));
    }

    void startRunsEveryMonthWithTheRunningCaptions() {
        Buttons running;
        atNextYield([&] { running = now(); });
        f->BtStart->click();
        QCOMPARE(running.start, QStringLiteral("Stop"));
        QCOMPARE(running.pause, QStringLiteral("Pause"));
        QVERIFY(running.pauseEnabled);
        QCOMPARE(running.cumMonth, 1);
        QVERIFY(!running.stopRun);
        QCOMPARE(m().main.CumMonth, 12);
        QCOMPARE(f->lbCurYr->text(), QStringLiteral("48"));
        QCOMPARE(f->lbMon->text(), QString::fromStdString(m().main.MonthName(12)));
        verifyReadyAfterRun();
        for (const auto& msg : messages.seen) QVERIFY2(msg.kind != "run stopped", msg.text.c_str());
    }

    void pauseHoldsTheRunUntilContinue() {
        Buttons paused, resumed;
        int monthWhilePaused = -1;
        atNextYield([&] {
            atNextYield([&] {
                paused = now();
                // The wait keeps serving events; no month runs meanwhile.
                atNextYield([&] {
                    monthWhilePaused = m().main.CumMonth;
                    f->btPause->click();
                    resumed = now();
                });
            });
            f->btPause->click();
        });
        f->BtStart->click();
        QCOMPARE(paused.start, QStringLiteral("Stop"));
        QCOMPARE(paused.pause, QStringLiteral("Continue"));
        QVERIFY(paused.pauseEnabled);
        QVERIFY(paused.paused);
        QCOMPARE(paused.cumMonth, 1);
        QCOMPARE(monthWhilePaused, 1);
        QCOMPARE(resumed.pause, QStringLiteral("Pause"));
        QVERIFY(!resumed.paused);
        QCOMPARE(m().main.CumMonth, 12);
        verifyReadyAfterRun();
    }

    void stopEndsTheRunAtTheTopOfTheNextMonth() {
        Buttons stopped;
        std::function<void()> third = [&] {
            if (m().main.CumMonth < 3) return atNextYield(third);
            f->BtStart->click();
            stopped = now();
        };
        atNextYield(third);
        f->BtStart->click();
        QCOMPARE(stopped.start, QStringLiteral("Start"));
        QCOMPARE(stopped.pause, QStringLiteral("Pause"));
        QVERIFY(!stopped.pauseEnabled);
        QVERIFY(stopped.stopRun);
        QCOMPARE(m().main.CumMonth, 3);
        verifyReadyAfterRun();
    }

    void stopWhilePausedWaitsUntilTheNextStart() {
        Buttons afterStop, secondRunning;
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
        QCOMPARE(afterStop.start, QStringLiteral("Start"));
        QCOMPARE(afterStop.pause, QStringLiteral("Pause"));
        QVERIFY(!afterStop.pauseEnabled);
        QVERIFY(afterStop.paused);  // a Stop does not touch the pause
        QVERIFY(afterStop.stopRun);
        QCOMPARE(secondRunning.start, QStringLiteral("Stop"));
        QVERIFY(!secondRunning.paused);
        QCOMPARE(secondRunning.cumMonth, 1);
        // The second run went to its end; the first woke, found the stop and ran no
        // further month.
        QCOMPARE(m().main.CumMonth, 24);
        QVERIFY(!m().main.Paused);
        verifyReadyAfterRun();
    }

    void annualPauseHoldsTheDecemberPicture() {
        f->txNYears->setText(QStringLiteral("2"));
        f->chkAnnPause->setChecked(true);
        QVERIFY(m().main.AnnPause);
        QList<Buttons> pauses;
        QTimer watch;
        watch.setInterval(0);
        connect(&watch, &QTimer::timeout, this, [&] {
            if (!m().main.Paused) return;
            pauses.append(now());
            f->btPause->click();  // Continue
        });
        watch.start();
        f->BtStart->click();
        watch.stop();
        QCOMPARE(pauses.size(), 2);
        QCOMPARE(pauses[0].cumMonth, 12);
        QCOMPARE(pauses[0].pause, QStringLiteral("Continue"));
        QVERIFY(pauses[0].pauseEnabled);
        QCOMPARE(pauses[0].start, QStringLiteral("Stop"));
        QCOMPARE(pauses[1].cumMonth, 24);
        verifyReadyAfterRun();
    }

    void overlayKeepsTheFirstRunBesideTheSecond() {
        f->BtStart->click();
        QCOMPARE(m().main.NRuns, 0);
        const int r = m().main.FirstReach;
        const float first = m().main.Results(0, 1, 1, r, 6);
        m().main.Results(1, 1, 1, r, 6) = -1;  // marks the slot of the overlaid run
        f->chkOverlay->setChecked(true);
        f->BtStart->click();
        QCOMPARE(m().main.NRuns, 1);
        QCOMPARE(m().main.Results(0, 1, 1, r, 6), first);
        QCOMPARE(m().main.Results(1, 1, 1, r, 6), first);
        // A third overlaid run writes the second slot again and leaves the first.
        m().main.Results(0, 1, 1, r, 6) = -1;
        f->BtStart->click();
        QCOMPARE(m().main.NRuns, 1);
        QCOMPARE(m().main.Results(0, 1, 1, r, 6), -1.0f);
        f->chkOverlay->setChecked(false);
        QVERIFY(!m().main.Overlay);
        QCOMPARE(m().main.NRuns, 0);
    }

    void reachListAndIndexStagesWriteTheModel() {
        QSignalSpy reach(f.get(), &StatusForm::reachChanged);
        f->cbSelReach->setCurrentIndex(1);
        QCOMPARE(m().main.IndexReach, m().main.FirstReach + 1);
        QCOMPARE(reach.count(), 1);
        f->txtIndSlice[1]->setText(QStringLiteral("0"));  // zero is ignored
        QCOMPARE(m().main.IndexQ(2), 20000.0f);
        f->txtIndSlice[1]->setText(QStringLiteral("12000"));
        QCOMPARE(m().main.IndexQ(2), 12000.0f);
        f->txStartYr->setText(QStringLiteral("63"));
        QCOMPARE(m().main.StartYr, 63);
    }

    void aYearPastTheRecordStopsWithAMessage() {
        f->txStartYr->setText(QStringLiteral("148"));
        f->BtStart->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(messages.seen[0].kind, std::string("run stopped"));
        QVERIFY(messages.seen[0].text.find("2047") != std::string::npos);
        QCOMPARE(m().main.CumMonth, 0);
        verifyReadyAfterRun();
    }
};

}  // namespace

OSM_FORMS_TEST(StatusFormTest);
#include "status_form_test.moc"
