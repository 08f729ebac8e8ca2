#include "forms/hydrology/diurnal_picture.h"

#include <QPainter>
#include <QPainterPath>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/numbers.h"

namespace osm {

namespace {

// The hours 1..24 spread across a width, with a margin at both ends.
constexpr int Margin = 8;
double hourX(int h, int width) { return Margin + (h - 1) * (width - 2.0 * Margin) / 23.0; }

}  // namespace

DiurnalPicture::DiurnalPicture(QWidget* parent) : QWidget(parent) {
    setMinimumSize(240, 140);
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::white);
    setPalette(pal);
}

void DiurnalPicture::Set(const Day& weekday, const Day& sunday, double yMin, double yMax) {
    day_ = {weekday, sunday};
    yMin_ = yMin;
    yMax_ = yMax > yMin ? yMax : yMin + 1;
    set_ = true;
    update();
}

void DiurnalPicture::paintEvent(QPaintEvent*) {
    QPainter pt(this);
    pt.setRenderHint(QPainter::Antialiasing);
    const int w = width(), h = height();
    pt.setPen(QPen(QColor(225, 225, 225), 1));
    for (int hr = 1; hr <= 24; ++hr) pt.drawLine(QPointF(hourX(hr, w), 0), QPointF(hourX(hr, w), h));
    pt.setPen(QPen(Qt::gray, 1));
    pt.drawRect(rect().adjusted(0, 0, -1, -1));
    if (!set_) return;
    auto y = [&](double q) { return Margin + (yMax_ - q) * (h - 2.0 * Margin) / (yMax_ - yMin_); };
    const std::array<QColor, 2> colour{QColor(0, 0, 160), QColor(200, 0, 0)};
    for (size_t d = 0; d < 2; ++d) {
        QPainterPath path;
        for (int hr = 1; hr <= 24; ++hr) {
            const QPointF p(hourX(hr, w), y(day_[d][static_cast<size_t>(hr)]));
            if (hr == 1) path.moveTo(p);
            else path.lineTo(p);
        }
        pt.setPen(QPen(colour[d], 2));
        pt.drawPath(path);
    }
}

HourAxis::HourAxis(QWidget* parent) : QWidget(parent) { setMinimumHeight(fontMetrics().height() + 4); }

QSize HourAxis::sizeHint() const { return {420, fontMetrics().height() + 4}; }

void HourAxis::paintEvent(QPaintEvent*) {
    QPainter pt(this);
    const int w = width();
    for (int hr = 1; hr <= 24; hr += (hr == 1 ? 5 : 6)) {
        const QString text = QString::fromStdString(Format(hr, "000"));
        const int tw = fontMetrics().horizontalAdvance(text);
        const double x = std::clamp(hourX(hr, w) - tw / 2.0, 0.0, double(w - tw));
        pt.drawText(QPointF(x, fontMetrics().ascent() + 2), text);
    }
}

StepButtons::StepButtons(QWidget* parent) : QWidget(parent) {
    auto* up = new QToolButton(this);
    auto* down = new QToolButton(this);
    up->setArrowType(Qt::UpArrow);
    down->setArrowType(Qt::DownArrow);
    for (QToolButton* b : {up, down}) b->setFixedSize(18, 12);
    auto* col = new QVBoxLayout(this);
    col->setContentsMargins(0, 0, 0, 0);
    col->setSpacing(0);
    col->addWidget(up);
    col->addWidget(down);
    connect(up, &QToolButton::clicked, this, [this] { emit stepped(1); });
    connect(down, &QToolButton::clicked, this, [this] { emit stepped(-1); });
}

}  // namespace osm
