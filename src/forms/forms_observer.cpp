#include "forms/forms_observer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "forms/status_form.h"

namespace osm {

void FormsRunObserver::ShowProgress(const std::string& year, const std::string& month) {
    if (status_) status_->ShowProgress(QString::fromStdString(year), QString::fromStdString(month));
}

void FormsRunObserver::PausedAtYearEnd() {
    if (status_) status_->PausedAtYearEnd();
}

void FormsRunObserver::Yield() { QCoreApplication::processEvents(); }

void FormsRunObserver::PauseSleep() {
    QEventLoop wait;
    QTimer::singleShot(100, &wait, &QEventLoop::quit);
    wait.exec();
}

}  // namespace osm
