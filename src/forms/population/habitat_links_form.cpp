#include "forms/population/habitat_links_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

#include "core/model.h"
#include "core/numbers.h"
#include "forms/field_check.h"
#include "forms/population/population_entries.h"
#include "population/population_editors.h"

namespace osm {

namespace {

// What a curve cell and a month's vulnerability may hold.
constexpr double MaxResponse = 10, MaxVulnerability = 100;

QString qs(const std::string& s) { return QString::fromStdString(s); }

QTableWidget* column(QWidget* parent, const char* name, const QString& head, int rows) {
    auto* g = new QTableWidget(rows, 1, parent);
    g->setObjectName(QString::fromLatin1(name));
    g->setHorizontalHeaderLabels({head});
    g->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    g->verticalHeader()->setDefaultSectionSize(g->fontMetrics().height() + 4);
    for (int r = 0; r < rows; ++r) SetCell(g, r, 0, QString());
    AllowNumberKeys(g);
    return g;
}

}  // namespace

HabitatLinksForm::HabitatLinksForm(Model& m, QWidget* parent)
    : QWidget(parent, Qt::Window),
      cbSpecies(new QComboBox(this)),
      gdCurve(column(this, "gdCurve", QStringLiteral("Response"), HabCells)),
      txScale(new QLineEdit(this)),
      setwhen(new QLineEdit(this)),
      dur(new QLineEdit(this)),
      setwhere(new QLineEdit(this)),
      gdVulTime(column(this, "gdVulTime", QStringLiteral("Vul. to risk ratio effects"), 12)),
      breedtime(new QLineEdit(this)),
      SetHabFlag(new QCheckBox(QStringLiteral("Set reach capacities using habitat relationships only"), this)),
      lbPanel(new QLabel(this)),
      ex(new QPushButton(QStringLiteral("OK, exit"), this)),
      lbNote(new QLabel(this)),
      m_(m),
      cells_(new FieldCheck(lbNote, this)) {
    setObjectName(QStringLiteral("Fishhabe"));
    setWindowTitle(QStringLiteral("Edit anmal habitat dependencies"));
    for (auto [w, name] : {std::pair<QWidget*, const char*>{cbSpecies, "cbSpecies"}, {txScale, "txScale"},
                           {setwhen, "setwhen"}, {dur, "dur"}, {setwhere, "setwhere"}, {breedtime, "breedtime"},
                           {SetHabFlag, "SetHabFlag"}, {ex, "ex"}, {lbNote, "lbNote"}})
        w->setObjectName(QString::fromLatin1(name));
    lbNote->setWordWrap(true);
    lbPanel->setWordWrap(true);

    auto* grid = new QGridLayout;
    grid->setSpacing(4);
    for (int k = 1; k <= NHabEffects; ++k) {
        auto* head = new QLabel(this);
        head->setObjectName(QStringLiteral("lbEffect_%1").arg(k));
        head->setAlignment(Qt::AlignCenter);
        grid->addWidget(head, 0, k);
    }
    for (int h = 1; h <= NHabVars; ++h) {
        auto* head = new QLabel(this);
        head->setObjectName(QStringLiteral("lbVar_%1").arg(h));
        head->setWordWrap(true);
        head->setFixedWidth(100);
        grid->addWidget(head, h, 0);
    }
    for (int j = 0; j < HabPanels; ++j) {
        panels.push_back(makePanel(j));
        const HabPanel& p = panels.back();
        auto* tile = new QVBoxLayout;
        tile->setSpacing(1);
        tile->addWidget(p.title);
        auto* line = new QHBoxLayout;
        line->addWidget(p.baseval, 1);
        line->addWidget(p.Patternclear);
        tile->addLayout(line);
        grid->addLayout(tile, PanelVar(j), PanelEffect(j));
    }
    grid->setRowStretch(NHabVars + 1, 1);

    // The chosen link: its curve, scale and index.
    cells_->WatchGrid(gdCurve, QStringLiteral("Response"), [](int, int) { return Range{0, MaxResponse}; },
                      [this](int row, int, double v) {
                          if (species_ == 0) return;
                          SetHabCell(m_.popsubs, species_, PanelVar(panel_), PanelEffect(panel_), row + 1, Sng(v));
                          showPanel(panel_);
                          showChosenLink();
                      });
    WatchNumber(txScale, lbNote, NumberCheck(QStringLiteral("Axis scale cell"), 1, HabCells, true), [this](double v) {
        SetHabScale(m_.popsubs, species_, PanelVar(panel_), PanelEffect(panel_), static_cast<int>(v));
        showPanel(panel_);
    });
    auto index = [this](const char* what, int lo, int hi, Table3<int16_t> Popsubs::*t) {
        return std::pair{NumberCheck(QString::fromLatin1(what), lo, hi, true), [this, t](double v) {
                             (m_.popsubs.*t)(species_, PanelVar(panel_), PanelEffect(panel_)) = ToInt16(v, "index");
                         }};
    };
    for (auto [box, check] :
         {std::pair{setwhen, index("Index week", 0, 52, &Popsubs::setwhen)},
          std::pair{dur, index("Duration (weeks)", 0, 52, &Popsubs::dur)},
          std::pair{setwhere, index("Index reach", m_.main.FirstReach, m_.main.LastReach, &Popsubs::setwhere)}})
        WatchNumber(box, lbNote, check.first, check.second);

    // The species as a whole.
    cells_->WatchGrid(gdVulTime, QStringLiteral("Vul. to risk ratio effects"),
                      [](int, int) { return Range{0, MaxVulnerability}; },
                      [this](int row, int, double v) {
                          if (species_ > 0) m_.popsubs.VulMonth(species_, row + 1) = Sng(v);
                      });
    WatchNumber(breedtime, lbNote, NumberCheck(QStringLiteral("Calendar month for age 1"), 1, 12, true),
                [this](double v) { m_.popsubs.breedtime(species_) = ToInt16(v, "breedtime"); });
    connect(SetHabFlag, &QCheckBox::clicked, this, [this](bool on) { m_.popsubs.SetHabFlag(species_) = on; });
    connect(cbSpecies, &QComboBox::currentIndexChanged, this, [this](int row) { RefreshData(row + 1); });
    connect(ex, &QPushButton::clicked, this, &QWidget::close);

    auto* link = new QVBoxLayout;
    link->addWidget(lbPanel);
    link->addWidget(gdCurve, 1);
    auto* linkBoxes = new QFormLayout;
    linkBoxes->addRow(QStringLiteral("Axis scale cell"), txScale);
    linkBoxes->addRow(QStringLiteral("Index week"), setwhen);
    linkBoxes->addRow(QStringLiteral("Duration (weeks)"), dur);
    linkBoxes->addRow(QStringLiteral("Index reach"), setwhere);
    link->addLayout(linkBoxes);

    auto* species = new QVBoxLayout;
    auto* top = new QFormLayout;
    top->addRow(QStringLiteral("Species"), cbSpecies);
    top->addRow(QStringLiteral("Calendar month for age 1:"), breedtime);
    species->addLayout(top);
    species->addWidget(gdVulTime, 1);
    species->addWidget(SetHabFlag);
    species->addWidget(lbNote);
    species->addWidget(ex);

    auto* all = new QHBoxLayout(this);
    all->addLayout(grid, 3);
    all->addLayout(link, 1);
    all->addLayout(species, 1);
    ShowPars();
    resize(1400, 760);
}

HabPanel HabitatLinksForm::makePanel(int j) {
    HabPanel p;
    p.title = new QToolButton(this);
    p.title->setObjectName(QStringLiteral("title_%1").arg(j));
    p.title->setCheckable(true);
    p.title->setToolButtonStyle(Qt::ToolButtonTextOnly);
    p.title->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    p.baseval = new QLabel(this);
    p.baseval->setObjectName(QStringLiteral("baseval_%1").arg(j));
    p.Patternclear = new QPushButton(QStringLiteral("remove"), this);
    p.Patternclear->setObjectName(QStringLiteral("Patternclear_%1").arg(j));
    connect(p.title, &QToolButton::clicked, this, [this, j] { SelectPanel(j); });
    connect(p.Patternclear, &QPushButton::clicked, this, [this, j] {
        if (species_ == 0) return;
        m_.popsubs.HabLinked(species_, PanelVar(j), PanelEffect(j)) = 0;
        showPanel(j);
        if (j == panel_) showChosenLink();
    });
    return p;
}

void HabitatLinksForm::ShowPars() {
    const Popsubs& ps = m_.popsubs;
    for (int k = 1; k <= NHabEffects; ++k) findChild<QLabel*>(QStringLiteral("lbEffect_%1").arg(k))->setText(qs(ps.HabEffectName(k)));
    for (int h = 1; h <= NHabVars; ++h) findChild<QLabel*>(QStringLiteral("lbVar_%1").arg(h))->setText(qs(ps.HabVarName(h)));
    const int keep = ps.NSpecies == 0 ? 0 : std::clamp(species_, 1, static_cast<int>(ps.NSpecies));
    {
        const QSignalBlocker quiet(cbSpecies);
        cbSpecies->clear();
        for (int i = 1; i <= ps.NSpecies; ++i) cbSpecies->addItem(qs(ps.SpName(i)));
        cbSpecies->setCurrentIndex(keep - 1);
    }
    lbNote->clear();
    RefreshData(keep);
}

void HabitatLinksForm::RefreshData(int i) {
    species_ = i;
    const Popsubs& ps = m_.popsubs;
    for (int j = 0; j < HabPanels; ++j) showPanel(j);
    for (int mo = 1; mo <= 12; ++mo) SetCell(gdVulTime, mo - 1, 0, i > 0 ? CellText(ps.VulMonth(i, mo)) : QString());
    ShowText(breedtime, i > 0 ? SingleText(ps.breedtime(i)) : QString());
    SetHabFlag->setChecked(i > 0 && ps.SetHabFlag(i));
    for (QWidget* w : {static_cast<QWidget*>(gdVulTime), static_cast<QWidget*>(breedtime), static_cast<QWidget*>(SetHabFlag)})
        w->setEnabled(i > 0);
    SelectPanel(panel_);
}

// A panel of the species shown: whether the link is on, and the right end of
// its axis in the variable's units ("n.a." while it has none).
void HabitatLinksForm::showPanel(int j) {
    HabPanel& p = panels[j];
    const Popsubs& ps = m_.popsubs;
    const int i = species_, h = PanelVar(j), k = PanelEffect(j);
    const bool on = i > 0 && ps.HabLinked(i, h, k) != 0;
    p.title->setText(QStringLiteral("%1 on %2").arg(qs(ps.HabVarName(h)), qs(ps.HabEffectName(k))));
    p.title->setToolTip(on ? QStringLiteral("linked") : QStringLiteral("not linked"));
    QFont f = p.title->font();
    f.setBold(on);
    p.title->setFont(f);
    const auto axis = i > 0 ? HabAxisMax(ps, i, h, k) : std::nullopt;
    p.baseval->setText(axis ? qs(Format(*axis, "####.#")) : QStringLiteral("n.a."));
    p.title->setEnabled(i > 0);
    p.Patternclear->setEnabled(on);
}

void HabitatLinksForm::SelectPanel(int j) {
    panel_ = j;
    for (int n = 0; n < HabPanels; ++n) panels[n].title->setChecked(n == j);
    showChosenLink();
}

void HabitatLinksForm::showChosenLink() {
    const Popsubs& ps = m_.popsubs;
    const int i = species_, h = PanelVar(panel_), k = PanelEffect(panel_);
    const bool on = i > 0 && ps.HabLinked(i, h, k) != 0;
    lbPanel->setText(QStringLiteral("%1 on %2%3").arg(qs(ps.HabVarName(h)), qs(ps.HabEffectName(k)),
                                                     on ? QString() : QStringLiteral(" (not linked: a value entered links it)")));
    for (int c = 1; c <= HabCells; ++c) SetCell(gdCurve, c - 1, 0, i > 0 ? CellText(ps.HabCurve(i, h, k, c)) : QString());
    ShowText(txScale, on ? SingleText(ps.HabScale(i, h, k)) : QString());
    for (auto [box, t] : {std::pair{setwhen, &ps.setwhen}, std::pair{dur, &ps.dur}, std::pair{setwhere, &ps.setwhere}})
        ShowText(box, i > 0 ? SingleText((*t)(i, h, k)) : QString());
    for (QWidget* w : {static_cast<QWidget*>(gdCurve), static_cast<QWidget*>(setwhen), static_cast<QWidget*>(dur),
                       static_cast<QWidget*>(setwhere)})
        w->setEnabled(i > 0);
    txScale->setEnabled(on);
}

}  // namespace osm
