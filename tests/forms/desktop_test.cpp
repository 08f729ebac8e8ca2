// The desktop program as a user meets it, on the small river: a bad start year
// refused with the results kept, a replot after a run to 2047, overlaid runs and
// observed data told apart and named in the key, observed gaps left undrawn,
// axis labels that fit their axes at 1280 x 800, mode and scenario in view,
// progress, and the Help menu.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFontMetrics>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>

#include <cmath>

#include "core/model.h"
#include "forms/chart_export.h"
#include "forms/entry_guard.h"
#include "forms/file_dialogs.h"
#include "forms/graph_legend_form.h"
#include "forms/graphs_form.h"
#include "forms/main_window.h"
#include "forms/profiles_form.h"
#include "forms/set_graphics_form.h"
#include "forms/status_form.h"
#include "presentation/graphics_setup.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

// Every label of the chart's axes: a y label fits between the chart's left edge
// and the plot area, x labels stand apart from each other and inside the chart.
QString labelThatDoesNotFit(osm::ChartBox* box) {
    QChart* c = box->chart();
    const QRectF plot = c->plotArea();
    auto* y = qobject_cast<QCategoryAxis*>(c->axes(Qt::Vertical).value(0));
    auto* x = qobject_cast<QCategoryAxis*>(c->axes(Qt::Horizontal).value(0));
    if (!x || !y) return QStringLiteral("no category axes");
    const QFontMetrics yfm(y->labelsFont()), xfm(x->labelsFont());
    for (const QString& l : y->categoriesLabels())
        if (yfm.horizontalAdvance(l.trimmed()) > plot.left()) return QStringLiteral("y label ") + l;
    double lastRight = -1e9;
    const double scale = plot.width() / (x->max() - x->min());
    for (const QString& l : x->categoriesLabels()) {
        const double at = plot.left() + (x->endValue(l) - x->min()) * scale;
        const double half = xfm.horizontalAdvance(l.trimmed()) / 2.0;
        if (at - half < lastRight) return QStringLiteral("x label overlaps: ") + l;
        if (at + half > box->width()) return QStringLiteral("x label past the edge: ") + l;
        lastRight = at + half;
    }
    if (x->titleText().isEmpty()) return QStringLiteral("no x axis title");
    // Whatever the chart draws, nothing is cut short to an ellipsis.
    for (const QGraphicsItem* item : box->scene()->items())
        if (const auto* text = dynamic_cast<const QGraphicsTextItem*>(item))
            if (text->isVisible() && (text->toPlainText().contains(QStringLiteral("...")) ||
                                      text->toPlainText().contains(QChar(0x2026))))
                return QStringLiteral("cut short: ") + text->toPlainText();
    return QString();
}

class DesktopTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;
    std::unique_ptr<osm::MainWindow> w;

    osm::Model& m() { return s->m; }
    osm::StatusForm* status() { return w->Status(); }
    void start(int width = 1280, int height = 800) {
        s = osm::test::StartSmallModel(true);
        m().messages = &messages;
        osm::SetGraphSetupDefaults(m());
        m().graphs.GraphSlot(6) = 13;  // temperature, with observed data
        m().graphs.ProfSlot(6) = 13;
        w = std::make_unique<osm::MainWindow>(m());
        w->resize(width, height);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
    }
    void run(const char* startYr, const char* years) {
        status()->txStartYr->setText(QString::fromLatin1(startYr));
        status()->txNYears->setText(QString::fromLatin1(years));
        status()->BtStart->click();
        w->Graphs()->RefreshCharts();
        w->Profiles()->RefreshCharts();
    }

private slots:
    void init() { messages.seen.clear(); }
    void cleanup() {
        w.reset();
        s.reset();
    }

    void aBadStartYearIsRefusedBeforeAnythingIsCleared() {
        start();
        run("90", "1");
        const float stored = m().main.Results(0, 1, 1, 2, 7);
        const int points = w->Graphs()->PointCount(1, 0);
        QCOMPARE(points, 12);
        for (const auto& [startYr, years] : {std::pair{"abc", "1"}, {"0", "1"}, {"140", "10"}, {"90", "0"}, {"90", "x"}}) {
            messages.seen.clear();
            run(startYr, years);
            QCOMPARE(messages.seen.size(), size_t{1});
            QCOMPARE(messages.seen[0].kind, std::string("run not started"));
            QCOMPARE(m().main.CumMonth, 12);  // the last run stands
            QCOMPARE(m().main.Results(0, 1, 1, 2, 7), stored);
            QCOMPARE(w->Graphs()->PointCount(1, 0), points);
            QCOMPARE(status()->BtStart->text(), QStringLiteral("Start"));
            QVERIFY(!status()->lbNote->text().isEmpty());
        }
        QVERIFY(messages.seen[0].text.find("whole number") != std::string::npos);
        // Leaving a box with a text it refuses puts the last good one back and says why.
        status()->txStartYr->setText(QStringLiteral("90"));
        status()->txStartYr->setText(QStringLiteral("19x0"));
        emit status()->txStartYr->editingFinished();
        QCOMPARE(status()->txStartYr->text(), QStringLiteral("90"));
        QVERIFY(status()->lbNote->text().contains(QStringLiteral("Start Calender Year")));
        QCOMPARE(m().main.StartYr, 90);
        // An index stage that is not a flow is refused the same way and changes nothing.
        const float q = m().main.IndexQ(3);
        status()->txtIndSlice[2]->setText(QStringLiteral("45k"));
        emit status()->txtIndSlice[2]->editingFinished();
        QCOMPARE(status()->txtIndSlice[2]->text(), QStringLiteral("45000"));
        QCOMPARE(m().main.IndexQ(3), q);
    }

    void selectGraphicsRefusesLimitsThatAreNotNumbers() {
        start();
        w->Entry("mnuSelGraphics")->trigger();
        auto* sf = w->findChild<osm::SetGraphicsForm*>();
        QVERIFY(sf);
        const float before = m().graphs.YMax(1, 2);
        sf->graphSlots[1].yMax->setText(QStringLiteral("ten"));
        sf->btApply->click();
        QVERIFY(sf->lbNote->text().contains(QStringLiteral("Y max of graph 2")));
        QCOMPARE(m().graphs.YMax(1, 2), before);
        emit sf->graphSlots[1].yMax->editingFinished();
        QCOMPARE(sf->graphSlots[1].yMax->text(), QString());  // back to automatic
        // A top below its bottom is raised as the limit check does, and the note says so.
        sf->graphSlots[1].yMin->setText(QStringLiteral("5"));
        sf->graphSlots[1].yMax->setText(QStringLiteral("3"));
        sf->btApply->click();
        QCOMPARE(m().graphs.YMax(1, 2), 5.0001f);
        QVERIFY(sf->lbNote->text().contains(QStringLiteral("graph 2 to 5.0001")));
        // The physical model offers only the variables it stores.
        QCOMPARE(sf->graphSlots[0].select->count(), int(m().main.NPhysVars));
    }

    void aHundredYearRunIsReplottedByApply() {
        start();
        run("48", "100");
        QCOMPARE(m().main.CumMonth, 1200);
        messages.seen.clear();  // the small river's sand balance notes
        w->Entry("mnuSelGraphics")->trigger();
        auto* sf = w->findChild<osm::SetGraphicsForm*>();
        sf->btApply->click();
        w->Graphs()->RefreshCharts();
        QVERIFY2(messages.seen.empty(), messages.seen.empty() ? "" : messages.seen[0].text.c_str());
        // The last window, 2038..2048, with its ticks spread across the axis.
        auto* x = qobject_cast<QCategoryAxis*>(w->Graphs()->ChartView(1)->chart()->axes(Qt::Horizontal).value(0));
        const QStringList labels = x->categoriesLabels();
        QCOMPARE(labels.size(), 11);
        QCOMPARE(labels.first().trimmed(), QStringLiteral("38"));
        QCOMPARE(x->endValue(labels.last()), 120.0);
        QCOMPARE(w->Graphs()->PointCount(1, 0), 121);
    }

    void anOverlaidRunIsToldApartFromObservedDataAndNamedByItsScenario() {
        start();
        run("90", "1");
        status()->chkOverlay->setChecked(true);
        m().main.ExpFile = s->folder.path() + "/second.exp";
        w->ShowScenario();
        QVERIFY(w->windowTitle().contains(QStringLiteral("second.exp")));
        run("90", "1");
        osm::ChartBox* temp = w->Graphs()->ChartView(6);
        QCOMPARE(temp->SeriesCount(), 4);  // model, obs; model, obs of the overlaid run
        const osm::CurveLook model = temp->Look(0), obs = temp->Look(1), overlaid = temp->Look(2),
                             overlaidObs = temp->Look(3);
        QVERIFY(!model.marks && model.line == Qt::SolidLine);
        QVERIFY(obs.marks && obs.filled && obs.shape == QScatterSeries::MarkerShapeCircle);
        QVERIFY(!overlaid.marks && overlaid.line == Qt::DashLine);
        QVERIFY(overlaidObs.marks && !overlaidObs.filled && overlaidObs.shape == QScatterSeries::MarkerShapeRectangle);
        // Profiles: the overlaid run dashed, observed data dotted.
        osm::ChartBox* profile = w->Profiles()->ChartView(6);
        QCOMPARE(profile->Look(0).line, Qt::SolidLine);
        QCOMPARE(profile->Look(1).line, Qt::DotLine);
        QCOMPARE(profile->Look(2).line, Qt::DashLine);
        // The key names each curve as drawn, the runs by their scenarios.
        QTest::mouseDClick(temp->viewport(), Qt::LeftButton);
        auto* key = w->Graphs()->findChild<osm::GraphLegendForm*>();
        QVERIFY(key);
        QCOMPARE(key->LabelCount(), 4);
        QCOMPARE(key->LabelText(0), QStringLiteral("Model \u2014 run: noaction.sts, default.exp"));
        QCOMPARE(key->LabelText(3), QStringLiteral("Obs \u2014 overlaid run: noaction.sts, second.exp"));
    }

    void observedGapsAreNotDrawnButTheStoreKeepsZero() {
        start();
        run("90", "1");
        // Reach 2 has observed temperatures for July and August 1990 only.
        QCOMPARE(m().main.IndexReach, 2);
        QCOMPARE(w->Graphs()->PointCount(6, 1), 12);  // a place for every month
        QCOMPARE(w->Graphs()->ChartView(6)->SeriesPointCount(1), 2);
        QCOMPARE(w->Graphs()->ChartView(6)->SeriesPointCount(0), 12);
        QCOMPARE(m().main.Results(0, 13, 2, 2, 6), 0.0f);
        // December's profile: neither reach has an observation, so nothing of
        // the observed set is drawn; the model set is.
        QCOMPARE(w->Profiles()->ChartView(6)->SeriesPointCount(1), 0);
        QVERIFY(w->Profiles()->ChartView(6)->SeriesPointCount(0) > 0);
    }

    void axisLabelsFitTheirAxesAt1280By800BeforeAndAfterARun() {
        start(1280, 800);
        for (int pass = 0; pass < 2; ++pass) {
            if (pass == 1) run("48", "10");
            w->Graphs()->RefreshCharts();
            w->Profiles()->RefreshCharts();
            QCoreApplication::processEvents();
            for (osm::ChartSetForm* form : {static_cast<osm::ChartSetForm*>(w->Graphs()),
                                            static_cast<osm::ChartSetForm*>(w->Profiles())})
                for (int i = 1; i <= 6; ++i) {
                    osm::ChartBox* box = form->ChartView(i);
                    if (box->isHidden()) continue;
                    const QString bad = labelThatDoesNotFit(box);
                    QVERIFY2(bad.isEmpty(), qPrintable(QStringLiteral("%1 chart %2, pass %3: %4")
                                                           .arg(form->objectName()).arg(i).arg(pass).arg(bad)));
                }
        }
        // The profiles are ticked at round miles of the 40-mile river.
        auto* x = qobject_cast<QCategoryAxis*>(w->Profiles()->ChartView(1)->chart()->axes(Qt::Horizontal).value(0));
        QStringList miles;
        for (const QString& l : x->categoriesLabels()) miles << l.trimmed();
        QCOMPARE(miles, (QStringList{"10", "20", "30", "40"}));  // 0.5..40 in at most six steps
        QCOMPARE(x->titleText(), QStringLiteral("River mile below the dam"));
    }

    void modeScenarioProgressAndHelpAreInView() {
        start();
        QVERIFY(w->windowTitle().startsWith(QStringLiteral("Ostrel Gorge Ecosystem Model - Nov.17/98")));
        QVERIFY(w->windowTitle().contains(QStringLiteral("Physical Model Only")));
        QCOMPARE(status()->lbMode->text(), QStringLiteral("Mode: Physical Model Only"));
        QCOMPARE(status()->lbScenario->text(), QStringLiteral("Scenario: noaction.sts, default.exp"));
        int midway = -1;
        QTimer::singleShot(0, [&] { midway = status()->pbRun->value(); });
        run("90", "2");
        QVERIFY(midway >= 1 && midway < 24);
        QCOMPARE(status()->pbRun->maximum(), 24);
        QCOMPARE(status()->pbRun->value(), 24);
        QVERIFY(status()->lbElapsed->text().contains(QLatin1Char(':')));
        w->Entry("mnuUserGuide")->trigger();
        auto* guide = w->findChild<QDialog*>(QStringLiteral("frmUserGuide"));
        QVERIFY(guide && guide->isVisible());
        const QString text = guide->findChild<QTextBrowser*>()->toPlainText();
        for (const char* part : {"Start", "Run", "Overlay", "Export", "Files of the program folder"})
            QVERIFY2(text.contains(QString::fromLatin1(part)), part);
        QVERIFY(w->AboutText().contains(QString::fromStdString(m().main.ProgramFolder)));
        QVERIFY(w->AboutText().contains(QStringLiteral("1.0.0")));
    }
};

}  // namespace

QTEST_MAIN(DesktopTest)
#include "desktop_test.moc"
