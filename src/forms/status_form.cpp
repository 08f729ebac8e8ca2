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
#include <QPushButton>
#include <QVBoxLayout>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/run_driver.h"
#include "hydrology/stage_tables.h"

namespace osm {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }

// A 16-bit value typed into a box, as the program converts it; nothing when it
// does not fit.
bool textInt16(const QString& text, int16_t& out) {
    const double v = CInt(Val(text.toStdString()));
    if (v < -32768.0 || v > 32767.0) return false;
    out = static_cast<int16_t>(v);
    return true;
}

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
    box->addLayout(buttons);
    box->addWidget(chkOverlay);
    box->addWidget(chkAnnPause);
    box->addLayout(years);
    box->addLayout(progress);
    box->addWidget(new QLabel(QStringLiteral("Reach shown in the graphs"), this));
    box->addWidget(cbSelReach);
    box->addWidget(stages);
    box->addStretch();

    const Main& mn = m_.main;
    txStartYr->setText(qs(NumText(static_cast<int>(mn.StartYr))));
    lbCurYr->setText(qs(NumText(static_cast<int>(mn.CurYr))));
    txNYears->setText(qs(NumText(static_cast<int>(mn.NYears))));
    chkOverlay->setChecked(mn.Overlay);
    chkAnnPause->setChecked(mn.AnnPause);
    SetStatusReachList();

    connect(BtStart, &QPushButton::clicked, this, &StatusForm::onStart);
    connect(btPause, &QPushButton::clicked, this, &StatusForm::onPause);
    connect(chkOverlay, &QCheckBox::toggled, this, [this](bool on) {
        m_.main.Overlay = on;
        if (!on) m_.main.NRuns = 0;
    });
    connect(chkAnnPause, &QCheckBox::toggled, this, [this](bool on) { m_.main.AnnPause = on; });
    connect(txStartYr, &QLineEdit::textChanged, this, [this](const QString& t) {
        int16_t y = 0;
        if (textInt16(t, y)) m_.main.StartYr = y;
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
    BtStart->setText(QStringLiteral("Stop"));
    btPause->setText(QStringLiteral("Pause"));
    btPause->setEnabled(true);
    mn.StopRun = false;
    mn.Paused = false;
    lbCurYr->setText(txStartYr->text());
    runToEnd();
    BtStart->setText(QStringLiteral("Start"));
    mn.StopRun = true;
    btPause->setEnabled(false);
    btPause->setText(QStringLiteral("Continue"));
    emit runEnded();
}

void StatusForm::runToEnd() {
    int16_t startYr = 0, nYears = 0;
    if (!textInt16(txStartYr->text(), startYr) || !textInt16(txNYears->text(), nYears)) {
        ShowMessage(m_, "run stopped", "The start year or the number of years does not fit in a 16-bit number",
                    "Run stopped");
        return;
    }
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
    if (filling_) return;
    const double v = Val(txtIndSlice[static_cast<size_t>(i - 1)]->text().toStdString());
    if (v == 0) return;
    m_.main.IndexQ(i) = Sng(v);
    try {
        SetIndexSlices(m_);
    } catch (const std::exception& e) {
        ShowMessage(m_, "index stages", e.what(), "Index Stages");
    }
}

}  // namespace osm
