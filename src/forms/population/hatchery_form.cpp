#include "forms/population/hatchery_form.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>

#include "core/model.h"
#include "core/numbers.h"
#include "forms/population/population_entries.h"
#include "population/population_steps.h"

namespace osm {

HatcheryForm::HatcheryForm(Model& m, QWidget* parent)
    : QWidget(parent, Qt::Window), lbNote(new QLabel(this)), m_(m) {
    setObjectName(QStringLiteral("HatchMan"));
    setWindowTitle(QStringLiteral("Set Hatchery Stocking Policy"));
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    rows_ = new QWidget(scroll);
    layout_ = new QGridLayout(rows_);
    scroll->setWidget(rows_);
    lbNote->setObjectName(QStringLiteral("lbNote"));
    lbNote->setWordWrap(true);
    auto* all = new QVBoxLayout(this);
    all->addWidget(scroll);
    all->addWidget(lbNote);
    try {
        PopInit(m_, 1);
    } catch (const std::exception& e) {
        ShowMessage(m_, "hatchery", e.what(), "Set Hatchery Stocking Policy");
    }
    ShowPars();
    resize(560, 360);
}

void HatcheryForm::ShowPars() {
    for (QWidget* w : rows_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) delete w;
    for (auto* boxes : {&basejuv, &fert, &fertyr1, &fertyr2}) boxes->clear();
    lbNote->clear();
    int column = 0;
    for (const char* head : {"Stock", "Base Juvs.", "Hatch.add/yr", "st. year", "end yr."})
        layout_->addWidget(new QLabel(QString::fromLatin1(head), rows_), 0, column++);
    Popsubs& ps = m_.popsubs;
    for (int i = 1; i <= ps.NSpecies; ++i) {
        const QString sp = QString::fromStdString(ps.SpName(i));
        layout_->addWidget(new QLabel(sp, rows_), i, 0);
        auto box = [&](std::vector<QLineEdit*>& boxes, const char* name, int col, const QString& text) {
            auto* b = new QLineEdit(rows_);
            b->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(name)).arg(i));
            ShowText(b, text);
            layout_->addWidget(b, i, col);
            boxes.push_back(b);
            return b;
        };
        QLineEdit* base = box(basejuv, "basejuv", 1, QString::fromStdString(Format(ps.BaseJuv(i), "#.###")));
        base->setReadOnly(true);  // shown only: the equilibrium of the parameters
        base->setStyleSheet(QStringLiteral("QLineEdit { background: palette(window); }"));
        WatchNumber(box(fert, "fert", 2, SingleText(ps.fert(i))), lbNote,
                    NumberCheck(QStringLiteral("Hatch.add/yr of ") + sp, 0, 1e9, false),
                    [this, i](double v) { m_.popsubs.fert(i) = Sng(v); });
        WatchNumber(box(fertyr1, "fertyr1", 3, SingleText(ps.fertyr1(i))), lbNote,
                    NumberCheck(QStringLiteral("st. year of ") + sp, 0, HarvestYears, true),
                    [this, i](double v) { m_.popsubs.fertyr1(i) = ToInt16(v, "fertyr1"); });
        WatchNumber(box(fertyr2, "fertyr2", 4, SingleText(ps.fertyr2(i))), lbNote,
                    NumberCheck(QStringLiteral("end yr. of ") + sp, 0, HarvestYears, true),
                    [this, i](double v) { m_.popsubs.fertyr2(i) = Sng(v); });
    }
    if (ps.NSpecies == 0) layout_->addWidget(new QLabel(QStringLiteral("The population file holds no species."), rows_), 1, 0, 1, 5);
    layout_->setRowStretch(ps.NSpecies + 2, 1);
}

}  // namespace osm
