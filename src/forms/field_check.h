#pragma once
// Entry checks of the editors' boxes and grids: a box or grid cell takes only a
// number in its range (the rule of EntryGuard), and the value goes on to the
// model, which may refuse it too. Anything refused comes back to the old value
// in place and the form's message line says why.
#include <QObject>
#include <QString>

#include <functional>

#include "forms/entry_guard.h"

class QLabel;
class QLineEdit;
class QTableWidget;

namespace osm {

class FieldCheck : public QObject {
    Q_OBJECT
public:
    // `why` is the form's message line.
    FieldCheck(QLabel* why, QObject* parent);

    // The box's text, when its editing finishes (or Enter is pressed), is
    // checked; a number in range goes to `take`, which may refuse it by
    // returning a reason.
    using Take = std::function<QString(double)>;
    void Watch(QLineEdit* box, const QString& name, Range range, Take take);
    // Every cell of the grid: `range` by cell, the value to `take(row, column, value)`.
    using CellRange = std::function<Range(int, int)>;
    using TakeCell = std::function<void(int, int, double)>;
    void WatchGrid(QTableWidget* grid, const QString& name, CellRange range, TakeCell take);

    // Says why a value was refused (or clears the line with an empty text).
    void Say(const QString& text);

private:
    QLabel* why_;
};

// A cell's text of a stored (single) number as the program writes it.
QString CellText(float x);
// A caption broken at blanks into lines of about `width` characters, for
// controls that do not wrap their text.
QString Wrapped(const QString& caption, int width);
// Sets a cell (made when missing) or a box by program, as its checked value.
void SetCell(QTableWidget* grid, int row, int column, const QString& text);
void SetBox(QLineEdit* box, const QString& text);
// The grid's cell editor takes only digits, the minus sign and the point.
void AllowNumberKeys(QTableWidget* grid);

}  // namespace osm
