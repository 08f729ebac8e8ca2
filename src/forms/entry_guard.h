#pragma once
// Entry boxes that refuse, in place, what they cannot take: when the user leaves
// a box whose text is not a number in its range, the box gets its last good
// text back and a note beside the form says why.
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class QLabel;
class QLineEdit;

namespace osm {

// A number typed into a box: decimal, with an optional sign, point and exponent;
// nothing else (no trailing text, no empty box).
std::optional<double> EntryNumber(const QString& text);

struct Range {
    double lo = 0;
    double hi = 0;
    bool whole = false;  // whole numbers only
};

// Why `text` is not a number in `range`, or an empty text when it is one.
QString RangeProblem(const QString& text, const Range& range);

// What a box accepts: "" when the text is good, else the reason.
using EntryCheck = std::function<QString(const QString&)>;
// A number from lo to hi, whole if asked; `what` names the box in the reason.
EntryCheck NumberCheck(const QString& what, double lo, double hi, bool whole);
// The same, or an empty box.
EntryCheck OptionalNumberCheck(const QString& what, double lo, double hi);

class EntryGuard : public QObject {
    Q_OBJECT
public:
    // Guards `box`, whose present text counts as good; reasons go to `note`.
    EntryGuard(QLineEdit* box, QLabel* note, EntryCheck check);
    // Why the present text is refused, "" when it is good.
    QString Problem() const;
    // Checks the box now: a bad text is put back to the last good one and the
    // reason shown. True when the text was good.
    bool Settle();

private:
    QLineEdit* box_;
    QLabel* note_;
    EntryCheck check_;
    QString good_;
};

}  // namespace osm
