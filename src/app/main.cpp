// osm: the desktop program.
#include <QApplication>
#include <QMessageBox>

#include "core/model.h"
#include "core/start_up.h"
#include "forms/splash_form.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const std::string folder = OSM_DEFAULT_FOLDER;
    osm::Model m;
    try {
        osm::SplashForm splash(QString::fromStdString(osm::StartMessage(folder)));
        if (splash.exec() != QDialog::Accepted) return 0;
        osm::StartUp(m, osm::StartOptions{folder, splash.PhysOnly(), {}});
    } catch (const std::exception& e) {
        QMessageBox::critical(nullptr, QStringLiteral("Start-up failed"), QString::fromUtf8(e.what()));
        return 1;
    }
    return 0;
}
