#pragma once
// The population editors' boxes: each is guarded (a text that is not a number
// in its range is refused in place, the old value kept and the reason shown),
// and a good text typed by the user goes into the model when its editing
// finishes; texts the form sets itself are never taken back.
#include <QString>

#include <functional>

#include "forms/entry_guard.h"

class QLabel;
class QLineEdit;

namespace osm {

// Guards `box` with `check`; a good text the user typed goes to `take`.
EntryGuard* WatchText(QLineEdit* box, QLabel* note, EntryCheck check, std::function<void(const QString&)> take);
// The same for a number.
EntryGuard* WatchNumber(QLineEdit* box, QLabel* note, EntryCheck check, std::function<void(double)> take);
// A box's text set by the form: taken as the good one, not as typed.
void ShowText(QLineEdit* box, const QString& text);
// A stored single as the boxes show it.
QString SingleText(float x);

}  // namespace osm
