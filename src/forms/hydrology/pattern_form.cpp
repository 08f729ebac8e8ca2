#include "forms/hydrology/pattern_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/model.h"
#include "core/numbers.h"
#include "core/workbook.h"
#include "forms/field_check.h"

namespace osm {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }
QString fmt(double x, const char* mask) { return qs(Format(x, mask)); }
double val(const QLineEdit* box) { return Val(box->text().toStdString()); }
constexpr int Pad = 24;

QLineEdit* box(QWidget* parent, const char* name) {
    auto* b = new QLineEdit(parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

const char* const HistoricalSheet = "Historical$";

}  // namespace

// ---------------------------------------------------------------------------
// SetFlow

PatternChart::PatternChart(QWidget* parent) : QWidget(parent) {
    setMinimumSize(360, 200);
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::white);
    setPalette(pal);
}

void PatternChart::Set(const MonthPattern& values, double top) {
    values_ = values;
    top_ = top > 0 ? top : 1;
    update();
}

std::pair<int, double> PatternChart::At(QPointF p) const {
    const double w = (width() - 2.0 * Pad) / 12.0, h = height() - 2.0 * Pad;
    const int month = static_cast<int>(Int((p.x() - Pad) / w)) + 1;
    if (month < 1 || month > 12) return {0, 0};
    const double v = std::clamp((height() - Pad - p.y()) / h, 0.0, 1.0) * top_;
    return {month, v};
}

void PatternChart::take(QPointF p) {
    const auto [month, v] = At(p);
    if (month == 0) return;
    values_[size_t(month)] = v;
    update();
    emit changed(month, v);
}

void PatternChart::mousePressEvent(QMouseEvent* e) { take(e->position()); }
void PatternChart::mouseMoveEvent(QMouseEvent* e) {
    if (e->buttons() != Qt::NoButton) take(e->position());
}

void PatternChart::paintEvent(QPaintEvent*) {
    QPainter pt(this);
    const double w = (width() - 2.0 * Pad) / 12.0, h = height() - 2.0 * Pad;
    pt.setPen(Qt::gray);
    pt.drawRect(QRectF(Pad, Pad, width() - 2.0 * Pad, h));
    static const char* const letters = "JFMAMJJASOND";
    for (int mo = 1; mo <= 12; ++mo) {
        const double v = std::clamp(values_[size_t(mo)] / top_, 0.0, 1.0);
        const QRectF bar(Pad + (mo - 1) * w + 3, Pad + h * (1 - v), w - 6, h * v);
        pt.fillRect(bar, QColor(70, 110, 190));
        pt.setPen(Qt::black);
        pt.drawText(QRectF(Pad + (mo - 1) * w, height() - Pad, w, Pad), Qt::AlignCenter, QString(QChar(letters[mo - 1])));
    }
    pt.drawText(QRectF(Pad, 0, width() - 2.0 * Pad, Pad), Qt::AlignLeft | Qt::AlignVCenter,
                QString::fromStdString(Format(top_, "###,###,##0")));
}

// ---------------------------------------------------------------------------
// The form

PatternForm::PatternForm(Model& m, QWidget* parent)
    : QWidget(parent, Qt::Window),
      cbTribList(new QComboBox(this)),
      frFlow(new QGroupBox(this)),
      SetFlow(new PatternChart(frFlow)),
      txRepYr(box(this, "txRepYr")),
      txYMax(box(this, "txYMax")),
      txConstFlow(box(this, "txConstFlow")),
      lbCurVal(new QLabel(this)),
      lbAnnVol(new QLabel(this)),
      lbAnnVolCap(new QLabel(QStringLiteral("Annual volume (ac-ft)"), this)),
      cbMonRel(new QComboBox(this)),
      cbRun(new QComboBox(this)),
      frOSD(new QGroupBox(QStringLiteral("OS Dam release"), this)),
      txMaxRelSeasonAdjust(box(this, "txMaxRelSeasonAdjust")),
      chkRelative(new QCheckBox(QStringLiteral("Relative pattern in monthly release volumes"), this)),
      txOSDSSConc(box(this, "txOSDSSConc")),
      txPreOSDPropSand(box(this, "txPreOSDPropSand")),
      txPostOSDPropSand(box(this, "txPostOSDPropSand")),
      chkHistOSDSSConc(new QCheckBox(Wrapped(QStringLiteral("Use historical Harl Ferry suspended sediment data for "
                                                            "pre-dam years (48-63, or first 16 yrs of RW run)"),
                                             60),
                                     this)),
      cmdExit(new QPushButton(QStringLiteral("Exit"), this)),
      lbWhy(new QLabel(this)),
      m_(m),
      check_(new FieldCheck(lbWhy, this)) {
    setObjectName(QStringLiteral("DisSedIn"));
    setWindowTitle(QStringLiteral("Define Water and Sediment Discharge Monthly Patterns"));
    cbTribList->setObjectName(QStringLiteral("cbTribList"));
    cbMonRel->setObjectName(QStringLiteral("cbMonRel"));
    cbRun->setObjectName(QStringLiteral("cbRun"));
    SetFlow->setObjectName(QStringLiteral("SetFlow"));
    chkRelative->setObjectName(QStringLiteral("chkRelative"));
    chkHistOSDSSConc->setObjectName(QStringLiteral("chkHistOSDSSConc"));
    cmdExit->setObjectName(QStringLiteral("cmdExit"));
    lbAnnVol->setObjectName(QStringLiteral("lbAnnVol"));
    lbCurVal->setObjectName(QStringLiteral("lbCurVal"));
    const char* const kinds[] = {"Historical or Riverware (RW)  Monthly Pattern (48-97)",
                                 "User-defined monthly sequence for one year (repeated across years)",
                                 "Repeat monthly sequence from year:"};
    for (size_t i = 0; i < 3; ++i) {
        opSeqType[i] = new QRadioButton(QString::fromLatin1(kinds[i]), this);
        opSeqType[i]->setObjectName(QStringLiteral("opSeqType"));
        connect(opSeqType[i], &QRadioButton::clicked, this, [this, i] { opSeqType_Click(int(i) + 1); });
    }

    // The series' patterns start from the seasonal patterns of the parameter file.
    const Physical& p = m_.physical;
    for (int i = 1; i <= 1 + m_.morph.NTrib && i <= 3; ++i) {
        pattern_[size_t(i)] = SeasonalPattern(m_, i);
        seqType_[size_t(i)] = p.SeqType(i);
        repYr_[size_t(i)] = p.RepYr(i);
        yMax_[size_t(i)] = i == 1 ? 2000000 : 3000;
    }
    const Sediment& sd = m_.sediment;
    SetBox(txMaxRelSeasonAdjust, qs(NumText(p.MaxRelSeasonAdjust)));
    chkRelative->setChecked(p.RelativeSeasonal);
    SetBox(txOSDSSConc, fmt(sd.OSDSSConc, "0.000"));
    SetBox(txPreOSDPropSand, fmt(sd.PreOSDPropSand, "0.000"));
    SetBox(txPostOSDPropSand, fmt(sd.PostOSDPropSand, "0.000"));
    chkHistOSDSSConc->setChecked(sd.HistOSDSSConc);
    auto none = [](double) { return QString(); };
    check_->Watch(txMaxRelSeasonAdjust, QStringLiteral("Max. annual release"), Range{0, 1e9}, none);
    check_->Watch(txOSDSSConc, QStringLiteral("OSD outflow suspended sediment"), Range{0, 100000}, none);
    check_->Watch(txPreOSDPropSand, QStringLiteral("Pre-Dam proportion of sand"), Range{0, 1}, none);
    check_->Watch(txPostOSDPropSand, QStringLiteral("Post-Dam proportion of sand"), Range{0, 1}, none);
    check_->Watch(txYMax, QStringLiteral("Chart top"), Range{1, 1e9}, [this](double v) {
        yMax_[size_t(Series())] = v;
        PlotFlow();
        return QString();
    });
    check_->Watch(txConstFlow, QStringLiteral("Constant value"), Range{0, 1e9}, [this](double v) {
        for (int mo = 1; mo <= 12; ++mo) pattern_[size_t(Series())][size_t(mo)] = v;
        PlotFlow();
        return QString();
    });
    check_->Watch(txRepYr, QStringLiteral("Repeat year"), Range{-1e9, 1e9}, [this](double v) {
        if (v < 48 || v > 97 || v != Int(v)) return QStringLiteral("Enter a year between 48 and 97");
        const int i = Series();
        repYr_[size_t(i)] = int(v);
        if (seqType_[size_t(i)] == SeqRepeatYear) {
            try {
                pattern_[size_t(i)] = GetRepYrData(m_, i, int(v));
            } catch (const std::exception& e) {
                return qs(e.what());
            }
            PlotFlow();
        }
        return QString();
    });
    connect(SetFlow, &PatternChart::changed, this, &PatternForm::SetMonth);
    connect(cbTribList, &QComboBox::currentIndexChanged, this, &PatternForm::cbTribList_Click);
    connect(chkRelative, &QCheckBox::toggled, this, &PatternForm::caption);
    connect(cmdExit, &QPushButton::clicked, this, &PatternForm::cmdExit_Click);

    auto* seq = new QVBoxLayout;
    for (QRadioButton* op : opSeqType) seq->addWidget(op);
    auto* rep = new QHBoxLayout;
    rep->addSpacing(24);
    rep->addWidget(new QLabel(QStringLiteral("Year (48-97)"), this));
    rep->addWidget(txRepYr);
    rep->addStretch();
    seq->addLayout(rep);
    auto* source = new QFormLayout;
    source->addRow(QStringLiteral("Series"), cbTribList);
    source->addRow(QStringLiteral("Monthly release sheet"), cbMonRel);
    source->addRow(QStringLiteral("Riverware trace"), cbRun);
    auto* chartBox = new QVBoxLayout(frFlow);
    chartBox->addWidget(SetFlow, 1);
    auto* under = new QFormLayout;
    under->addRow(QStringLiteral("Value under the pointer"), lbCurVal);
    under->addRow(lbAnnVolCap, lbAnnVol);
    under->addRow(QStringLiteral("Chart top"), txYMax);
    under->addRow(QStringLiteral("All months"), txConstFlow);
    chartBox->addLayout(under);
    auto* osd = new QFormLayout(frOSD);
    osd->setRowWrapPolicy(QFormLayout::WrapLongRows);
    osd->addRow(QStringLiteral("Max. annual release (million ac-ft) when relative pattern can be applied"),
                txMaxRelSeasonAdjust);
    osd->addRow(chkRelative);
    osd->addRow(QStringLiteral("OSD ouflow suspended sediment concentration (mg/l)"), txOSDSSConc);
    osd->addRow(new QLabel(QStringLiteral("Proportion of sand in OSD suspended sediment outflow"), frOSD));
    osd->addRow(QStringLiteral("Pre-Dam"), txPreOSDPropSand);
    osd->addRow(QStringLiteral("Post-Dam"), txPostOSDPropSand);
    osd->addRow(chkHistOSDSSConc);

    auto* left = new QVBoxLayout;
    left->addLayout(source);
    left->addLayout(seq);
    left->addWidget(frOSD);
    left->addStretch();
    auto* top = new QHBoxLayout;
    top->addLayout(left, 2);
    top->addWidget(frFlow, 3);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(new QLabel(QStringLiteral("Press return key to enter changes in text boxes"), this));
    bottom->addWidget(lbWhy, 1);
    bottom->addWidget(cmdExit);
    lbWhy->setWordWrap(true);
    auto* all = new QVBoxLayout(this);
    all->addLayout(top, 1);
    all->addLayout(bottom);

    PopulateListBoxes();
    cbTribList_Click();
    resize(1040, 620);
}

int PatternForm::Series() const { return std::max(cbTribList->currentIndex() + 1, 1); }

void PatternForm::PopulateListBoxes() {
    const QSignalBlocker q1(cbMonRel), q2(cbRun), q3(cbTribList);
    const Physical& p = m_.physical;
    try {
        Database db = OpenWorkbook(m_.main.RiverwareXls);
        for (std::string sheet : db.SheetNames()) {
            if (sheet.back() != '$') sheet += '$';
            if (sheet != "RunList$" && sheet != "spike$") cbMonRel->addItem(qs(sheet));
        }
        if (db.hasTable("RunList$")) runs_ = ReadRunList(m_.main.RiverwareXls);
    } catch (const std::exception& e) {
        check_->Say(qs(e.what()));
    }
    for (const TraceInfo& t : runs_)
        cbRun->addItem(t.spikeKcfs > 0 ? QStringLiteral("Run%1 (%2 kcfs)").arg(t.run).arg(t.spikeKcfs)
                                       : QStringLiteral("Run%1").arg(t.run));
    cbMonRel->setCurrentIndex(cbMonRel->findText(qs(p.MonthlyVolSheet)));
    for (size_t k = 0; k < runs_.size(); ++k)
        if (p.MonthlyVolField == "Run" + std::to_string(runs_[k].run)) cbRun->setCurrentIndex(int(k));
    cbRun->setEnabled(p.MonthlyVolSheet != HistoricalSheet);
    connect(cbMonRel, &QComboBox::activated, this, &PatternForm::cbMonRel_Click);
    connect(cbRun, &QComboBox::activated, this, &PatternForm::cbMonRel_Click);
    cbTribList->addItem(QStringLiteral("OS Dam"));
    for (int i = 1; i <= m_.morph.NTrib && i <= 2; ++i) cbTribList->addItem(qs(m_.morph.TribName(m_.morph.TribReach(i))));
}

void PatternForm::caption() {
    if (Series() != 1) frFlow->setTitle(QStringLiteral("Average Monthly Discharge (cfs)"));
    else if (chkRelative->isChecked())
        frFlow->setTitle(QStringLiteral("Relative Monthly Release Pattern which scales to annual volume"));
    else frFlow->setTitle(QStringLiteral("Total Monthly Release (ac-ft)"));
}

void PatternForm::cbTribList_Click() {
    const int i = Series();
    const bool dam = i == 1;
    caption();
    for (QWidget* w : std::initializer_list<QWidget*>{frOSD, cbMonRel, cbRun, lbAnnVol, lbAnnVolCap}) w->setVisible(dam);
    SetBox(txYMax, qs(NumText(yMax_[size_t(i)])));
    SetBox(txRepYr, QString::number(repYr_[size_t(i)]));
    opSeqType[size_t(seqType_[size_t(i)] - 1)]->setChecked(true);
    PlotFlow();
}

void PatternForm::opSeqType_Click(int kind) {
    const int i = Series();
    seqType_[size_t(i)] = kind;
    // The record comes back at once; a pattern waits for Exit.
    if (kind == SeqRecord) m_.physical.SeqType(i) = SeqRecord;
    try {
        if (kind == SeqRecord && i == 1) LoadReleaseTrace(m_, m_.physical.MonthlyVolSheet, m_.physical.MonthlyVolField);
        if (kind == SeqRecord && i > 1) ApplyTribSequence(m_, i, SeqRecord, pattern_[size_t(i)]);
        if (kind == SeqRepeatYear) pattern_[size_t(i)] = GetRepYrData(m_, i, repYr_[size_t(i)]);
    } catch (const std::exception& e) {
        check_->Say(qs(e.what()));
        return;
    }
    PlotFlow();
}

void PatternForm::cbMonRel_Click() {
    const std::string sheet = cbMonRel->currentText().toStdString();
    const int k = cbRun->currentIndex();
    const std::string field =
        sheet == HistoricalSheet || k < 0 || size_t(k) >= runs_.size() ? "" : "Run" + std::to_string(runs_[size_t(k)].run);
    cbRun->setEnabled(sheet != HistoricalSheet);
    try {
        LoadReleaseTrace(m_, sheet, field);
        // A trace chosen is the dam's record.
        seqType_[1] = SeqRecord;
        m_.physical.SeqType(1) = SeqRecord;
        if (Series() == 1) opSeqType[0]->setChecked(true);
        check_->Say(QString());
    } catch (const std::exception& e) {
        check_->Say(qs(e.what()));
    }
}

void PatternForm::PlotFlow() {
    const int i = Series();
    SetFlow->Set(pattern_[size_t(i)], yMax_[size_t(i)]);
    double sum = 0;
    for (int mo = 1; mo <= 12; ++mo) sum += pattern_[size_t(i)][size_t(mo)];
    lbAnnVol->setText(fmt(sum, "###,###,###,##0"));
}

void PatternForm::SetMonth(int month, double value) {
    pattern_[size_t(Series())][size_t(month)] = value;
    lbCurVal->setText(fmt(value, "###,###,##0"));
    PlotFlow();
}

void PatternForm::cmdExit_Click() {
    Physical& p = m_.physical;
    Sediment& sd = m_.sediment;
    const Physical savedP = p;
    const Morph savedMorph = m_.morph;
    const Sediment savedSed = sd;
    try {
        p.MaxRelSeasonAdjust = Sng(val(txMaxRelSeasonAdjust));
        p.RelativeSeasonal = chkRelative->isChecked();
        sd.OSDSSConc = Sng(val(txOSDSSConc));
        sd.PreOSDPropSand = Sng(val(txPreOSDPropSand));
        sd.PostOSDPropSand = Sng(val(txPostOSDPropSand));
        sd.HistOSDSSConc = chkHistOSDSSConc->isChecked();
        for (int i = 1; i <= 1 + m_.morph.NTrib && i <= 3; ++i) {
            p.SeqType(i) = static_cast<int16_t>(seqType_[size_t(i)]);
            p.RepYr(i) = static_cast<int16_t>(repYr_[size_t(i)]);
        }
        ApplyDamSequence(m_, p.SeqType(1), pattern_[1]);
        for (int i = 2; i <= 1 + m_.morph.NTrib && i <= 3; ++i) ApplyTribSequence(m_, i, p.SeqType(i), pattern_[size_t(i)]);
        for (int i = 1; i <= 1 + m_.morph.NTrib && i - 1 <= p.RelSeason.hi(0); ++i)
            for (int mo = 1; mo <= 12; ++mo) p.RelSeason(i - 1, mo) = Sng(pattern_[size_t(i)][size_t(mo)]);
    } catch (const std::exception& e) {
        p = savedP;
        m_.morph = savedMorph;
        sd = savedSed;
        check_->Say(QStringLiteral("Nothing was changed: ") + qs(e.what()));
        return;
    }
    close();
}

}  // namespace osm
