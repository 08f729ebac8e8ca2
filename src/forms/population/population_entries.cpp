#include "forms/population/population_entries.h"

#include <QLineEdit>

#include "core/numbers.h"

namespace osm {

EntryGuard* WatchText(QLineEdit* box, QLabel* note, EntryCheck check, std::function<void(const QString&)> take) {
    auto* guard = new EntryGuard(box, note, std::move(check));
    // The guard settles first: a refused text is put back, which clears the
    // box's modified flag, so only a good typed text reaches `take`.
    QObject::connect(box, &QLineEdit::editingFinished, guard, [box, take = std::move(take)] {
        if (!box->isModified()) return;
        box->setModified(false);
        take(box->text().trimmed());
    });
    return guard;
}

EntryGuard* WatchNumber(QLineEdit* box, QLabel* note, EntryCheck check, std::function<void(double)> take) {
    return WatchText(box, note, std::move(check),
                     [take = std::move(take)](const QString& text) { take(*EntryNumber(text)); });
}

void ShowText(QLineEdit* box, const QString& text) {
    box->setText(text);
    box->setModified(false);
}

QString SingleText(float x) { return QString::fromStdString(NumText(x)); }

}  // namespace osm
