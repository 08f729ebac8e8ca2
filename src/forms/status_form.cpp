#include "forms/status_form.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/run_driver.h"
#include "forms/entry_guard.h"
#include "hydrology/stage_tables.h"

namespace osm {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

StatusForm::StatusForm(Model& m, RunObserver& observer, QWidget* parent)
    : QWidget(parent),
      BtStart(new QPushButton(QStringLiteral("Start"), this)),
      btPause(new QPushButton(QStringLiteral("Pause"), this)),
      chkOverlay(new QCheckBox(QStringLiteral("OverLay Results"), this)),
      chkAnnPause(new QCheckBox(QStringLiteral("Pause at end of year"), this)),
      txStartYr(new QLineEdit(this)),
      txNYears(new QLineEdit(this)),
      cbSelReach(new QComboBox(this)),
      lbCurYr(new QLabel(this)),
      lbMon(new QLabel(this)),
      pbRun(new QProgressBar(this)),
      lbElapsed(new QLabel(this)),
      lbMode(new QLabel(this)),
      lbScenario(new QLabel(this)),
      lbNote(new QLabel(this)),
      m_(m),
      observer_(observer) {
    setObjectName(QStringLiteral("frmStatus"));
    setWindowTitle(QStringLiteral("Controls and Model Progress"));
    btPause->setEnabled(false);

    auto* title = new QLabel(QStringLiteral("<b>Controls and Model Progress</b>"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(BtStart);
    buttons->addWidget(btPause);

    auto* years = new QFormLayout;
    years->addRow(QStringLiteral("Start Calender Year"), txStartYr);
    years->addRow(QStringLiteral("Number of Years to Simulate"), txNYears);
    auto* progress = new QHBoxLayout;
    progress->addWidget(new QLabel(QStringLiteral("Year"), this));
    progress->addWidget(lbCurYr);
    progress->addWidget(new QLabel(QStringLiteral("Month"), this));
    progress->addWidget(lbMon);
    progress->addStretch();
    auto* bar = new QHBoxLayout;
    pbRun->setObjectName(QStringLiteral("pbRun"));
    pbRun->setRange(0, 1);
    pbRun->setValue(0);
    pbRun->setTextVisible(true);
    lbElapsed->setObjectName(QStringLiteral("lbElapsed"));
    lbElapsed->setText(QStringLiteral("0:00"));
    lbElapsed->setToolTip(QStringLiteral("Time the run has taken"));
    bar->addWidget(pbRun, 1);
    bar->addWidget(lbElapsed);
    lbMode->setObjectName(QStringLiteral("lbMode"));
    lbScenario->setObjectName(QStringLiteral("lbScenario"));
    lbScenario->setWordWrap(true);
    lbNote->setObjectName(QStringLiteral("lbNote"));
    lbNote->setWordWrap(true);
    lbNote->setStyleSheet(QStringLiteral("color: #a00000"));

    auto* stages = new QGroupBox(QStringLiteral("Index Stages (kcfs)"), this);
    auto* stageRow = new QHBoxLayout(stages);
    for (size_t i = 0; i < txtIndSlice.size(); ++i) {
        txtIndSlice[i] = new QLineEdit(stages);
        stageRow->addWidget(txtIndSlice[i]);
        const int k = static_cast<int>(i) + 1;
        connect(txtIndSlice[i], &QLineEdit::textChanged, this, [this, k] { onIndexStage(k); });
    }

    auto* box = new QVBoxLayout(this);
    box->addWidget(title);
    box->addWidget(lbMode);
    box->addWidget(lbScenario);
    box->addLayout(buttons);
    box->addWidget(chkOverlay);
    box->addWidget(chkAnnPause);
    box->addLayout(years);
    box->addLayout(progress);
    box->addLayout(bar);
    box->addWidget(new QLabel(QStringLiteral("Reach shown in the graphs"), this));
    box->addWidget(cbSelReach);
    box->addWidget(stages);
    box->addWidget(lbNote);
    box->addStretch();

    const Main& mn = m_.main;
    txStartYr->setText(qs(NumText(static_cast<int>(mn.StartYr))));
    lbCurYr->setText(qs(NumText(static_cast<int>(mn.CurYr))));
    txNYears->setText(qs(NumText(static_cast<int>(mn.NYears))));
    chkOverlay->setChecked(mn.Overlay);
    chkAnnPause->setChecked(mn.AnnPause);
    SetStatusReachList();
    startGuard_ = new EntryGuard(txStartYr, lbNote, NumberCheck(QStringLiteral("Start Calender Year"), 48, 147, true));
    yearsGuard_ =
        new EntryGuard(txNYears, lbNote, NumberCheck(QStringLiteral("Number of Years to Simulate"), 1, 100, true));
    for (size_t i = 0; i < txtIndSlice.size(); ++i)
        stageGuards_[i] = new EntryGuard(txtIndSlice[i], lbNote,
                                         NumberCheck(QStringLiteral("Index stage %1").arg(i + 1), 1, 1e6, false));

    connect(BtStart, &QPushButton::clicked, this, &StatusForm::onStart);
    connect(btPause, &QPushButton::clicked, this, &StatusForm::onPause);
    connect(chkOverlay, &QCheckBox::toggled, this, [this](bool on) {
        m_.main.Overlay = on;
        if (!on) m_.main.NRuns = 0;
    });
    connect(chkAnnPause, &QCheckBox::toggled, this, [this](bool on) { m_.main.AnnPause = on; });
    connect(txStartYr, &QLineEdit::textChanged, this, [this] {
        if (startGuard_->Problem().isEmpty()) m_.main.StartYr = static_cast<int16_t>(*EntryNumber(txStartYr->text()));
    });
    connect(cbSelReach, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (filling_ || index < 0) return;
        m_.main.IndexReach = static_cast<int16_t>(index + m_.main.FirstReach);
        emit reachChanged();
    });
}

void StatusForm::SetStatusReachList() {
    const StatusReachList list = osm::SetStatusReachList(m_);
    filling_ = true;
    cbSelReach->clear();
    for (const std::string& r : list.reaches) cbSelReach->addItem(qs(r));
    const int index = m_.main.IndexReach - m_.main.FirstReach;
    cbSelReach->setCurrentIndex(index >= 0 && index < cbSelReach->count() ? index : 0);
    m_.main.IndexReach = static_cast<int16_t>(m_.main.FirstReach + std::max(cbSelReach->currentIndex(), 0));
    for (size_t i = 0; i < txtIndSlice.size(); ++i) txtIndSlice[i]->setText(qs(list.indexStages[i]));
    filling_ = false;
}

void StatusForm::ShowProgress(const QString& year, const QString& month) {
    lbCurYr->setText(year);
    lbMon->setText(month);
    pbRun->setValue(std::min<int>(m_.main.CumMonth, pbRun->maximum()));
    showElapsed();
}

void StatusForm::ShowScenario(const QString& mode, const QString& scenario) {
    lbMode->setText(QStringLiteral("Mode: ") + mode);
    lbScenario->setText(QStringLiteral("Scenario: ") + scenario);
}

QString StatusForm::StartProblem() const {
    const auto startYr = EntryNumber(txStartYr->text()), nYears = EntryNumber(txNYears->text());
    if (!startYr) return startGuard_->Problem();
    if (!nYears) return yearsGuard_->Problem();
    return QString::fromStdString(RunYearsProblem(*startYr, *nYears));
}

void StatusForm::showElapsed() {
    const qint64 s = clock_.elapsed() / 1000;
    lbElapsed->setText(QStringLiteral("%1:%2").arg(s / 60).arg(s % 60, 2, 10, QLatin1Char('0')));
}

void StatusForm::PausedAtYearEnd() { btPause->setText(QStringLiteral("Continue")); }

void StatusForm::onStart() {
    Main& mn = m_.main;
    if (BtStart->text() != QStringLiteral("Start")) {
        // Stop: the run ends at the top of the next month; a pause in force stays.
        BtStart->setText(QStringLiteral("Start"));
        mn.StopRun = true;
        btPause->setText(QStringLiteral("Pause"));
        btPause->setEnabled(false);
        return;
    }
    // The years are checked before anything is cleared: a refused Start keeps
    // the results and the views as they are.
    if (const QString why = StartProblem(); !why.isEmpty()) {
        lbNote->setText(why);
        ShowMessage(m_, "run not started", why.toStdString(), "Run not started");
        return;
    }
    lbNote->clear();
    BtStart->setText(QStringLiteral("Stop"));
    btPause->setText(QStringLiteral("Pause"));
    btPause->setEnabled(true);
    mn.StopRun = false;
    mn.Paused = false;
    lbCurYr->setText(txStartYr->text());
    pbRun->setRange(0, static_cast<int>(*EntryNumber(txNYears->text())) * 12);
    pbRun->setValue(0);
    clock_.start();
    runToEnd();
    showElapsed();
    BtStart->setText(QStringLiteral("Start"));
    mn.StopRun = true;
    btPause->setEnabled(false);
    btPause->setText(QStringLiteral("Continue"));
    emit runEnded();
}

void StatusForm::runToEnd() {
    const int startYr = static_cast<int>(*EntryNumber(txStartYr->text()));
    const int nYears = static_cast<int>(*EntryNumber(txNYears->text()));
    try {
        StartRun(m_, observer_, startYr, nYears);
    } catch (const std::exception& e) {
        ShowMessage(m_, "run stopped", e.what(), "Run stopped");
    }
}

void StatusForm::onPause() {
    Main& mn = m_.main;
    if (btPause->text() == QStringLiteral("Pause")) {
        btPause->setText(QStringLiteral("Continue"));
        mn.Paused = true;
    } else {
        btPause->setText(QStringLiteral("Pause"));
        mn.Paused = false;
    }
    // The driver stands still inside this wait; a second click, served by the
    // wait's own yield, lets both handlers return.
    WaitWhilePaused(m_, observer_);
}

void StatusForm::onIndexStage(int i) {
    if (filling_ || !stageGuards_[static_cast<size_t>(i - 1)]) return;
    // Only a flow the box accepts is taken; a refused text changes nothing.
    if (!stageGuards_[static_cast<size_t>(i - 1)]->Problem().isEmpty()) return;
    const double v = *EntryNumber(txtIndSlice[static_cast<size_t>(i - 1)]->text());
    m_.main.IndexQ(i) = Sng(v);
    try {
        SetIndexSlices(m_);
    } catch (const std::exception& e) {
        ShowMessage(m_, "index stages", e.what(), "Index Stages");
    }
}

}  // namespace osm
