#include "forms/graph_legend_form.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "core/model.h"
#include "presentation/graph_table.h"

namespace osm {

namespace {

// A short sample of a curve: a line, or marks for observed data.
class LineSample : public QWidget {
public:
    LineSample(QColor colour, bool marks, QWidget* parent) : QWidget(parent), colour_(colour), marks_(marks) {
        setFixedSize(48, 14);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setPen(QPen(colour_, 2));
        const int y = height() / 2;
        if (marks_) {
            p.setBrush(colour_);
            for (int x = 8; x < width(); x += 16) p.drawEllipse(QPoint(x, y), 3, 3);
        } else {
            p.drawLine(2, y, width() - 2, y);
        }
    }

private:
    QColor colour_;
    bool marks_;
};

}  // namespace

GraphLegendForm::GraphLegendForm(const Model& m, QWidget* parent) : QWidget(parent, Qt::Tool), m_(m) {
    setObjectName("frmTSGraphLeg");
    new QVBoxLayout(this);
}

void GraphLegendForm::ShowKey() {
    const Graphs& g = m_.graphs;
    var_ = 0;
    if (g.ClickedGraph >= 1 && g.ClickedGraph <= 6)
        var_ = g.ClickedKind == "ds_profile" ? g.ProfSlot(g.ClickedGraph) : g.GraphSlot(g.ClickedGraph);
    auto* box = static_cast<QVBoxLayout*>(layout());
    while (QLayoutItem* item = box->takeAt(0)) {
        if (QLayout* row = item->layout()) {
            while (QLayoutItem* inner = row->takeAt(0)) {
                delete inner->widget();
                delete inner;
            }
        }
        delete item->widget();
        delete item;
    }
    if (var_ < 1 || var_ > g.NVars) {
        var_ = 0;
        return;
    }
    setWindowTitle(QString::fromStdString(g.VarLabel(0, var_)));
    for (int s = 1; s <= g.VarSets(var_); ++s) {
        auto* row = new QHBoxLayout;
        const int32_t c = s <= g.CurveColour.hi() ? g.CurveColour(s) : 0;
        const QColor colour(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
        auto* label = new QLabel(QString::fromStdString(g.VarLabel(s, var_)), this);
        label->setObjectName(QStringLiteral("lbKey%1").arg(s));
        row->addWidget(label, 1);
        row->addWidget(new LineSample(colour, IsObservedSet(g, s, var_), this));
        box->addLayout(row);
    }
    adjustSize();
}

int GraphLegendForm::LabelCount() const { return var_ == 0 ? 0 : m_.graphs.VarSets(var_); }

QString GraphLegendForm::LabelText(int set) const {
    const auto* label = findChild<QLabel*>(QStringLiteral("lbKey%1").arg(set));
    return label ? label->text() : QString();
}

}  // namespace osm
