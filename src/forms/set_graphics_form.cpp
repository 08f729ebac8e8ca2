#include "forms/set_graphics_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "core/model.h"
#include "core/numbers.h"
#include "forms/entry_guard.h"

namespace osm {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }
double val(const QLineEdit* box) { return Val(box->text().toStdString()); }

// A 16-bit value of a box; out of range leaves the old one.
void setInt16(int16_t& target, const QLineEdit* box) {
    const double v = CInt(val(box));
    if (v >= -32768.0 && v <= 32767.0) target = static_cast<int16_t>(v);
}

// A limit of 0 is shown as an empty box, which keeps automatic scaling.
QString limitText(float v) { return v == 0.0f ? QString() : qs(NumText(v)); }

}  // namespace

SetGraphicsForm::SetGraphicsForm(Model& m, QWidget* parent)
    : QDialog(parent),
      txTimeWindow(new QLineEdit(this)),
      txtProfMonth(new QLineEdit(this)),
      chkSandBox(new QCheckBox(QStringLiteral("Show sand storage profile"), this)),
      chkPlotObsAvg(new QCheckBox(QStringLiteral("Plot observed averages"), this)),
      opCampingBeaches(new QRadioButton(QStringLiteral("Camping beaches"), this)),
      opReachBreaks(new QRadioButton(QStringLiteral("Reach breaks"), this)),
      btMatch(new QPushButton(QStringLiteral("Sync Graphs and DS Profiles"), this)),
      btApply(new QPushButton(QStringLiteral("Apply"), this)),
      lbNote(new QLabel(this)),
      m_(m) {
    setObjectName(QStringLiteral("frmSetGraphics"));
    setWindowTitle(QStringLiteral("Set Graphics"));
    Graphs& g = m_.graphs;

    auto* general = new QWidget(this);
    auto* form = new QFormLayout(general);
    form->addRow(QStringLiteral("Number of Years to Display in Time Series Graphs"), txTimeWindow);
    form->addRow(QStringLiteral("Month of maps and profiles (0 every month)"), txtProfMonth);
    auto* views = new QGroupBox(QStringLiteral("Views"), general);
    auto* viewRow = new QHBoxLayout(views);
    const std::array<const char*, 4> viewNames{"Graphs", "Maps", "DS Profiles", "Reach- cross sections"};
    for (size_t i = 0; i < chkVisForms.size(); ++i) {
        chkVisForms[i] = new QCheckBox(QString::fromLatin1(viewNames[i]), views);
        chkVisForms[i]->setChecked(g.VisForms(static_cast<int>(i) + 1) != 0);
        viewRow->addWidget(chkVisForms[i]);
    }
    form->addRow(views);
    auto* cx = new QGroupBox(QStringLiteral("Cross-section panels"), general);
    auto* cxRow = new QHBoxLayout(cx);
    const std::array<const char*, 3> cxNames{"Riparian", "Algae", "Sediment"};
    for (size_t i = 0; i < chCXProfiles.size(); ++i) {
        chCXProfiles[i] = new QCheckBox(QString::fromLatin1(cxNames[i]), cx);
        chCXProfiles[i]->setChecked(g.CXProfile(static_cast<int>(i) + 1) != 0);
        cxRow->addWidget(chCXProfiles[i]);
    }
    form->addRow(cx);
    form->addRow(chkSandBox);
    form->addRow(chkPlotObsAvg);
    auto* labels = new QGroupBox(QStringLiteral("Map labels"), general);
    auto* labelRow = new QHBoxLayout(labels);
    labelRow->addWidget(opReachBreaks);
    labelRow->addWidget(opCampingBeaches);
    opReachBreaks->setChecked(true);
    // The maps are not part of this program yet; their labels wait for them.
    labels->setEnabled(false);
    form->addRow(labels);

    txTimeWindow->setText(qs(NumText(static_cast<int>(g.TimeWindow))));
    txtProfMonth->setText(qs(NumText(static_cast<int>(m_.main.ProfileMonth))));
    chkSandBox->setChecked(g.ShowSandBox);
    chkPlotObsAvg->setChecked(g.PlotObsAvg);

    auto* tabs = new QTabWidget(this);
    tabs->addTab(slotPage(graphSlots, true, graphsEdited_), QStringLiteral("Graphs"));
    tabs->addTab(slotPage(mapSlots, false, mapsEdited_), QStringLiteral("Maps"));
    tabs->addTab(slotPage(profileSlots, true, profilesEdited_), QStringLiteral("DS Profiles"));
    tabs->addTab(general, QStringLiteral("General"));
    loadSlots(graphSlots, g.GraphSlot, 1);
    loadSlots(mapSlots, g.MapSlot, 0);
    loadSlots(profileSlots, g.ProfSlot, 2);
    graphsEdited_ = mapsEdited_ = profilesEdited_ = false;

    auto* buttons = new QHBoxLayout;
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    buttons->addWidget(btMatch);
    buttons->addStretch();
    buttons->addWidget(btApply);
    buttons->addWidget(close);
    lbNote->setObjectName(QStringLiteral("lbNote"));
    lbNote->setWordWrap(true);
    lbNote->setStyleSheet(QStringLiteral("color: #a00000"));
    auto* box = new QVBoxLayout(this);
    box->addWidget(tabs);
    box->addWidget(lbNote);
    box->addLayout(buttons);

    guards_.push_back(new EntryGuard(txTimeWindow, lbNote,
                                     NumberCheck(QStringLiteral("Number of Years to Display"), 1, 100, true)));
    guards_.push_back(new EntryGuard(txtProfMonth, lbNote, NumberCheck(QStringLiteral("Month of maps and profiles"), 0, 12, true)));
    for (auto* rows : {&graphSlots, &profileSlots})
        for (size_t i = 0; i < rows->size(); ++i) {
            const QString row = QStringLiteral(" of %1 %2").arg(rows == &graphSlots ? QStringLiteral("graph") : QStringLiteral("profile")).arg(i + 1);
            guards_.push_back(new EntryGuard((*rows)[i].yMin, lbNote, OptionalNumberCheck(QStringLiteral("Y min") + row, -1e9, 1e9)));
            guards_.push_back(new EntryGuard((*rows)[i].yMax, lbNote, OptionalNumberCheck(QStringLiteral("Y max") + row, -1e9, 1e9)));
        }

    // Only a value the box accepts is taken.
    connect(txTimeWindow, &QLineEdit::textChanged, this, [this] {
        if (guards_.size() > 0 && guards_[0]->Problem().isEmpty()) setInt16(m_.graphs.TimeWindow, txTimeWindow);
    });
    connect(txtProfMonth, &QLineEdit::textChanged, this, [this] {
        if (guards_.size() > 1 && guards_[1]->Problem().isEmpty()) setInt16(m_.main.ProfileMonth, txtProfMonth);
    });
    connect(btApply, &QPushButton::clicked, this, &SetGraphicsForm::btApply_Click);
    connect(btMatch, &QPushButton::clicked, this, &SetGraphicsForm::btMatch_Click);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
}

QWidget* SetGraphicsForm::slotPage(std::array<Slot, 6>& rows, bool limits, bool& edited) {
    auto* page = new QWidget(this);
    auto* grid = new QGridLayout(page);
    grid->addWidget(new QLabel(QStringLiteral("Shown"), page), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Variable"), page), 0, 1);
    if (limits) {
        grid->addWidget(new QLabel(QStringLiteral("Y min"), page), 0, 2);
        grid->addWidget(new QLabel(QStringLiteral("Y max (empty: automatic)"), page), 0, 3);
    }
    const Graphs& g = m_.graphs;
    bool* flag = &edited;
    for (size_t i = 0; i < rows.size(); ++i) {
        Slot& s = rows[i];
        const int row = static_cast<int>(i) + 1;
        s.visible = new QCheckBox(QString::number(row), page);
        s.select = new QComboBox(page);
        // The physical model stores only its own variables; the others are not offered.
        const int stored = m_.main.PhysOnly ? std::min<int>(g.NVars, m_.main.NPhysVars) : g.NVars;
        for (int v = 1; v <= stored; ++v) s.select->addItem(qs(g.VarLabel(0, v)));
        grid->addWidget(s.visible, row, 0);
        grid->addWidget(s.select, row, 1);
        connect(s.visible, &QCheckBox::toggled, this, [flag] { *flag = true; });
        connect(s.select, &QComboBox::currentIndexChanged, this, [flag] { *flag = true; });
        if (!limits) continue;
        s.yMin = new QLineEdit(page);
        s.yMax = new QLineEdit(page);
        grid->addWidget(s.yMin, row, 2);
        grid->addWidget(s.yMax, row, 3);
        connect(s.yMin, &QLineEdit::textChanged, this, [flag] { *flag = true; });
        connect(s.yMax, &QLineEdit::textChanged, this, [flag] { *flag = true; });
    }
    grid->setRowStretch(static_cast<int>(rows.size()) + 1, 1);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(2, 1);
    grid->setColumnStretch(3, 1);
    return page;
}

void SetGraphicsForm::loadSlots(std::array<Slot, 6>& rows, const Table1<int16_t>& slot, int kind) {
    const Graphs& g = m_.graphs;
    for (size_t i = 0; i < rows.size(); ++i) {
        Slot& s = rows[i];
        const int k = static_cast<int>(i) + 1;
        const int v = slot(k);
        s.visible->setChecked(v > 0);
        if (v > 0 && v <= s.select->count()) s.select->setCurrentIndex(v - 1);
        if (!s.yMin) continue;
        s.yMin->setText(limitText(g.YMin(kind, k)));
        s.yMax->setText(limitText(g.YMax(kind, k)));
    }
}

void SetGraphicsForm::CheckLimits() {
    QStringList raised;
    for (auto* rows : {&graphSlots, &profileSlots})
        for (size_t i = 0; i < rows->size(); ++i) {
            Slot& s = (*rows)[i];
            if (s.yMin->text().isEmpty() && s.yMax->text().isEmpty()) continue;
            const double lo = val(s.yMin);
            if (val(s.yMax) - lo >= 0.0001) continue;
            s.yMax->setText(qs(NumText(Sng(lo + 0.0001))));
            raised << QStringLiteral("%1 %2 to %3")
                          .arg(rows == &graphSlots ? QStringLiteral("graph") : QStringLiteral("profile"))
                          .arg(i + 1)
                          .arg(s.yMax->text());
        }
    // The user is told where a top was not above its bottom.
    if (!raised.isEmpty())
        lbNote->setText(QStringLiteral("Y max must be above Y min; raised: ") + raised.join(QStringLiteral(", ")) +
                        QStringLiteral(". Leave both empty for automatic scaling."));
}

namespace {

// The slot takes the list index + 1 when its box is checked, else 0; the
// limits take the values of their boxes.
void getSlots(Model& m, const std::array<SetGraphicsForm::Slot, 6>& rows, Table1<int16_t>& slot, int kind) {
    for (size_t i = 0; i < rows.size(); ++i) {
        const SetGraphicsForm::Slot& s = rows[i];
        const int k = static_cast<int>(i) + 1;
        slot(k) = s.visible->isChecked() ? static_cast<int16_t>(s.select->currentIndex() + 1) : int16_t{0};
        if (!s.yMin) continue;
        m.graphs.YMin(kind, k) = Sng(val(s.yMin));
        m.graphs.YMax(kind, k) = Sng(val(s.yMax));
    }
}

}  // namespace

void SetGraphicsForm::GetSelGraphs() {
    if (graphsEdited_) getSlots(m_, graphSlots, m_.graphs.GraphSlot, 1);
}

void SetGraphicsForm::GetSelMap() {
    if (mapsEdited_) getSlots(m_, mapSlots, m_.graphs.MapSlot, 0);
}

void SetGraphicsForm::GetSelProf() {
    if (profilesEdited_) getSlots(m_, profileSlots, m_.graphs.ProfSlot, 2);
}

QString SetGraphicsForm::ApplyProblem() const {
    for (const EntryGuard* guard : guards_)
        if (QString why = guard->Problem(); !why.isEmpty()) return why;
    return QString();
}

void SetGraphicsForm::btApply_Click() {
    // Nothing is applied while a box is refused.
    if (const QString why = ApplyProblem(); !why.isEmpty()) {
        lbNote->setText(why);
        return;
    }
    lbNote->clear();
    CheckLimits();
    Graphs& g = m_.graphs;
    for (size_t i = 0; i < chkVisForms.size(); ++i)
        g.VisForms(static_cast<int>(i) + 1) = chkVisForms[i]->isChecked() ? int16_t{1} : int16_t{0};
    for (size_t i = 0; i < chCXProfiles.size(); ++i)
        g.CXProfile(static_cast<int>(i) + 1) = chCXProfiles[i]->isChecked() ? int16_t{1} : int16_t{0};
    GetSelGraphs();
    GetSelMap();
    GetSelProf();
    g.ShowSandBox = chkSandBox->isChecked();
    g.PlotObsAvg = chkPlotObsAvg->isChecked();
    emit applied();
}

// The profiles take the graphs' variables, shown flags and limits, so the two
// views show the same quantities.
void SetGraphicsForm::btMatch_Click() {
    for (size_t i = 0; i < graphSlots.size(); ++i) {
        const Slot& from = graphSlots[i];
        Slot& to = profileSlots[i];
        to.visible->setChecked(from.visible->isChecked());
        to.select->setCurrentIndex(from.select->currentIndex());
        to.yMin->setText(from.yMin->text());
        to.yMax->setText(from.yMax->text());
    }
}

}  // namespace osm
