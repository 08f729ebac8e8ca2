#include "forms/hydrology/policy_form.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "forms/file_dialogs.h"
#include "forms/hydrology/diurnal_picture.h"
#include "forms/field_check.h"
#include "hydrology/flow_engine.h"
#include "hydrology/policy_file.h"
#include "hydrology/process_hydro.h"
#include "hydrology/release_policy.h"

namespace osm {

namespace {

constexpr int FirstYear = 48, LastYear = 147;
constexpr double MaxCfs = 100000;
const char* const CountMask = "###,###,##0";
const char* const DollarMask = "$###,###,##0";

QString qs(const std::string& s) { return QString::fromStdString(s); }
QString fmt(double x, const char* mask) { return qs(Format(x, mask)); }
double val(const QLineEdit* box) { return Val(box->text().toStdString()); }
bool valid(const QLineEdit* box, Range r) { return RangeProblem(box->text(), r).isEmpty(); }

QLineEdit* box(QWidget* parent, const char* name) {
    auto* b = new QLineEdit(parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QPushButton* button(QWidget* parent, const char* name, const char* caption) {
    auto* b = new QPushButton(QString::fromUtf8(caption), parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QTableWidget* grid(QWidget* parent, const char* name, int rows, int cols) {
    auto* g = new QTableWidget(rows, cols, parent);
    g->setObjectName(QString::fromLatin1(name));
    g->verticalHeader()->setDefaultSectionSize(g->fontMetrics().height() + 4);
    g->horizontalHeader()->setDefaultSectionSize(g->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 8);
    return g;
}

// Sends the pipeline's progress to the form's fields and serves events, so the
// Cancel button is heard; a cancel stops the pipeline at its next step.
class FormProgress : public HydroProgress {
public:
    FormProgress(PolicyForm& f, const bool& cancel) : f_(f), cancel_(cancel) {}
    void Show(const std::string& volume, const std::string& month, int step, int steps) override {
        volume_ = volume;
        month_ = month;
        f_.lbProgVol->setText(qs(volume));
        f_.lbProgMon->setText(qs(month));
        f_.pbProcess->setRange(0, steps);
        f_.pbProcess->setValue(step);
        QApplication::processEvents();
        if (cancel_) throw Fault("cancelled by the user");
    }
    std::string where() const {
        return volume_.empty() ? std::string() : " (volume level " + volume_ + " acre-feet, month " + month_ + ")";
    }

private:
    PolicyForm& f_;
    const bool& cancel_;
    std::string volume_, month_;
};

}  // namespace

PolicyForm::PolicyForm(Model& m, FileDialogs& dialogs, QWidget* parent)
    : QWidget(parent, Qt::Window), lbWhy(new QLabel(this)), m_(m), dialogs_(dialogs), check_(new FieldCheck(lbWhy, this)) {
    setObjectName(QStringLiteral("frmPolicy"));
    setWindowTitle(QStringLiteral("Set OSD Release Hydrograph"));
    auto* tabs = new QTabWidget(this);
    tabs->addTab(scenarioPage(), QStringLiteral("Diurnal Scenarios"));
    tabs->addTab(flowPage(), QStringLiteral("New Scenario"));
    tabs->addTab(spikePage(), QStringLiteral("Spike Flows"));

    btOk = button(this, "btOk", "Exit");
    btLoadPolicy = button(this, "btLoadPolicy", "Load Policy...");
    btSavePolicy = button(this, "btSavePolicy", "Save Policy...");
    connect(btOk, &QPushButton::clicked, this, &PolicyForm::btOk_Click);
    connect(btLoadPolicy, &QPushButton::clicked, this, [this] {
        const QString path = dialogs_.Open(this, QStringLiteral("Load Release Policy File"), QStringLiteral("pol"),
                                           qs(m_.physical.PolicyFile));
        if (!path.isEmpty()) LoadPolicyFile(path);
    });
    connect(btSavePolicy, &QPushButton::clicked, this, [this] {
        const QString path = dialogs_.Save(this, QStringLiteral("Save Release Policy to File"), QStringLiteral("pol"),
                                           qs(m_.physical.PolicyFile));
        if (!path.isEmpty()) SavePolicyFile(path);
    });
    lbWhy->setObjectName(QStringLiteral("lbWhy"));
    lbWhy->setWordWrap(true);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lbWhy, 1);
    bottom->addWidget(btLoadPolicy);
    bottom->addWidget(btSavePolicy);
    bottom->addWidget(btOk);
    auto* all = new QVBoxLayout(this);
    all->addWidget(tabs);
    all->addLayout(bottom);

    // Form_Load.
    for (int mo = 1; mo <= 12; ++mo) cbMon->addItem(qs(m_.main.MonthName(mo)));
    for (int r = m_.main.FirstReach; r <= m_.main.LastReach; ++r) cbReach->addItem(qs(m_.main.ReachLabel(r)));
    fillScenarioLists();
    FillSpikeList();
    fillSpikeFlow();
    LoadGrid();
    const QList<QListWidgetItem*> current =
        fileScenarios->findItems(qs(std::filesystem::path(m_.main.StsFile).filename().string()), Qt::MatchFixedString);
    if (!current.isEmpty()) fileScenarios->setCurrentItem(current.front());
    fileScenarios_Click();
    resize(1060, 720);
}

// ---------------------------------------------------------------------------
// Pages

QWidget* PolicyForm::scenarioPage() {
    auto* page = new QWidget(this);
    fileScenarios = new QListWidget(page);
    fileScenarios->setObjectName(QStringLiteral("fileScenarios"));
    lstDiurnalPattern = new QListWidget(page);
    lstDiurnalPattern->setObjectName(QStringLiteral("lstDiurnalPattern"));
    gdYear = grid(page, "gdYear", LastYear - FirstYear + 1, 2);
    gdYear->setHorizontalHeaderLabels({QStringLiteral("Year"), QStringLiteral("Diurnal Code")});
    gdYear->verticalHeader()->setVisible(false);
    gdYear->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    gdYear->viewport()->installEventFilter(this);
    AllowNumberKeys(gdYear);
    cmdCopy = button(page, "cmdCopy", "Copy");
    cmdPast = button(page, "cmdPast", "Paste");
    cmdDelete = button(page, "cmdDelete", "Delete");
    cmdAll = button(page, "cmdAll", "All");
    connect(cmdCopy, &QPushButton::clicked, this, &PolicyForm::cmdCopy_Click);
    connect(cmdPast, &QPushButton::clicked, this, &PolicyForm::cmdPast_Click);
    connect(cmdDelete, &QPushButton::clicked, this, &PolicyForm::cmdDelete_Click);
    connect(cmdAll, &QPushButton::clicked, this, &PolicyForm::cmdAll_Click);

    picDiurnal = new DiurnalPicture(page);
    picDiurnal->setObjectName(QStringLiteral("picDiurnal"));
    pcXAxis = new HourAxis(page);
    pcXAxis->setObjectName(QStringLiteral("pcXAxis"));
    cbMon = new QComboBox(page);
    cbMon->setObjectName(QStringLiteral("cbMon"));
    cbMonRelVol = new QComboBox(page);
    cbMonRelVol->setObjectName(QStringLiteral("cbMonRelVol"));
    cbReach = new QComboBox(page);
    cbReach->setObjectName(QStringLiteral("cbReach"));
    auto label = [page](const char* name) {
        auto* l = new QLabel(page);
        l->setObjectName(QString::fromLatin1(name));
        return l;
    };
    lbYMax = label("lbYMax");
    lbYMin = label("lbYMin");
    lbLoss = label("lbLoss");
    lbAnnLoss = label("lbAnnLoss");
    lbPowerValue = label("lbPowerValue");
    for (QComboBox* cb : {cbMon, cbMonRelVol, cbReach})
        connect(cb, &QComboBox::activated, this, [this] {
            GetYMax();
            DrawDiurnal();
        });
    connect(fileScenarios, &QListWidget::itemClicked, this, [this] { fileScenarios_Click(); });

    auto* lists = new QVBoxLayout;
    lists->addWidget(new QLabel(QStringLiteral("Release Scenarios"), page));
    lists->addWidget(fileScenarios, 1);
    lists->addWidget(new QLabel(QStringLiteral("Diurnal patterns"), page));
    lists->addWidget(lstDiurnalPattern, 1);
    auto* how = new QLabel(QStringLiteral("Click on diurnal pattern in list box. Then drag mouse along cells in grid "
                                          "(years) to apply diurnal pattern to the selected years."),
                           page);
    how->setWordWrap(true);
    lists->addWidget(how);
    auto* years = new QVBoxLayout;
    years->addWidget(gdYear, 1);
    auto* gridButtons = new QGridLayout;
    gridButtons->addWidget(cmdCopy, 0, 0);
    gridButtons->addWidget(cmdPast, 0, 1);
    gridButtons->addWidget(cmdDelete, 1, 0);
    gridButtons->addWidget(cmdAll, 1, 1);
    years->addLayout(gridButtons);

    picDiurnal->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* chart = new QGridLayout;
    chart->addWidget(lbYMax, 0, 0, Qt::AlignTop);
    chart->addWidget(picDiurnal, 0, 1);
    chart->addWidget(lbYMin, 0, 0, Qt::AlignBottom);
    chart->addWidget(pcXAxis, 1, 1);
    chart->addWidget(new QLabel(QStringLiteral("Hour of the day: weekday (blue), Sunday (red)"), page), 2, 1,
                     Qt::AlignHCenter);
    chart->setColumnStretch(1, 1);
    chart->setRowStretch(0, 1);
    auto* picks = new QFormLayout;
    picks->addRow(QStringLiteral("Month"), cbMon);
    picks->addRow(QStringLiteral("Monthly Release"), cbMonRelVol);
    picks->addRow(QStringLiteral("Reach"), cbReach);
    picks->addRow(QStringLiteral("Power Value"), lbPowerValue);
    picks->addRow(QStringLiteral("Monthly Loss"), lbLoss);
    picks->addRow(QStringLiteral("Annual Loss"), lbAnnLoss);
    auto* right = new QVBoxLayout;
    right->addWidget(new QLabel(QStringLiteral("Hourly flow (cfs) of the scenario in hand"), page));
    right->addLayout(chart, 1);
    right->addLayout(picks);

    auto* row = new QHBoxLayout(page);
    row->addLayout(lists, 2);
    row->addLayout(years, 2);
    row->addLayout(right, 5);
    return page;
}

QWidget* PolicyForm::flowPage() {
    auto* page = new QWidget(this);
    txMaxDailyFlow = box(page, "txMaxDailyFlow");
    txUpRamp = box(page, "txUpRamp");
    txDownRamp = box(page, "txDownRamp");
    chkFlexiFlowFlag = new QCheckBox(QStringLiteral("Release-Vol. driven max. daily flow change"), page);
    chkFlexiFlowFlag->setObjectName(QStringLiteral("chkFlexiFlowFlag"));
    auto* limits = new QFormLayout;
    limits->addRow(QStringLiteral("Maximum daily flow (cfs)"), txMaxDailyFlow);
    limits->addRow(QStringLiteral("Upramp rate (cfs/hr)"), txUpRamp);
    limits->addRow(QStringLiteral("Downramp rate (cfs/hr)"), txDownRamp);
    check_->Watch(txMaxDailyFlow, QStringLiteral("Maximum daily flow"), Range{1000, MaxCfs}, [](double) { return QString(); });
    check_->Watch(txUpRamp, QStringLiteral("Upramp rate"), Range{1, MaxCfs}, [](double) { return QString(); });
    check_->Watch(txDownRamp, QStringLiteral("Downramp rate"), Range{1, MaxCfs}, [](double) { return QString(); });
    auto* flexi = new QGridLayout;
    flexi->addWidget(chkFlexiFlowFlag, 0, 0, 1, 3);
    flexi->addWidget(new QLabel(QStringLiteral("Release Vol"), page), 1, 1);
    flexi->addWidget(new QLabel(QStringLiteral("Max. daily. Q change"), page), 1, 2);
    for (size_t i = 0; i < 3; ++i) {
        txFlexiFlow1[i] = box(page, "txFlexiFlow1");
        txFlexiFlow2[i] = box(page, "txFlexiFlow2");
        txFlexiFlow1[i]->setProperty("index", int(i) + 1);
        txFlexiFlow2[i]->setProperty("index", int(i) + 1);
        flexi->addWidget(new QLabel(QString::number(i + 1), page), int(i) + 2, 0);
        flexi->addWidget(txFlexiFlow1[i], int(i) + 2, 1);
        flexi->addWidget(txFlexiFlow2[i], int(i) + 2, 2);
        check_->Watch(txFlexiFlow1[i], QStringLiteral("Release Vol %1").arg(i + 1), Range{0, 1e8, true},
                      [](double) { return QString(); });
        check_->Watch(txFlexiFlow2[i], QStringLiteral("Max. daily. Q change %1").arg(i + 1), Range{0, MaxCfs, true},
                      [](double) { return QString(); });
    }
    QStringList months;
    for (int mo = 1; mo <= 12; ++mo) months << qs(m_.main.MonthName(mo));
    gdMinDailyFlow = grid(page, "gdMinDailyFlow", 24, 12);
    gdMinDailyFlow->setHorizontalHeaderLabels(months);
    gdMaxDailyFlowChange = grid(page, "gdMaxDailyFlowChange", 1, 12);
    gdMaxDailyFlowChange->setHorizontalHeaderLabels(months);
    gdMaxDailyFlowChange->setFixedHeight(gdMaxDailyFlowChange->horizontalHeader()->sizeHint().height() +
                                         gdMaxDailyFlowChange->verticalHeader()->defaultSectionSize() + 6);
    for (QTableWidget* g : {gdMinDailyFlow, gdMaxDailyFlowChange}) {
        AllowNumberKeys(g);
        for (int r = 0; r < g->rowCount(); ++r)
            for (int c = 0; c < 12; ++c) SetCell(g, r, c, QStringLiteral("0"));
    }
    check_->WatchGrid(gdMinDailyFlow, QStringLiteral("Minimum daily flow"), [](int, int) { return Range{0, MaxCfs}; },
                      [](int, int, double) {});
    check_->WatchGrid(gdMaxDailyFlowChange, QStringLiteral("Maximum daily flow change"),
                      [](int, int) { return Range{0, MaxCfs}; }, [](int, int, double) {});
    lbDayChange = new QLabel(QStringLiteral("Maximum daily flow change (cfs)"), page);
    lbDayChange->setObjectName(QStringLiteral("lbDayChange"));
    connect(chkFlexiFlowFlag, &QCheckBox::toggled, this, [this](bool on) {
        gdMaxDailyFlowChange->setVisible(!on);
        lbDayChange->setVisible(!on);
    });

    txScenDesc = box(page, "txScenDesc");
    txFileName = box(page, "txFileName");
    txFileName->setText(QStringLiteral("filename.sts"));
    cmdProcessHydro = button(page, "cmdProcessHydro", "Process");
    cmdCancel = button(page, "cmdCancel", "Cancel");
    cmdCancel->setEnabled(false);
    connect(cmdProcessHydro, &QPushButton::clicked, this, &PolicyForm::cmdProcessHydro_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &PolicyForm::CancelProcess);
    lbProgVol = new QLabel(page);
    lbProgMon = new QLabel(page);
    pbProcess = new QProgressBar(page);
    pbProcess->setRange(0, 72);
    pbProcess->setValue(0);
    auto* make = new QFormLayout;
    make->addRow(QStringLiteral("Scenario description"), txScenDesc);
    make->addRow(QStringLiteral("File name"), txFileName);
    auto* run = new QHBoxLayout;
    run->addWidget(cmdProcessHydro);
    run->addWidget(cmdCancel);
    run->addWidget(pbProcess, 1);
    run->addWidget(lbProgVol);
    run->addWidget(lbProgMon);
    make->addRow(run);

    auto* left = new QVBoxLayout;
    left->addLayout(limits);
    left->addLayout(flexi);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(new QLabel(QStringLiteral("Minimum daily flow (cfs)"), page));
    right->addWidget(gdMinDailyFlow, 1);
    right->addWidget(lbDayChange);
    right->addWidget(gdMaxDailyFlowChange);
    right->addLayout(make);
    auto* row = new QHBoxLayout(page);
    row->addLayout(left, 1);
    row->addLayout(right, 3);
    return page;
}

QWidget* PolicyForm::spikePage() {
    auto* page = new QWidget(this);
    opSpikeType[0] = new QRadioButton(
        Wrapped(QStringLiteral("Riverware-defined spike implementation for currently loaded Riverware hydrologic trace "
                               "(set spike magnitude and duration in adjacent frame to conserve required volume)"),
                72),
        page);
    opSpikeType[1] = new QRadioButton(
        Wrapped(QStringLiteral("User-defined spike implementation (set parameters in adjacent frame)"), 72), page);
    for (size_t i = 0; i < 2; ++i) {
        opSpikeType[i]->setObjectName(QStringLiteral("opSpikeType"));
        opSpikeType[i]->setProperty("index", int(i));
        connect(opSpikeType[i], &QRadioButton::clicked, this, [this, i] { opSpikeType_Click(int(i)); });
    }
    opSpikeType[1]->setChecked(true);
    txSpikeYr = box(page, "txSpikeYr");
    txSpikeMon = box(page, "txSpikeMon");
    SetBox(txSpikeYr, QStringLiteral("96"));
    SetBox(txSpikeMon, QStringLiteral("3"));
    spSpikeYr = new StepButtons(page);
    spSpikeYr->setObjectName(QStringLiteral("spSpikeYr"));
    spSpikeMon = new StepButtons(page);
    spSpikeMon->setObjectName(QStringLiteral("spSpikeMon"));
    const Range years{48, 97, true}, months{1, 12, true};
    check_->Watch(txSpikeYr, QStringLiteral("Spike year"), years, [](double) { return QString(); });
    check_->Watch(txSpikeMon, QStringLiteral("Spike month"), months, [](double) { return QString(); });
    auto step = [this](QLineEdit* b, Range r, int d) {
        const double v = std::clamp(val(b) + d, r.lo, r.hi);
        SetBox(b, QString::number(v));
        showMonthVolume();
    };
    connect(spSpikeYr, &StepButtons::stepped, this, [this, step, years](int d) { step(txSpikeYr, years, d); });
    connect(spSpikeMon, &StepButtons::stepped, this, [this, step, months](int d) { step(txSpikeMon, months, d); });
    connect(txSpikeYr, &QLineEdit::textChanged, this, &PolicyForm::showMonthVolume);
    connect(txSpikeMon, &QLineEdit::textChanged, this, &PolicyForm::showMonthVolume);
    btAddSpike = button(page, "btAddSpike", "Add to list of Spikes");
    btClearSpike = button(page, "btClearSpike", "Clear Selected Spike(s)");
    connect(btAddSpike, &QPushButton::clicked, this, &PolicyForm::btAddSpike_Click);
    connect(btClearSpike, &QPushButton::clicked, this, &PolicyForm::btClearSpike_Click);
    lsSpikes = new QListWidget(page);
    lsSpikes->setObjectName(QStringLiteral("lsSpikes"));
    lsSpikes->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lbMonVol = new QLabel(page);
    lbMonVol->setObjectName(QStringLiteral("lbMonVol"));

    txSpikeMag = box(page, "txSpikeMag");
    txSpikeDur = box(page, "txSpikeDur");
    txSpikeStDay = box(page, "txSpikeStDay");
    check_->Watch(txSpikeMag, QStringLiteral("Spike Magnitude"), Range{1, 1e6}, [](double) { return QString(); });
    check_->Watch(txSpikeDur, QStringLiteral("Spike Duration"), Range{1, 28, true}, [](double) { return QString(); });
    check_->Watch(txSpikeStDay, QStringLiteral("First Spike Day"), Range{1, 28, true}, [](double) { return QString(); });
    connect(txSpikeMag, &QLineEdit::textChanged, this, &PolicyForm::SpikeVolume);
    connect(txSpikeDur, &QLineEdit::textChanged, this, &PolicyForm::SpikeVolume);
    lbSpikeVol = new QLabel(page);
    lbSpikeVol->setObjectName(QStringLiteral("lbSpikeVol"));
    lbExcess = new QLabel(page);
    lbExcess->setObjectName(QStringLiteral("lbExcess"));

    auto* months12 = new QGridLayout;
    months12->addWidget(new QLabel(QStringLiteral("Year"), page), 0, 0);
    months12->addWidget(txSpikeYr, 0, 1);
    months12->addWidget(spSpikeYr, 0, 2);
    months12->addWidget(new QLabel(QStringLiteral("Month"), page), 1, 0);
    months12->addWidget(txSpikeMon, 1, 1);
    months12->addWidget(spSpikeMon, 1, 2);
    months12->addWidget(new QLabel(QStringLiteral("Monthly Volume (ac-ft)"), page), 2, 0);
    months12->addWidget(lbMonVol, 2, 1);
    auto* list = new QVBoxLayout;
    list->addLayout(months12);
    list->addWidget(btAddSpike);
    list->addWidget(lsSpikes, 1);
    list->addWidget(btClearSpike);
    auto* frame = new QGroupBox(QStringLiteral("Spike"), page);
    auto* flow = new QFormLayout(frame);
    flow->addRow(QStringLiteral("Spike Magnitude (cfs)"), txSpikeMag);
    flow->addRow(QStringLiteral("Spike Duration (days)"), txSpikeDur);
    flow->addRow(QStringLiteral("First Spike Day in Month"), txSpikeStDay);
    flow->addRow(QStringLiteral("Required Total Volume for Spike (ac-ft)"), lbSpikeVol);
    flow->addRow(QStringLiteral("Spike Volume in Excess of 31,500 cfs Powerplant Capacity (ac-ft)"), lbExcess);
    auto* kinds = new QVBoxLayout;
    for (QRadioButton* op : opSpikeType) kinds->addWidget(op);
    kinds->addWidget(frame);
    kinds->addStretch();
    auto* row = new QHBoxLayout(page);
    row->addLayout(list, 1);
    row->addLayout(kinds, 2);
    return page;
}

// ---------------------------------------------------------------------------
// Scenarios, years and power figures

void PolicyForm::fillScenarioLists() {
    const Physical& p = m_.physical;
    fileScenarios->clear();
    QDir folder(qs(m_.main.ProgramFolder));
    fileScenarios->addItems(folder.entryList({QStringLiteral("*.sts")}, QDir::Files, QDir::Name | QDir::IgnoreCase));
    lstDiurnalPattern->clear();
    for (int k = 1; k <= p.NDiurnal; ++k) lstDiurnalPattern->addItem(QStringLiteral("%1  %2").arg(k).arg(qs(p.DiurnalName(k))));
    gdYear->setToolTip(QStringLiteral("Diurnal codes 1 to %1").arg(p.NDiurnal));
}

void PolicyForm::LoadGrid() {
    const Physical& p = m_.physical;
    for (int y = FirstYear; y <= LastYear; ++y) {
        SetCell(gdYear, y - FirstYear, 0, QString::number(1900 + y));
        gdYear->item(y - FirstYear, 0)->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        SetCell(gdYear, y - FirstYear, 1, QString::number(p.DiurnalCode(y)));
    }
    if (gdYear->property("watched").toBool()) return;
    gdYear->setProperty("watched", true);
    check_->WatchGrid(
        gdYear, QStringLiteral("Diurnal Code"),
        [this](int, int) { return Range{1, double(m_.physical.NDiurnal), true}; },
        [this](int row, int, double code) { m_.physical.DiurnalCode(FirstYear + row) = static_cast<int16_t>(code); });
    connect(gdYear, &QTableWidget::itemSelectionChanged, this, [this] { active_ = gdYear; });
    connect(gdMinDailyFlow, &QTableWidget::itemSelectionChanged, this, [this] { active_ = gdMinDailyFlow; });
    connect(gdMaxDailyFlowChange, &QTableWidget::itemSelectionChanged, this, [this] { active_ = gdMaxDailyFlowChange; });
}

void PolicyForm::GetAnnLoss() {
    try {
        lbAnnLoss->setText(fmt(osm::GetAnnLoss(m_.physical), DollarMask));
    } catch (const std::exception& e) {
        lbAnnLoss->setText(QString());
        check_->Say(qs(e.what()));
    }
}

void PolicyForm::GetYMax() {
    const int month = std::max(cbMon->currentIndex() + 1, 1);
    const int level = std::max(cbMonRelVol->currentIndex() + 1, 1);
    const FlowRange r = osm::GetYMax(m_.physical, month, level, m_.main.FirstReach, m_.main.LastReach);
    lbYMax->setText(fmt(r.yMax, CountMask));
    lbYMin->setText(fmt(r.yMin, CountMask));
    lbYMax->setProperty("value", r.yMax);
    lbYMin->setProperty("value", r.yMin);
}

void PolicyForm::DrawDiurnal() {
    const Physical& p = m_.physical;
    const int month = std::max(cbMon->currentIndex() + 1, 1);
    const int level = std::max(cbMonRelVol->currentIndex() + 1, 1);
    const int reach = std::max(cbReach->currentIndex() + m_.main.FirstReach, int(m_.main.FirstReach));
    DiurnalPicture::Day day[2]{};
    for (int d = 1; d <= 2; ++d)
        for (int h = 1; h <= 24; ++h) day[d - 1][static_cast<size_t>(h)] = p.QDiTable(d, month, level, reach, h);
    picDiurnal->Set(day[0], day[1], lbYMin->property("value").toDouble(), lbYMax->property("value").toDouble());
    const PowerFigures f = MonthPower(p, month, level);
    lbPowerValue->setText(fmt(f.value, DollarMask));
    lbLoss->setText(fmt(f.loss, DollarMask));
}

void PolicyForm::fileScenarios_Click() {
    if (QListWidgetItem* it = fileScenarios->currentItem()) {
        const std::string name = it->text().toStdString();
        try {
            ReadSts(m_, InFolder(m_, name), true);
            m_.main.StsFile = name;
        } catch (const std::exception& e) {
            check_->Say(qs(e.what()));
        }
    }
    LoadFlowParameters();
    const int level = cbMonRelVol->currentIndex();
    cbMonRelVol->clear();
    for (int L = 1; L <= 6; ++L) cbMonRelVol->addItem(fmt(m_.physical.VolLevel(L), "###,###,###"));
    cbMonRelVol->setCurrentIndex(std::max(level, 0));
    GetAnnLoss();
    GetYMax();
    DrawDiurnal();
}

void PolicyForm::LoadFlowParameters() {
    const Physical& p = m_.physical;
    SetBox(txMaxDailyFlow, qs(NumText(p.MaxFlowLimit)));
    SetBox(txUpRamp, qs(NumText(p.UpRamp)));
    SetBox(txDownRamp, qs(NumText(p.DownRamp)));
    chkFlexiFlowFlag->setChecked(p.ReleaseDrivenChange);
    for (int i = 1; i <= 3; ++i) {
        SetBox(txFlexiFlow1[size_t(i - 1)], QString::number(p.ChangeVol(i)));
        SetBox(txFlexiFlow2[size_t(i - 1)], QString::number(p.ChangeLimit(i)));
    }
    for (int mo = 1; mo <= 12; ++mo) {
        SetCell(gdMaxDailyFlowChange, 0, mo - 1, CellText(p.MaxDailyChange(mo)));
        for (int h = 1; h <= 24; ++h) SetCell(gdMinDailyFlow, h - 1, mo - 1, CellText(p.MinFlowMH(mo, h)));
    }
    txScenDesc->setText(qs(p.StsTitle));
}

void PolicyForm::ReadFlowParameters() {
    Physical& p = m_.physical;
    p.MaxFlowLimit = Sng(val(txMaxDailyFlow));
    p.UpRamp = Sng(val(txUpRamp));
    p.DownRamp = Sng(val(txDownRamp));
    p.ReleaseDrivenChange = chkFlexiFlowFlag->isChecked();
    for (int i = 1; i <= 3; ++i) {
        p.ChangeVol(i) = ToInt32(val(txFlexiFlow1[size_t(i - 1)]));
        p.ChangeLimit(i) = ToInt32(val(txFlexiFlow2[size_t(i - 1)]));
    }
    auto cell = [](QTableWidget* g, int r, int c) { return Sng(Val(g->item(r, c)->text().toStdString())); };
    for (int mo = 1; mo <= 12; ++mo) {
        p.MaxDailyChange(mo) = cell(gdMaxDailyFlowChange, 0, mo - 1);
        for (int h = 1; h <= 24; ++h) p.MinFlowMH(mo, h) = cell(gdMinDailyFlow, h - 1, mo - 1);
    }
}

void PolicyForm::cmdProcessHydro_Click() {
    if (processing_) return;
    const std::string name = txFileName->text().trimmed().toStdString();
    const std::filesystem::path file(name);
    if (file.extension() != ".sts" || file.filename() != file || file.stem().empty()) {
        check_->Say(QStringLiteral("File name: enter a file name ending in .sts, without a folder (not '%1')").arg(qs(name)));
        return;
    }
    ReadFlowParameters();
    processing_ = true;
    cancel_ = false;
    cmdProcessHydro->setEnabled(false);
    btOk->setEnabled(false);
    cmdCancel->setEnabled(true);
    FormProgress progress(*this, cancel_);
    try {
        HydroSetup setup = DefaultHydroSetup(m_, QCoreApplication::applicationDirPath().toStdString());
        setup.progress = &progress;
        ProcessHydro(m_, name, txScenDesc->text().toStdString(), setup);
        check_->Say(QString());
        try {
            AddScenario(m_, file.stem().string());
        } catch (const std::exception& e) {
            check_->Say(qs(e.what()));
        }
        fillScenarioLists();
        const QList<QListWidgetItem*> made = fileScenarios->findItems(qs(name), Qt::MatchFixedString);
        if (!made.isEmpty()) fileScenarios->setCurrentItem(made.front());
        fileScenarios_Click();
        emit policyChanged();
    } catch (const std::exception& e) {
        check_->Say(QStringLiteral("The scenario %1 was not made%2: %3. The old file is unchanged.")
                        .arg(qs(name), qs(progress.where()), qs(e.what())));
    }
    processing_ = false;
    cmdProcessHydro->setEnabled(true);
    btOk->setEnabled(true);
    cmdCancel->setEnabled(false);
}

// ---------------------------------------------------------------------------
// The grids' selection commands

QTableWidget* PolicyForm::activeGrid() const { return active_ ? active_ : gdYear; }

namespace {

// The rectangle of a grid's selection: first row, last row, first column, last column.
bool selection(const QTableWidget* g, int& r0, int& r1, int& c0, int& c1) {
    const QList<QTableWidgetSelectionRange> ranges = g->selectedRanges();
    if (ranges.isEmpty()) return false;
    r0 = c0 = INT_MAX;
    r1 = c1 = -1;
    for (const auto& s : ranges) {
        r0 = std::min(r0, s.topRow());
        r1 = std::max(r1, s.bottomRow());
        c0 = std::min(c0, s.leftColumn());
        c1 = std::max(c1, s.rightColumn());
    }
    return true;
}

}  // namespace

void PolicyForm::cmdCopy_Click() {
    const QTableWidget* g = activeGrid();
    int r0, r1, c0, c1;
    if (!selection(g, r0, r1, c0, c1)) return;
    clip_.assign(size_t(r1 - r0 + 1), std::vector<QString>(size_t(c1 - c0 + 1)));
    for (int r = r0; r <= r1; ++r)
        for (int c = c0; c <= c1; ++c) clip_[size_t(r - r0)][size_t(c - c0)] = g->item(r, c)->text();
}

void PolicyForm::cmdPast_Click() {
    QTableWidget* g = activeGrid();
    int r0, r1, c0, c1;
    if (clip_.empty() || !selection(g, r0, r1, c0, c1)) return;
    // A column that is not for entry (the years) takes nothing; the clipboard's
    // columns land from the first column that is.
    const int first = g == gdYear ? std::max(c0, 1) : c0;
    const size_t skip = g == gdYear && c0 == 0 && clip_.front().size() > 1 ? 1 : 0;
    for (size_t i = 0; i < clip_.size() && r0 + int(i) < g->rowCount(); ++i)
        for (size_t j = skip; j < clip_[i].size() && first + int(j - skip) < g->columnCount(); ++j)
            g->item(r0 + int(i), first + int(j - skip))->setText(clip_[i][j]);
}

void PolicyForm::cmdDelete_Click() {
    QTableWidget* g = activeGrid();
    // A year has always a scenario: its code goes back to the first one.
    const QString blank = g == gdYear ? QStringLiteral("1") : QStringLiteral("0");
    for (QTableWidgetItem* it : g->selectedItems())
        if (it->flags() & Qt::ItemIsEditable) it->setText(blank);
}

void PolicyForm::cmdAll_Click() { activeGrid()->selectAll(); }

void PolicyForm::ApplyDiurnalPattern() {
    const int code = lstDiurnalPattern->currentRow() + 1;
    if (code < 1) return;
    QList<int> rows;
    for (const QTableWidgetItem* it : gdYear->selectedItems())
        if (!rows.contains(it->row())) rows << it->row();
    for (int row : rows) gdYear->item(row, 1)->setText(QString::number(code));
}

bool PolicyForm::eventFilter(QObject* watched, QEvent* e) {
    if (watched == gdYear->viewport() && e->type() == QEvent::MouseButtonRelease &&
        lstDiurnalPattern->currentItem() && lstDiurnalPattern->currentItem()->isSelected())
        ApplyDiurnalPattern();
    return QWidget::eventFilter(watched, e);
}

// ---------------------------------------------------------------------------
// Spikes

void PolicyForm::FillSpikeList() {
    lsSpikes->clear();
    for (const std::string& line : SpikeListLines(m_.physical)) lsSpikes->addItem(qs(line));
}

void PolicyForm::fillSpikeFlow() {
    const Physical& p = m_.physical;
    SetBox(txSpikeMag, qs(NumText(p.SpikeQ)));
    SetBox(txSpikeDur, QString::number(p.SpikeDays));
    SetBox(txSpikeStDay, QString::number(p.SpikeStartDay));
    SpikeVolume();
    showMonthVolume();
}

void PolicyForm::showMonthVolume() {
    if (!valid(txSpikeYr, {48, 97, true}) || !valid(txSpikeMon, {1, 12, true})) {
        lbMonVol->setText(QString());
        return;
    }
    const int i = SpikeMonthIdx(int(val(txSpikeYr)), int(val(txSpikeMon)));
    lbMonVol->setText(fmt(m_.physical.MonthlyVol(i), CountMask));
}

void PolicyForm::SpikeVolume() {
    if (!valid(txSpikeMag, {1, 1e6}) || !valid(txSpikeDur, {1, 28, true})) return;
    const SpikeVolumes v = osm::SpikeVolume(val(txSpikeMag), val(txSpikeDur));
    lbSpikeVol->setText(fmt(v.required, CountMask));
    lbExcess->setText(fmt(v.excess, CountMask));
}

void PolicyForm::AddSpike(int year, int month) {
    osm::AddSpike(m_.physical, year, month);
    FillSpikeList();
}

void PolicyForm::btAddSpike_Click() {
    const QString y = RangeProblem(txSpikeYr->text(), {48, 97, true}), mo = RangeProblem(txSpikeMon->text(), {1, 12, true});
    if (!y.isEmpty() || !mo.isEmpty()) {
        check_->Say(!y.isEmpty() ? QStringLiteral("Spike year: ") + y : QStringLiteral("Spike month: ") + mo);
        return;
    }
    AddSpike(int(val(txSpikeYr)), int(val(txSpikeMon)));
}

void PolicyForm::btClearSpike_Click() {
    for (const QListWidgetItem* it : lsSpikes->selectedItems()) ClearSpikeLine(m_.physical, it->text().toStdString());
    FillSpikeList();
}

void PolicyForm::opSpikeType_Click(int index) {
    const Physical& p = m_.physical;
    const bool user = index == 1;
    if (!user) {
        if (p.TraceSpikeKcfs <= 0 || p.MonthlyVolField.empty()) {
            opSpikeType[1]->setChecked(true);
            ShowMessage(m_, "spike trace",
                        "You must select a Riverware spike flow-hydrologic trace from the 'Set OSD Monthly Hydrograph' "
                        "dialogue box",
                        "Set OSD Release Hydrograph");
            return;
        }
        try {
            LoadSpikeFlags(m_, m_.main.RiverwareXls, "spike$");
        } catch (const std::exception& e) {
            opSpikeType[1]->setChecked(true);
            check_->Say(qs(e.what()));
            return;
        }
        FillSpikeList();
    }
    for (QWidget* w : std::initializer_list<QWidget*>{txSpikeYr, txSpikeMon, spSpikeYr, spSpikeMon, btAddSpike, btClearSpike})
        w->setEnabled(user);
}

bool PolicyForm::takeSpikeFlow() {
    for (const auto& [b, name, r] : {std::tuple{txSpikeMag, "Spike Magnitude", Range{1, 1e6}},
                                     std::tuple{txSpikeDur, "Spike Duration", Range{1, 28, true}},
                                     std::tuple{txSpikeStDay, "First Spike Day", Range{1, 28, true}}}) {
        const QString problem = RangeProblem(b->text(), r);
        if (!problem.isEmpty()) {
            check_->Say(QString::fromLatin1(name) + QStringLiteral(": ") + problem);
            return false;
        }
    }
    const int dur = int(val(txSpikeDur)), day = int(val(txSpikeStDay));
    if (day + dur - 1 > 28) {
        check_->Say(QStringLiteral("The spike of %1 days from day %2 leaves no ordinary days in February; it must end "
                                   "by day 28")
                        .arg(dur)
                        .arg(day));
        return false;
    }
    SetSpikeFlow(m_.physical, val(txSpikeMag), dur, day);
    return true;
}

void PolicyForm::btOk_Click() {
    if (takeSpikeFlow()) close();
}

// ---------------------------------------------------------------------------
// The policy file

void PolicyForm::LoadPolicyFile(const QString& path) {
    try {
        LoadPolicy(m_, path.toStdString());
    } catch (const std::exception& e) {
        check_->Say(QStringLiteral("The policy was not loaded: ") + qs(e.what()));
        return;
    }
    m_.physical.PolicyFile = path.toStdString();
    fillScenarioLists();
    LoadGrid();
    FillSpikeList();
    fillSpikeFlow();
    check_->Say(QString());
    emit policyChanged();
}

void PolicyForm::SavePolicyFile(const QString& path) {
    if (!takeSpikeFlow()) return;
    try {
        SavePolicy(m_, path.toStdString());
    } catch (const std::exception& e) {
        check_->Say(QStringLiteral("The policy was not saved: ") + qs(e.what()));
        return;
    }
    m_.physical.PolicyFile = path.toStdString();
    check_->Say(QString());
    emit policyChanged();
}

}  // namespace osm
