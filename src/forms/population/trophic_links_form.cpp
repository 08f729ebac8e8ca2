#include "forms/population/trophic_links_form.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QVBoxLayout>

#include <tuple>

#include "core/colours.h"
#include "core/model.h"
#include "forms/population/population_entries.h"
#include "population/population_editors.h"

namespace osm {

namespace {

// One of the standard colours, any but grey, which is hard to see.
QColor linkColour() {
    int n = QRandomGenerator::global()->bounded(15);
    if (n == 8) n = 0;
    const int32_t c = QBColor(n);
    return QColor(c & 0xff, (c >> 8) & 0xff, (c >> 16) & 0xff);
}

}  // namespace

LinkPicture::LinkPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picLinks"));
    setMinimumSize(420, 360);
}

void LinkPicture::SetButtons(const std::vector<QRadioButton*>& pred, const std::vector<QRadioButton*>& prey) {
    pred_ = pred;
    prey_ = prey;
    lines.clear();
    resizeEvent(nullptr);
    update();
}

// The buttons of species or food type a stand at a/(n + 1) of the height.
void LinkPicture::resizeEvent(QResizeEvent*) {
    const int n = static_cast<int>(pred_.size());
    int w = 0;
    for (auto* b : pred_) w = std::max(w, b->sizeHint().width());
    for (auto* b : prey_) w = std::max(w, b->sizeHint().width());
    w = std::min(w, width() / 3);
    for (int a = 1; a <= n; ++a) {
        const int h = pred_[a - 1]->sizeHint().height();
        const int y = height() * a / (n + 1) - h / 2;
        pred_[a - 1]->setGeometry(4, y, w, h);
        prey_[a - 1]->setGeometry(width() - w - 4, y, w, h);
    }
}

void LinkPicture::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    for (const auto& [pair, colour] : lines) {
        const QRect from = pred_.at(pair.first - 1)->geometry(), to = prey_.at(pair.second - 1)->geometry();
        p.setPen(QPen(colour, 2));
        p.drawLine(QPoint(from.right() + 2, from.center().y()), QPoint(to.left() - 2, to.center().y()));
    }
}

TrophicLinksForm::TrophicLinksForm(Model& m, QWidget* parent)
    : QWidget(parent, Qt::Window),
      picture(new LinkPicture(this)),
      PredProp(new QLineEdit(this)),
      FoodProp(new QLineEdit(this)),
      Command1(new QPushButton(QStringLiteral("Remove link"), this)),
      lbNote(new QLabel(this)),
      m_(m) {
    setObjectName(QStringLiteral("frmPred"));
    setWindowTitle(QStringLiteral("Trophic Impact Linkages"));
    PredProp->setObjectName(QStringLiteral("PredProp"));
    FoodProp->setObjectName(QStringLiteral("FoodProp"));
    Command1->setObjectName(QStringLiteral("Command1"));
    lbNote->setObjectName(QStringLiteral("lbNote"));
    lbNote->setWordWrap(true);

    auto take = [this](bool mortality) {
        return [this, mortality](const QString& t) {
            if (!t.isEmpty()) proportion(mortality, *EntryNumber(t));
        };
    };
    WatchText(PredProp, lbNote, OptionalNumberCheck(QStringLiteral("Proportion of prey mortality"), 0, 1), take(true));
    WatchText(FoodProp, lbNote, OptionalNumberCheck(QStringLiteral("Proportion of diet"), 0, 1), take(false));
    connect(Command1, &QPushButton::clicked, this, &TrophicLinksForm::Command1_Click);

    auto* side = new QVBoxLayout;
    auto label = [this](const char* text) {
        auto* l = new QLabel(QString::fromLatin1(text), this);
        l->setWordWrap(true);
        return l;
    };
    side->addWidget(label("Proportion of prey mortality caused by this predator type"));
    side->addWidget(PredProp);
    side->addWidget(label("Proportion of predator's diet contributed by this prey type"));
    side->addWidget(FoodProp);
    side->addWidget(Command1);
    side->addWidget(lbNote);
    side->addStretch();
    auto* heads = new QHBoxLayout;
    heads->addWidget(label("Predator"));
    heads->addStretch();
    heads->addWidget(label("Prey"));
    auto* left = new QVBoxLayout;
    left->addLayout(heads);
    left->addWidget(picture, 1);
    auto* all = new QHBoxLayout(this);
    all->addLayout(left, 3);
    all->addLayout(side, 1);
    ShowPars();
    resize(760, 520);
}

TrophicLinksForm::~TrophicLinksForm() = default;

void TrophicLinksForm::ShowPars() {
    for (auto* b : PredType) delete b;
    for (auto* b : PreyType) delete b;
    PredType.clear();
    PreyType.clear();
    for (auto* g : findChildren<QButtonGroup*>()) delete g;
    editor_ = std::make_unique<LinkEditor>(m_);
    const Popsubs& ps = m_.popsubs;
    auto* predGroup = new QButtonGroup(this);
    auto* preyGroup = new QButtonGroup(this);
    for (int a = 1; a <= editor_->Top(); ++a) {
        const QString name = QString::fromStdString(ps.SpName(a));
        for (auto [buttons, group, control] : {std::tuple{&PredType, predGroup, "PredType"}, std::tuple{&PreyType, preyGroup, "PreyType"}}) {
            auto* b = new QRadioButton(name, picture);
            b->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(control)).arg(a));
            group->addButton(b, a);
            b->show();
            buttons->push_back(b);
        }
    }
    connect(predGroup, &QButtonGroup::idClicked, this, [this](int a) { SelectPair(a, prey_); });
    connect(preyGroup, &QButtonGroup::idClicked, this, [this](int a) { SelectPair(pred_, a); });
    picture->SetButtons(PredType, PreyType);
    for (int l = 1; l <= ps.NLinks; ++l) drawLink(ps.LinkPred(l), ps.LinkPrey(l));
    pred_ = prey_ = 0;
    lbNote->clear();
    if (ps.NLinks > 0) SelectPair(ps.LinkPred(1), ps.LinkPrey(1));
    else showPair();
}

void TrophicLinksForm::SelectPair(int pred, int prey) {
    pred_ = pred;
    prey_ = prey;
    if (pred > 0) PredType.at(pred - 1)->setChecked(true);
    if (prey > 0) PreyType.at(prey - 1)->setChecked(true);
    showPair();
}

void TrophicLinksForm::showPair() {
    const bool chosen = pred_ > 0 && prey_ > 0;
    PredProp->setEnabled(chosen);
    FoodProp->setEnabled(chosen);
    Command1->setEnabled(chosen);
    const int l = chosen ? editor_->LinkIndex(pred_, prey_) : 0;
    const Popsubs& ps = m_.popsubs;
    ShowText(PredProp, l ? SingleText(ps.LinkMort(l)) : QString());
    ShowText(FoodProp, l ? SingleText(ps.LinkDiet(l)) : QString());
}

void TrophicLinksForm::drawLink(int pred, int prey) {
    picture->lines[{pred, prey}] = linkColour();
    picture->update();
}

void TrophicLinksForm::proportion(bool mortality, double v) {
    if (pred_ == 0 || prey_ == 0) return;
    const bool had = editor_->LinkIndex(pred_, prey_) != 0;
    const float x = static_cast<float>(v);
    const int l = mortality ? editor_->SetMort(pred_, prey_, x) : editor_->SetDiet(pred_, prey_, x);
    if (!had && l != 0) drawLink(pred_, prey_);
    showPair();
}

void TrophicLinksForm::Command1_Click() {
    if (pred_ == 0 || prey_ == 0 || !editor_->Remove(pred_, prey_)) return;
    picture->lines.erase({pred_, prey_});
    picture->update();
    ShowText(PredProp, QString());
    ShowText(FoodProp, QString());
    lbNote->clear();
}

}  // namespace osm
