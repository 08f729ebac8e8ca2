#include "forms/entry_guard.h"

#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>

#include <cmath>

namespace osm {

std::optional<double> EntryNumber(const QString& text) {
    static const QRegularExpression number(QStringLiteral(R"(^\s*[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?\s*$)"));
    if (!number.match(text).hasMatch()) return std::nullopt;
    const double v = text.trimmed().toDouble();
    if (!std::isfinite(v)) return std::nullopt;
    return v;
}

namespace {

QString numberText(double v) { return QString::number(v, 'g', 10); }

}  // namespace

QString RangeProblem(const QString& text, const Range& range) {
    const QString want = QStringLiteral("%1 from %2 to %3")
                             .arg(range.whole ? QStringLiteral("a whole number") : QStringLiteral("a number"),
                                  numberText(range.lo), numberText(range.hi));
    const auto v = EntryNumber(text);
    if (!v) return QStringLiteral("\"%1\" is not a number; enter %2").arg(text, want);
    if (*v < range.lo || *v > range.hi || (range.whole && *v != std::floor(*v)))
        return QStringLiteral("%1 is out of range; enter %2").arg(text.trimmed(), want);
    return {};
}

EntryCheck NumberCheck(const QString& what, double lo, double hi, bool whole) {
    return [=](const QString& text) {
        const QString problem = RangeProblem(text, Range{lo, hi, whole});
        return problem.isEmpty() ? problem : what + QStringLiteral(": ") + problem + QStringLiteral(".");
    };
}

EntryCheck OptionalNumberCheck(const QString& what, double lo, double hi) {
    const EntryCheck number = NumberCheck(what, lo, hi, false);
    return [=](const QString& text) { return text.trimmed().isEmpty() ? QString() : number(text); };
}

EntryGuard::EntryGuard(QLineEdit* box, QLabel* note, EntryCheck check)
    : QObject(box), box_(box), note_(note), check_(std::move(check)), good_(box->text()) {
    connect(box_, &QLineEdit::editingFinished, this, [this] { Settle(); });
    // A text set by the program, or typed and found good, becomes the one to go back to.
    connect(box_, &QLineEdit::textChanged, this, [this](const QString& t) {
        if (check_(t).isEmpty()) good_ = t;
    });
}

QString EntryGuard::Problem() const { return check_(box_->text()); }

bool EntryGuard::Settle() {
    const QString why = Problem();
    if (why.isEmpty()) return true;
    box_->setText(good_);
    if (note_) note_->setText(why + QStringLiteral(" The box keeps ") + (good_.isEmpty() ? QStringLiteral("its empty value") : good_) + QStringLiteral("."));
    return false;
}

}  // namespace osm
