#include "forms/hydrology/temp_form.h"

#include <QCheckBox>
#include <QFormLayout>
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
#include "hydrology/river_temperature.h"

namespace osm {

namespace {

constexpr int FirstYear = 48, LastYear = 147;
const QString Mark = QStringLiteral("X");

Table1<float>& pattern(Physical& p, int column) {
    return column == 1 ? p.BaseTemp : column == 2 ? p.ExpTemp : p.EqTemp;
}

}  // namespace

TempForm::TempForm(Model& m, QWidget* parent)
    : QWidget(parent, Qt::Window),
      gdT(new QTableWidget(12, 4, this)),
      gdYear(new QTableWidget(LastYear - FirstYear + 1, 2, this)),
      txHeatEx(new QLineEdit(this)),
      chkSave(new QCheckBox(QStringLiteral("Save Base and Equilibrium temperatures back to physical.xls?"), this)),
      cmdOK(new QPushButton(QStringLiteral("OK/Exit"), this)),
      lbWhy(new QLabel(this)),
      m_(m),
      check_(new FieldCheck(lbWhy, this)) {
    setObjectName(QStringLiteral("frmTemp"));
    setWindowTitle(QStringLiteral("Base and Experimental temperature for Ostrel Narrows outflows"));
    Physical& p = m_.physical;

    gdT->setObjectName(QStringLiteral("gdT"));
    gdT->setHorizontalHeaderLabels({QStringLiteral("Month"), QStringLiteral("Normal"), QStringLiteral("Experimental"),
                                    QStringLiteral("Equilibrium")});
    gdT->verticalHeader()->setVisible(false);
    AllowNumberKeys(gdT);
    for (int mo = 1; mo <= 12; ++mo) {
        SetCell(gdT, mo - 1, 0, QString::fromStdString(m_.main.MonthName(mo)));
        gdT->item(mo - 1, 0)->setFlags(Qt::ItemIsEnabled);
        for (int c = 1; c <= 3; ++c) SetCell(gdT, mo - 1, c, CellText(pattern(p, c)(mo)));
    }
    gdT->verticalHeader()->setDefaultSectionSize(gdT->fontMetrics().height() + 6);
    gdT->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    check_->WatchGrid(gdT, QStringLiteral("Temperature"), [](int, int) { return Range{-5, 40}; },
                      [](int, int, double) {});

    gdYear->setObjectName(QStringLiteral("gdYear"));
    gdYear->setHorizontalHeaderLabels({QStringLiteral("Year"), QStringLiteral("Exp. Yr.")});
    gdYear->verticalHeader()->setVisible(false);
    gdYear->verticalHeader()->setDefaultSectionSize(gdYear->fontMetrics().height() + 4);
    gdYear->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    gdYear->setEditTriggers(QAbstractItemView::NoEditTriggers);
    gdYear->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (int y = FirstYear; y <= LastYear; ++y) {
        SetCell(gdYear, y - FirstYear, 0, QString::number(1900 + y));
        SetCell(gdYear, y - FirstYear, 1, p.ExpTempYr(y) ? Mark : QString());
        gdYear->item(y - FirstYear, 1)->setTextAlignment(Qt::AlignCenter);
    }
    connect(gdYear, &QTableWidget::cellClicked, this, [this] { ToggleSelected(); });

    txHeatEx->setObjectName(QStringLiteral("txHeatEx"));
    SetBox(txHeatEx, QString::fromStdString(NumText(p.HeatEx)));
    check_->Watch(txHeatEx, QStringLiteral("Heat exchange rate"), Range{0, 100}, [](double) { return QString(); });
    chkSave->setObjectName(QStringLiteral("chkSave"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    connect(cmdOK, &QPushButton::clicked, this, &TempForm::cmdOK_Click);

    auto* left = new QVBoxLayout;
    left->addWidget(gdT);
    auto* heat = new QFormLayout;
    heat->addRow(QStringLiteral("Heat exchange rate"), txHeatEx);
    left->addLayout(heat);
    left->addWidget(chkSave);
    auto* right = new QVBoxLayout;
    auto* caption = new QLabel(
        QStringLiteral("Set experimental temperature years (X=Experimental Year) - click on table to toggle"), this);
    caption->setWordWrap(true);
    right->addWidget(caption);
    right->addWidget(gdYear);
    auto* top = new QHBoxLayout;
    top->addLayout(left, 3);
    top->addLayout(right, 2);
    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    lbWhy->setWordWrap(true);
    all->addWidget(lbWhy);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    all->addLayout(buttons);
    resize(720, 520);
}

void TempForm::ToggleSelected() {
    for (QTableWidgetItem* it : gdYear->selectedItems()) {
        QTableWidgetItem* mark = gdYear->item(it->row(), 1);
        if (it->column() == 1 || !gdYear->item(it->row(), 1)->isSelected())
            SetCell(gdYear, it->row(), 1, mark->text() == Mark ? QString() : Mark);
    }
}

void TempForm::cmdOK_Click() {
    Physical& p = m_.physical;
    p.HeatEx = Sng(Val(txHeatEx->text().toStdString()));
    for (int y = FirstYear; y <= LastYear; ++y) p.ExpTempYr(y) = gdYear->item(y - FirstYear, 1)->text() == Mark;
    for (int mo = 1; mo <= 12; ++mo)
        for (int c = 1; c <= 3; ++c) pattern(p, c)(mo) = Sng(Val(gdT->item(mo - 1, c)->text().toStdString()));
    if (chkSave->isChecked()) {
        try {
            SaveTempData(m_, "OSDEqTemp$", m_.main.PhysicalXls);
        } catch (const std::exception& e) {
            check_->Say(QString::fromStdString(e.what()));
            return;
        }
    }
    close();
}

}  // namespace osm
