#include "forms/legend_editor_form.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/colours.h"
#include "core/model.h"
#include "core/numbers.h"
#include "forms/entry_guard.h"
#include "presentation/legends.h"
#include "presentation/map_projection.h"

namespace osm {

namespace {

QString text(float x) { return QString::fromStdString(NumText(x)); }
float val(const QLineEdit* e) { return static_cast<float>(Val(e->text().toStdString())); }

// The limits a legend box takes: wide enough for any result the maps show.
constexpr double kLimit = 1e9;

QLineEdit* numberBox(QWidget* parent, const QString& name) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(name);
    e->setToolTip(QObject::tr("A number"));
    return e;
}

// A box's text as the legend takes it at once, or nothing while it isn't a number.
std::optional<float> typed(const QLineEdit* e) {
    const auto v = EntryNumber(e->text());
    if (!v || std::abs(*v) > kLimit) return std::nullopt;
    return static_cast<float>(*v);
}

}  // namespace

LegendEditorForm::LegendEditorForm(Model& m, std::function<void()> redraw, QWidget* parent)
    : QDialog(parent), m_(m), redraw_(std::move(redraw)) {
    setObjectName(QStringLiteral("frmLegEd"));
    setWindowTitle(tr("Legend Editor"));
    auto* top = new QVBoxLayout(this);
    auto* bar = new QMenuBar(this);
    QMenu* data = bar->addMenu(tr("Data"));
    data->setObjectName(QStringLiteral("mnuLegPref"));
    QAction* rescale = data->addAction(tr("Rescale Current Map"));
    rescale->setObjectName(QStringLiteral("mnuLegPreUpLw"));
    connect(rescale, &QAction::triggered, this,
            [this] { QMessageBox::information(this, windowTitle(), tr("Not Implemented Yet")); });
    QAction* minMax = data->addAction(tr("Find Min Max For Current Map"));
    minMax->setObjectName(QStringLiteral("mnuDataMinMax"));
    connect(minMax, &QAction::triggered, this, &LegendEditorForm::FindMinMax);
    top->setMenuBar(bar);

    mapList_ = new QComboBox(this);
    mapList_->setObjectName(QStringLiteral("MapList"));
    top->addWidget(mapList_);
    auto* scales = new QHBoxLayout;
    optScale_[0] = new QRadioButton(tr("Categorical Map Scale"), this);
    optScale_[1] = new QRadioButton(tr("Continuous Map Scale"), this);
    for (QRadioButton* b : optScale_) scales->addWidget(b);
    top->addLayout(scales);

    frCont_ = new QGroupBox(tr("Continuous Map Scale"), this);
    auto* cont = new QGridLayout(frCont_);
    txtContMin_ = numberBox(frCont_, QStringLiteral("txtContMin"));
    txtContMax_ = numberBox(frCont_, QStringLiteral("txtContMax"));
    cont->addWidget(new QLabel(tr("Minimum Limit"), frCont_), 0, 0);
    cont->addWidget(txtContMin_, 0, 1);
    cont->addWidget(new QLabel(tr("Maximum Limit"), frCont_), 1, 0);
    cont->addWidget(txtContMax_, 1, 1);
    picContScale_ = new QLabel(frCont_);
    picContScale_->setObjectName(QStringLiteral("picContScale"));
    picContScale_->setMinimumSize(250, 20);
    cont->addWidget(picContScale_, 2, 0, 1, 2);
    top->addWidget(frCont_);

    frCat_ = new QGroupBox(tr("Categorical Map Scale"), this);
    auto* cat = new QGridLayout(frCat_);
    txtMaxMapCat_ = new QLineEdit(frCat_);
    txtMaxMapCat_->setObjectName(QStringLiteral("txtMaxMapCat"));
    txtMaxMapCat_->installEventFilter(this);
    txLower_ = numberBox(frCat_, QStringLiteral("txLower"));
    txUpper_ = numberBox(frCat_, QStringLiteral("txUpper"));
    cat->addWidget(new QLabel(tr("Number of Categories"), frCat_), 0, 0);
    cat->addWidget(txtMaxMapCat_, 0, 1);
    cat->addWidget(new QLabel(tr("Lower Range"), frCat_), 1, 0);
    cat->addWidget(txLower_, 1, 1);
    cat->addWidget(new QLabel(tr("Upper Range"), frCat_), 2, 0);
    cat->addWidget(txUpper_, 2, 1);
    cat->addWidget(new QLabel(tr("Breakpoints"), frCat_), 3, 0);
    cat->addWidget(new QLabel(tr("Colour"), frCat_), 3, 1);
    for (int k = 1; k <= 10; ++k) {
        QLineEdit*& to = txTo_[static_cast<size_t>(k - 1)];
        to = numberBox(frCat_, QStringLiteral("txTo%1").arg(k));
        QLabel*& col = capCol_[static_cast<size_t>(k - 1)];
        col = new QLabel(frCat_);
        col->setObjectName(QStringLiteral("capCol%1").arg(k));
        col->setFixedSize(40, 18);
        col->setAutoFillBackground(true);
        col->installEventFilter(this);
        cat->addWidget(to, 3 + k, 0);
        cat->addWidget(col, 3 + k, 1);
    }
    for (QLineEdit* e : {txLower_, txUpper_}) e->installEventFilter(this);
    for (QLineEdit* e : txTo_) e->installEventFilter(this);
    top->addWidget(frCat_);

    frColor_ = new QGroupBox(tr("Color Palette"), this);
    auto* palette = new QHBoxLayout(frColor_);
    for (int i = 0; i < 15; ++i) {
        QLabel*& box = capColor_[static_cast<size_t>(i)];
        box = new QLabel(frColor_);
        box->setObjectName(QStringLiteral("capColor%1").arg(i + 1));
        box->setFixedSize(18, 18);
        box->setAutoFillBackground(true);
        box->installEventFilter(this);
        setBox(box, QBColor(i));
        palette->addWidget(box);
    }
    top->addWidget(frColor_);

    note_ = new QLabel(this);
    note_->setObjectName(QStringLiteral("lbNote"));
    note_->setWordWrap(true);
    top->addWidget(note_);
    // The boxes of the scale not in hand, and rows not yet shown, stand empty.
    guard(txtContMin_, OptionalNumberCheck(tr("Minimum Limit"), -kLimit, kLimit));
    guard(txtContMax_, OptionalNumberCheck(tr("Maximum Limit"), -kLimit, kLimit));
    guard(txtMaxMapCat_, NumberCheck(tr("Number of Categories"), 0, 99, true));
    guard(txLower_, OptionalNumberCheck(tr("Lower Range"), -kLimit, kLimit));
    guard(txUpper_, OptionalNumberCheck(tr("Upper Range"), -kLimit, kLimit));
    for (int k = 1; k <= 10; ++k) guard(Breakpoint(k), OptionalNumberCheck(tr("Breakpoint %1").arg(k), -kLimit, kLimit));

    auto* buttons = new QHBoxLayout;
    auto* btOk = new QPushButton(tr("OK"), this);
    auto* btApply = new QPushButton(tr("Apply / Save"), this);
    auto* btCancel = new QPushButton(tr("Cancel"), this);
    btOk->setObjectName(QStringLiteral("btOk"));
    btApply->setObjectName(QStringLiteral("btApply"));
    btCancel->setObjectName(QStringLiteral("btCancel"));
    for (QPushButton* b : {btOk, btApply, btCancel}) buttons->addWidget(b);
    top->addLayout(buttons);
    connect(btApply, &QPushButton::clicked, this, &LegendEditorForm::Apply);
    connect(btOk, &QPushButton::clicked, this, [this] {
        if (Apply()) accept();
    });
    connect(btCancel, &QPushButton::clicked, this, &LegendEditorForm::Cancel);

    txtMaxMapCat_->setText(QStringLiteral("0"));
    for (const LegendRec& l : m_.legend.Legends) mapList_->addItem(QString::fromStdString(l.Name));
    backup_ = m_.legend.Legends;
    connect(mapList_, &QComboBox::currentIndexChanged, this, [this](int index) {
        getEdits();
        ShowLegend(index);
    });
    connect(optScale_[0], &QRadioButton::clicked, this, &LegendEditorForm::showCategorical);
    connect(optScale_[1], &QRadioButton::clicked, this, &LegendEditorForm::showContinuous);
    connect(txtContMin_, &QLineEdit::textEdited, this, [this] {
        if (const auto v = typed(txtContMin_)) current().ScaleMin = *v;
    });
    connect(txtContMax_, &QLineEdit::textEdited, this, [this] {
        if (const auto v = typed(txtContMax_)) current().ScaleMax = *v;
    });
    ShowLegend(0);
}

void LegendEditorForm::guard(QLineEdit* box, EntryCheck check) { guards_.push_back(new EntryGuard(box, note_, std::move(check))); }

bool LegendEditorForm::settleAll() {
    bool good = true;
    for (EntryGuard* g : guards_) good = g->Settle() && good;
    return good;
}

LegendRec& LegendEditorForm::current() { return m_.legend.Legends.at(static_cast<size_t>(legIdx_)); }

void LegendEditorForm::setBox(QLabel* box, int32_t colour) {
    box->setStyleSheet(QStringLiteral("background-color: rgb(%1,%2,%3); border: 1px solid black")
                           .arg(colour & 255)
                           .arg((colour >> 8) & 255)
                           .arg((colour >> 16) & 255));
    box->setProperty("colour", colour);
}

void LegendEditorForm::ShowLegend(int index) {
    if (m_.legend.Legends.empty()) return;
    legIdx_ = std::clamp(index, 0, static_cast<int>(m_.legend.Legends.size()) - 1);
    if (mapList_->currentIndex() != legIdx_) {
        const QSignalBlocker quiet(mapList_);
        mapList_->setCurrentIndex(legIdx_);
    }
    upDateLeg();
}

void LegendEditorForm::upDateLeg() {
    const LegendRec& l = current();
    if (l.Categorical != 1) {
        showContinuous();
        return;
    }
    optScale_[0]->setChecked(true);
    frCont_->hide();
    frCat_->show();
    frColor_->show();
    txtMaxMapCat_->setText(QString::number(l.NCats));
    for (int k = 1; k <= 10; ++k) {
        const bool on = k <= l.NCats && k <= static_cast<int>(l.Breaks.size());
        Breakpoint(k)->setVisible(on);
        CategoryColour(k)->setVisible(on);
        if (!on) continue;
        setBox(CategoryColour(k), l.Colours[static_cast<size_t>(k - 1)]);
        Breakpoint(k)->setText(text(l.Breaks[static_cast<size_t>(k - 1)]));
    }
    txUpper_->setText(text(l.ScaleMax));
    txLower_->setText(text(l.ScaleMin));
}

void LegendEditorForm::showContinuous() {
    LegendRec& l = current();
    l.Categorical = 0;
    optScale_[1]->setChecked(true);
    frCont_->show();
    frCat_->hide();
    frColor_->hide();
    const auto& ramp = ColourRamp();
    QPixmap scale(static_cast<int>(ramp.size()) * 10, 20);
    QPainter p(&scale);
    for (size_t i = 0; i < ramp.size(); ++i)
        p.fillRect(static_cast<int>(i) * 10, 0, 10, 20,
                   QColor(ramp[i] & 255, (ramp[i] >> 8) & 255, (ramp[i] >> 16) & 255));
    p.end();
    picContScale_->setPixmap(scale);
    txtContMin_->setText(text(l.ScaleMin));
    txtContMax_->setText(text(l.ScaleMax));
}

void LegendEditorForm::showCategorical() {
    current().Categorical = 1;
    upDateLeg();
}

void LegendEditorForm::getEdits() {
    if (!edited_ || m_.legend.Legends.empty()) return;
    LegendRec& l = current();
    l.ScaleMin = val(txLower_);
    l.ScaleMax = val(txUpper_);
    for (int k = 1; k <= l.NCats && k <= 10 && k <= static_cast<int>(l.Breaks.size()); ++k)
        l.Breaks[static_cast<size_t>(k - 1)] = val(Breakpoint(k));
    edited_ = false;
}

void LegendEditorForm::UpdateScale(bool readLimits) {
    LegendRec& l = current();
    l.NCats = static_cast<int16_t>(std::clamp(txtMaxMapCat_->text().toInt(), 0, 10));
    const bool categorical = l.Categorical == 1;
    if (categorical && readLimits) {
        l.ScaleMax = val(txUpper_);
        l.ScaleMin = val(txLower_);
    } else if (categorical) {
        txUpper_->setText(text(l.ScaleMax));
        txLower_->setText(text(l.ScaleMin));
    } else {
        txUpper_->clear();
        txLower_->clear();
    }
    l.Colours.resize(static_cast<size_t>(l.NCats), 0);
    l.Breaks.resize(static_cast<size_t>(l.NCats), 0.0f);
    // One category gives no step: every break is the lower limit.
    const double step = l.NCats > 1 ? (static_cast<double>(l.ScaleMax) - l.ScaleMin) / (l.NCats - 1) : 0.0;
    for (int i = 1; i <= 10; ++i) {
        const bool on = i <= l.NCats;
        Breakpoint(i)->setVisible(on);
        CategoryColour(i)->setVisible(on);
        if (!on) continue;
        const size_t k = static_cast<size_t>(i - 1);
        l.Colours[k] = QBColor(16 - i > 15 ? 15 : 16 - i);
        setBox(CategoryColour(i), l.Colours[k]);
        if (categorical) {
            l.Breaks[k] = static_cast<float>(l.ScaleMin + (i - 1) * step);
            Breakpoint(i)->setText(QString::fromStdString(Format(l.Breaks[k], "######0.0##")));
        } else {
            Breakpoint(i)->setText(text(l.Breaks[k]));
        }
    }
}

void LegendEditorForm::PickColour(int paletteBox) {
    curColour_ = capColor_[static_cast<size_t>(paletteBox - 1)]->property("colour").toInt();
}

void LegendEditorForm::SetCategoryColour(int category) {
    LegendRec& l = current();
    if (category < 1 || category > static_cast<int>(l.Colours.size())) return;
    l.Colours[static_cast<size_t>(category - 1)] = curColour_;
    setBox(CategoryColour(category), curColour_);
}

bool LegendEditorForm::Apply() {
    if (m_.legend.Legends.empty()) return true;
    if (!settleAll()) return false;
    LegendRec& l = current();
    if (optScale_[0]->isChecked()) {
        l.Categorical = 1;
        for (int k = 1; k <= l.NCats && k <= 10 && k <= static_cast<int>(l.Breaks.size()); ++k)
            l.Breaks[static_cast<size_t>(k - 1)] = val(Breakpoint(k));
    } else {
        l.Categorical = 0;
    }
    getEdits();
    try {
        SaveLegends(m_.legend, m_.main.ModelMdeFile);
    } catch (const std::exception& e) {
        QMessageBox::warning(this, windowTitle(), QString::fromStdString(e.what()));
        return false;
    }
    if (redraw_) redraw_();
    return true;
}

void LegendEditorForm::Cancel() {
    m_.legend.Legends = backup_;
    reject();
}

void LegendEditorForm::FindMinMax() {
    const int n = mapList_->currentIndex() + 1;
    float lo = 0, hi = 0;
    GetMinMax(m_, VarOfLegend(m_, n), current().Set, lo, hi);
    current().ScaleMin = lo;
    current().ScaleMax = hi;
    upDateLeg();
}

bool LegendEditorForm::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::FocusIn && (o == txLower_ || o == txUpper_ ||
                                         std::find(txTo_.begin(), txTo_.end(), o) != txTo_.end()))
        edited_ = true;
    if (e->type() == QEvent::KeyPress && o == txtMaxMapCat_) {
        const auto* key = static_cast<QKeyEvent*>(e);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (!settleAll()) return true;
            if (txtMaxMapCat_->text().toInt() > 9) txtMaxMapCat_->setText(QStringLiteral("10"));
            UpdateScale(true);
            return true;
        }
    }
    if (e->type() == QEvent::MouseButtonPress) {
        for (int i = 1; i <= 15; ++i)
            if (o == capColor_[static_cast<size_t>(i - 1)]) PickColour(i);
        for (int k = 1; k <= 10; ++k)
            if (o == capCol_[static_cast<size_t>(k - 1)]) SetCategoryColour(k);
    }
    return QDialog::eventFilter(o, e);
}

}  // namespace osm
