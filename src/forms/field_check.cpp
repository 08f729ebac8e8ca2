#include "forms/field_check.h"

#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QStyledItemDelegate>
#include <QTableWidget>

#include "core/numbers.h"

namespace osm {

QString CellText(float x) { return QString::fromStdString(NumText(x)); }

QString Wrapped(const QString& caption, int width) {
    QString out;
    int line = 0;
    for (const QString& word : caption.split(QLatin1Char(' '))) {
        if (line > 0 && line + 1 + word.size() > width) {
            out += QLatin1Char('\n');
            line = 0;
        } else if (line > 0) {
            out += QLatin1Char(' ');
            ++line;
        }
        out += word;
        line += int(word.size());
    }
    return out;
}

void SetCell(QTableWidget* grid, int row, int column, const QString& text) {
    const QSignalBlocker quiet(grid);
    QTableWidgetItem* it = grid->item(row, column);
    if (!it) {
        it = new QTableWidgetItem;
        grid->setItem(row, column, it);
    }
    it->setText(text);
    it->setData(Qt::UserRole, text);
}

void SetBox(QLineEdit* box, const QString& text) {
    box->setText(text);
    box->setProperty("good", text);
}

namespace {

class NumberKeys : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QWidget* w = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* box = qobject_cast<QLineEdit*>(w))
            box->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[-.0-9]*")), box));
        return w;
    }
};

}  // namespace

void AllowNumberKeys(QTableWidget* grid) { grid->setItemDelegate(new NumberKeys(grid)); }

FieldCheck::FieldCheck(QLabel* why, QObject* parent) : QObject(parent), why_(why) {}

void FieldCheck::Say(const QString& text) {
    why_->setText(text);
    why_->setStyleSheet(text.isEmpty() ? QString() : QStringLiteral("color: #a00000"));
}

void FieldCheck::Watch(QLineEdit* box, const QString& name, Range range, Take take) {
    box->setProperty("good", box->text());
    connect(box, &QLineEdit::editingFinished, this, [this, box, name, range, take] {
        const QString text = box->text();
        if (text == box->property("good").toString()) return;
        QString problem = RangeProblem(text, range);
        if (problem.isEmpty()) problem = take(*EntryNumber(text));
        if (!problem.isEmpty()) {
            box->setText(box->property("good").toString());
            box->setToolTip(name + QStringLiteral(": ") + problem);
            Say(name + QStringLiteral(": ") + problem + QStringLiteral(" (kept ") + box->text() + QStringLiteral(")"));
            return;
        }
        box->setProperty("good", text);
        box->setToolTip(QString());
        Say(QString());
    });
}

void FieldCheck::WatchGrid(QTableWidget* grid, const QString& name, CellRange range, TakeCell take) {
    for (int r = 0; r < grid->rowCount(); ++r)
        for (int c = 0; c < grid->columnCount(); ++c)
            if (QTableWidgetItem* it = grid->item(r, c)) it->setData(Qt::UserRole, it->text());
    connect(grid, &QTableWidget::itemChanged, this, [this, grid, name, range, take](QTableWidgetItem* it) {
        const QString old = it->data(Qt::UserRole).toString();
        const QString text = it->text();
        if (text == old) return;
        const QString problem = RangeProblem(text, range(it->row(), it->column()));
        const QSignalBlocker quiet(grid);
        if (!problem.isEmpty()) {
            it->setText(old);
            Say(QStringLiteral("%1, row %2, column %3: %4 (kept %5)")
                    .arg(name)
                    .arg(it->row() + 1)
                    .arg(it->column() + 1)
                    .arg(problem, old));
            return;
        }
        const double x = *EntryNumber(text);
        it->setData(Qt::UserRole, text.trimmed());
        it->setText(text.trimmed());
        take(it->row(), it->column(), x);
        Say(QString());
    });
}

}  // namespace osm
