#include "forms/population/harvest_form.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/model.h"
#include "core/numbers.h"
#include "forms/field_check.h"
#include "forms/population/population_entries.h"

namespace osm {

HarvestForm::HarvestForm(Model& m, QWidget* parent)
    : QWidget(parent, Qt::Window),
      gdHarvest(new QTableWidget(HarvestYears, 0, this)),
      Command1(new QPushButton(QStringLiteral("OK, exit"), this)),
      lbNote(new QLabel(this)),
      m_(m),
      cells_(new FieldCheck(lbNote, this)),
      ages_(new QWidget(this)),
      agesLayout_(new QGridLayout(ages_)) {
    setObjectName(QStringLiteral("fishing"));
    setWindowTitle(QStringLiteral("Edit harvest mortality rates over time"));
    gdHarvest->setObjectName(QStringLiteral("gdHarvest"));
    gdHarvest->verticalHeader()->setDefaultSectionSize(gdHarvest->fontMetrics().height() + 4);
    AllowNumberKeys(gdHarvest);
    cells_->WatchGrid(gdHarvest, QStringLiteral("Harvest rate"), [](int, int) { return Range{0, 1}; },
                      [this](int row, int column, double v) { m_.popsubs.HarvestRate(column + 1, row + 1) = Sng(v); });
    Command1->setObjectName(QStringLiteral("Command1"));
    connect(Command1, &QPushButton::clicked, this, &QWidget::close);
    lbNote->setObjectName(QStringLiteral("lbNote"));
    lbNote->setWordWrap(true);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lbNote, 1);
    bottom->addWidget(Command1);
    auto* all = new QVBoxLayout(this);
    all->addWidget(new QLabel(QStringLiteral("Harvest rate by Simulation Year"), this));
    all->addWidget(gdHarvest, 1);
    all->addWidget(ages_);
    all->addLayout(bottom);
    ShowPars();
    resize(900, 640);
}

void HarvestForm::ShowPars() {
    Popsubs& ps = m_.popsubs;
    const int n = ps.NSpecies;
    QStringList heads;
    for (int i = 1; i <= n; ++i) heads << QString::fromStdString(ps.SpName(i));
    gdHarvest->setColumnCount(n);
    gdHarvest->setHorizontalHeaderLabels(heads);
    for (int y = 1; y <= HarvestYears; ++y)
        for (int i = 1; i <= n; ++i) SetCell(gdHarvest, y - 1, i - 1, CellText(ps.HarvestRate(i, y)));
    for (QWidget* w : ages_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) delete w;
    agef.clear();
    lbNote->clear();
    agesLayout_->addWidget(new QLabel(QStringLiteral("minimum age taken"), ages_), 0, 0);
    for (int i = 1; i <= n; ++i) {
        const QString sp = QString::fromStdString(ps.SpName(i));
        auto* age = new QLineEdit(ages_);
        age->setObjectName(QStringLiteral("agef_%1").arg(i));
        age->setToolTip(sp);
        ShowText(age, SingleText(ps.MinAgeTaken(i)));
        WatchNumber(age, lbNote, NumberCheck(QStringLiteral("minimum age taken of ") + sp, 0, MaxAge, true),
                    [this, i](double v) { m_.popsubs.MinAgeTaken(i) = ToInt16(v, "MinAgeTaken"); });
        agesLayout_->addWidget(age, 0, i);
        agef.push_back(age);
    }
}

}  // namespace osm
