// The run controls of the status form on a small river, physical model only:
// every state of Start and Pause, the annual pause, stop while paused, overlay.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
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

class StatusFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;
    osm::FormsRunObserver observer;
    std::unique_ptr<StatusForm> f;

    osm::Model& m() { return s->m; }
    // "Start caption|Pause caption|Pause on or off|CumMonth|paused|stopped".
    QString now() {
        return QStringList{f->BtStart->text(), f->btPause->text(), f->btPause->isEnabled() ? "on" : "off",
                           QString::number(m().main.CumMonth), m().main.Paused ? "paused" : "",
                           m().main.StopRun ? "stopped" : ""}
            .join('|');
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

    void startRunsEveryMonthWithTheRunningCaptions() {
        QCOMPARE(now(), QStringLiteral("Start|Pause|off|0||"));
        QCOMPARE(f->cbSelReach->count(), m().main.LastReach - m().main.FirstReach + 1);
        QString running;
        atNextYield([&] { running = now(); });
        f->BtStart->click();
        QCOMPARE(running, QStringLiteral("Stop|Pause|on|1||"));
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|12||stopped"));
        QCOMPARE(f->lbMon->text(), QString::fromStdString(m().main.MonthName(12)));
        for (const auto& msg : messages.seen) QVERIFY2(msg.kind != "run stopped", msg.text.c_str());
    }

    void pauseHoldsTheRunUntilContinue() {
        QString paused;
        int monthWhilePaused = -1;
        atNextYield([&] {
            atNextYield([&] {
                paused = now();
                // The wait keeps serving events; no month runs meanwhile.
                atNextYield([&] {
                    monthWhilePaused = m().main.CumMonth;
                    f->btPause->click();
                    QCOMPARE(f->btPause->text(), QStringLiteral("Pause"));
                });
            });
            f->btPause->click();
        });
        f->BtStart->click();
        QCOMPARE(paused, QStringLiteral("Stop|Continue|on|1|paused|"));
        QCOMPARE(monthWhilePaused, 1);
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|12||stopped"));
    }

    void stopEndsTheRunAtTheTopOfTheNextMonth() {
        QString stopped;
        std::function<void()> third = [&] {
            if (m().main.CumMonth < 3) return atNextYield(third);
            f->BtStart->click();
            stopped = now();
        };
        atNextYield(third);
        f->BtStart->click();
        QCOMPARE(stopped, QStringLiteral("Start|Pause|off|3||stopped"));
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|3||stopped"));
    }

    void stopWhilePausedWaitsUntilTheNextStart() {
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
        // The second run went to its end; the first woke, found the stop and ran no
        // further month.
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|24||stopped"));
    }

    void annualPauseHoldsTheDecemberPicture() {
        f->txNYears->setText(QStringLiteral("2"));
        f->chkAnnPause->setChecked(true);
        QStringList pauses;
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
        QCOMPARE(pauses, (QStringList{"Stop|Continue|on|12|paused|", "Stop|Continue|on|24|paused|"}));
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|24||stopped"));
    }

    void overlayKeepsTheFirstRunBesideTheSecond() {
        f->BtStart->click();
        const int r = m().main.FirstReach;
        const float first = m().main.Results(0, 1, 1, r, 6);
        m().main.Results(1, 1, 1, r, 6) = -1;  // marks the slot of the overlaid run
        f->chkOverlay->setChecked(true);
        f->BtStart->click();
        QCOMPARE(m().main.NRuns, 1);
        QCOMPARE(m().main.Results(1, 1, 1, r, 6), first);
        // A third overlaid run writes the second slot again and leaves the first.
        m().main.Results(0, 1, 1, r, 6) = -1;
        f->BtStart->click();
        QCOMPARE(m().main.NRuns, 1);
        QCOMPARE(m().main.Results(0, 1, 1, r, 6), -1.0f);
        f->chkOverlay->setChecked(false);
        QCOMPARE(m().main.NRuns, 0);
    }

    void reachListAndIndexStagesWriteTheModel() {
        f->cbSelReach->setCurrentIndex(1);
        QCOMPARE(m().main.IndexReach, m().main.FirstReach + 1);
        f->txtIndSlice[1]->setText(QStringLiteral("0"));  // zero is ignored
        QCOMPARE(m().main.IndexQ(2), 20000.0f);
    }

    void aYearPastTheRecordStopsWithAMessage() {
        f->txStartYr->setText(QStringLiteral("148"));
        f->BtStart->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(messages.seen[0].kind, std::string("run stopped"));
        QVERIFY(messages.seen[0].text.find("2047") != std::string::npos);
        QCOMPARE(now(), QStringLiteral("Start|Continue|off|0||stopped"));
    }
};

}  // namespace

OSM_FORMS_TEST(StatusFormTest);
#include "status_form_test.moc"
