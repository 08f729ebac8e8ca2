#include "forms/graph_legend_form.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "core/model.h"
#include "core/scenario.h"
#include "forms/chart_export.h"

namespace osm {

namespace {

// A short sample of a curve, drawn with the curve's own look.
class CurveSample : public QWidget {
public:
    CurveSample(CurveLook look, QWidget* parent) : QWidget(parent), look_(std::move(look)) { setFixedSize(48, 14); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        const int y = height() / 2;
        if (look_.marks) {
            p.setPen(QPen(look_.colour, 1));
            p.setBrush(look_.filled ? QBrush(look_.colour) : QBrush(Qt::NoBrush));
            const double r = look_.markSize / 2;
            for (int x = 8; x < width(); x += 16) {
                const QRectF box(x - r, y - r, 2 * r, 2 * r);
                if (look_.shape == QScatterSeries::MarkerShapeRectangle)
                    p.drawRect(box);
                else
                    p.drawEllipse(box);
            }
        } else {
            QPen pen(look_.colour, look_.width);
            pen.setStyle(look_.line);
            p.setPen(pen);
            p.drawLine(2, y, width() - 2, y);
        }
    }

private:
    CurveLook look_;
};

QString trimmed(const std::string& s) { return QString::fromStdString(s).trimmed(); }

}  // namespace

GraphLegendForm::GraphLegendForm(const Model& m, QWidget* parent) : QWidget(parent, Qt::Tool), m_(m) {
    setObjectName("frmTSGraphLeg");
    new QVBoxLayout(this);
}

void GraphLegendForm::clearRows() {
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
    rows_ = 0;
}

void GraphLegendForm::ShowKey(const ChartState& chart) {
    const Graphs& g = m_.graphs;
    var_ = 0;
    if (g.ClickedGraph >= 1 && g.ClickedGraph <= 6)
        var_ = g.ClickedKind == "ds_profile" ? g.ProfSlot(g.ClickedGraph) : g.GraphSlot(g.ClickedGraph);
    clearRows();
    if (var_ < 1 || var_ > g.NVars) {
        var_ = 0;
        return;
    }
    setWindowTitle(QString::fromStdString(g.VarLabel(0, var_)));
    auto* box = static_cast<QVBoxLayout*>(layout());
    const size_t curves = std::min(chart.formats.size(), chart.roles.size());
    for (size_t i = 0; i < curves; ++i) {
        const CurveRole& role = chart.roles[i];
        if (role.set < 1 || role.set > g.VarSets(var_)) continue;
        auto* row = new QHBoxLayout;
        const QString set = trimmed(g.VarLabel(g.VarSets(var_) > 1 ? role.set : 0, var_));
        auto* label = new QLabel(set + QStringLiteral(" \u2014 ") + QString::fromStdString(RunName(m_.main, role.run)),
                                 this);
        label->setObjectName(QStringLiteral("lbKey%1").arg(i));
        row->addWidget(new CurveSample(LookOf(chart.formats[i], role), this));
        row->addWidget(label, 1);
        box->addLayout(row);
        ++rows_;
    }
    adjustSize();
}

QString GraphLegendForm::LabelText(int curve) const {
    const auto* label = findChild<QLabel*>(QStringLiteral("lbKey%1").arg(curve));
    return label ? label->text() : QString();
}

}  // namespace osm
