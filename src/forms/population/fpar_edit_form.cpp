#include "forms/population/fpar_edit_form.h"

#include <QFont>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>

#include <functional>
#include <type_traits>

#include "core/model.h"
#include "core/numbers.h"
#include "forms/population/population_entries.h"
#include "population/population_editors.h"

namespace osm {

namespace {

// One row of the form: a field of the species record.
struct Field {
    const char* name;  // the control's name, that of the field
    const char* tag;   // the row's caption
    const char* tip;
    double lo, hi;
    bool whole;
    std::function<float(const Popsubs&, int)> get;
    std::function<void(Popsubs&, int, double)> set;
};

struct Group {
    const char* caption;
    std::vector<Field> fields;
};

template <typename T>
Field field(const char* name, const char* tag, const char* tip, double lo, double hi, Table1<T> Popsubs::*t) {
    const bool whole = std::is_integral_v<T>;
    return Field{name, tag, tip, lo, hi, whole, [t](const Popsubs& ps, int i) { return static_cast<float>((ps.*t)(i)); },
                 [t, name](Popsubs& ps, int i, double v) {
                     if constexpr (std::is_integral_v<T>) (ps.*t)(i) = ToInt16(v, name);
                     else (ps.*t)(i) = Sng(v);
                 }};
}

std::vector<Group> groups(const Model& m) {
    const double tiny = 1e-9;
    return {
        {"body growth parameters",
         {field("alpha", "wt mat.", "body wt at maturity (kg)", tiny, 1000, &Popsubs::alpha),
          field("alphamax", "Max wt mat.", "Maximum body wt at maturity, low density situations w/o competition", tiny, 1000,
                &Popsubs::alphamax),
          field("rho", "rho", "Ford-Walford plot slope (growth parameter, slope of wa+1 vs wa)", 0, 0.999, &Popsubs::rho),
          field("wk", "age mat.", "age at maturity (yrs)", 1, MaxAge, &Popsubs::wk)}},
        {"Age 1+ survivals",
         {field("sbase", "Survival", "Adult annual survival rate, proportion", 0, 0.999, &Popsubs::sbase),
          field("sbasejuv", "Juv. surv.", "age 1 to maturity annual survival rate, proportion", 0, 1, &Popsubs::sbasejuv)}},
        {"Reproduction, early survival",
         {field("fec", "eggs/kg", "eggs/kg body weight of mature animals", 0, 1e7, &Popsubs::fec),
          field("sfry", "S fry", "egg to fry survival rate, proportion", tiny, 1, &Popsubs::sfry),
          field("Sejuv", "S juv",
                "survival rate from fry to age 1 (note can set by setting next field, compK, after running model once",
                tiny, 1, &Popsubs::Sejuv),
          Field{"RcJuv", "Comp K", "ratio of max to natural recruits/egg", 0, 1e6, false,
                [](const Popsubs& ps, int i) { return ShownRcJuv(ps, i); },
                [](Popsubs& ps, int i, double v) { SetRcJuv(ps, i, Sng(v)); }}}},
        {"egg/juv predation risk",
         {field("ppred", "Ppred", "propn of egg/fry mortality due to incidental predation", 0, 1, &Popsubs::ppred),
          field("RchFry", "Reac", "reach where incidental predation is concentrated", m.main.FirstReach, m.main.LastReach,
                &Popsubs::RchFry),
          field("Pwk1", "Pwk1", "first month of year when egg/fry predation is important", 1, 12, &Popsubs::Pwk1),
          field("Pwk2", "Pwk2", "last month of year when egg/fry predation important", 1, 12, &Popsubs::Pwk2),
          field("htype", "vol power",
                "predation dilution parameter 0 if no flow effect, .5 if area effect, 1 if flow volume dilution", 0, 1,
                &Popsubs::htype)}},
        {"disperse", {field("biomass", "biomass", "Prop remaining in natal reach each year", 0, 1, &Popsubs::biomass)}},
    };
}

QString nameProblem(const QString& text) {
    return text.trimmed().isEmpty() ? QStringLiteral("Species: a name is needed.") : QString();
}

}  // namespace

FparEditForm::FparEditForm(Model& m, QWidget* parent) : QWidget(parent, Qt::Window), lbNote(new QLabel(this)), m_(m) {
    setObjectName(QStringLiteral("FparEdit"));
    setWindowTitle(QStringLiteral("Animal Population Parameters"));
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    grid_ = new QWidget(scroll);
    layout_ = new QGridLayout(grid_);
    scroll->setWidget(grid_);
    lbNote->setObjectName(QStringLiteral("lbNote"));
    lbNote->setWordWrap(true);
    auto* all = new QVBoxLayout(this);
    all->addWidget(scroll);
    all->addWidget(lbNote);
    ShowPars();
    resize(1100, 680);
}

QLineEdit* FparEditForm::Box(const QString& field, int i) const {
    const auto it = boxes_.find(field);
    if (it == boxes_.end() || i < 1 || i > static_cast<int>(it->second.size())) return nullptr;
    return it->second[i - 1];
}

void FparEditForm::ShowPars() {
    for (QWidget* w : grid_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) delete w;
    boxes_.clear();
    lbNote->clear();
    Popsubs& ps = m_.popsubs;
    const int n = ps.NSpecies;
    QFont bold = font();
    bold.setBold(true);
    auto caption = [&](const QString& text, int row, const QString& tip = QString()) {
        auto* l = new QLabel(text, grid_);
        l->setToolTip(tip);
        layout_->addWidget(l, row, 0);
        return l;
    };
    auto box = [&](const QString& name, int i, int row, const QString& tip) {
        auto* b = new QLineEdit(grid_);
        b->setObjectName(QStringLiteral("%1_%2").arg(name).arg(i));
        b->setToolTip(tip);
        b->setMinimumWidth(110);
        layout_->addWidget(b, row, i);
        boxes_[name].push_back(b);
        return b;
    };

    int row = 0;
    caption(QStringLiteral("Species"), row);
    for (int i = 1; i <= n; ++i) {
        QLineEdit* b = box(QStringLiteral("fname"), i, row, QString());
        ShowText(b, QString::fromStdString(ps.SpName(i)));
        WatchText(b, lbNote, nameProblem, [this, i](const QString& t) { m_.popsubs.SpName(i) = t.toStdString(); });
    }
    if (n == 0) layout_->addWidget(new QLabel(QStringLiteral("The population file holds no species."), grid_), row, 1);
    ++row;
    for (const Group& g : groups(m_)) {
        caption(QString::fromLatin1(g.caption), row++)->setFont(bold);
        for (const Field& f : g.fields) {
            const QString name = QString::fromLatin1(f.name), tip = QString::fromLatin1(f.tip);
            caption(QString::fromLatin1(f.tag), row, tip);
            for (int i = 1; i <= n; ++i) {
                QLineEdit* b = box(name, i, row, tip);
                ShowText(b, SingleText(f.get(ps, i)));
                const QString what = QStringLiteral("%1 of %2").arg(QString::fromLatin1(f.tag), QString::fromStdString(ps.SpName(i)));
                WatchNumber(b, lbNote, NumberCheck(what, f.lo, f.hi, f.whole), [this, i, set = f.set, name](double v) {
                    set(m_.popsubs, i, v);
                    // The compensation ratio moves the fry survival, which shows its new value.
                    if (name == QLatin1String("RcJuv")) ShowText(Box(QStringLiteral("Sejuv"), i), SingleText(m_.popsubs.Sejuv(i)));
                });
            }
            ++row;
        }
    }
    layout_->setRowStretch(row, 1);
    layout_->setColumnStretch(n + 1, 1);
}

}  // namespace osm
