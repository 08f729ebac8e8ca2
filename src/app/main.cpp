// osm: the desktop program. It asks for the mode, starts the model on the
// program folder and opens the main window.
//
//   osm [--folder DIR] [--phys-only | --whole] [--start-year YY] [--years N]
//       [--run] [--screenshot FILE.png] [--size WxH]
//
// --phys-only and --whole answer the start dialog; --run presses Start once the
// window is up and reports the run's time on stderr when it ends; --screenshot
// saves a picture of the window when that run ends (or at once without --run)
// and closes the program; --size sets the window's size (1600x1000 for a
// screenshot unless told).
#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <optional>

#include "core/messages.h"
#include "core/model.h"
#include "core/start_up.h"
#include "forms/main_window.h"
#include "forms/splash_form.h"
#include "forms/status_form.h"

namespace {

struct Options {
    std::string folder = OSM_DEFAULT_FOLDER;
    std::optional<bool> physOnly;
    QString startYear, years, screenshot;
    QSize size;
    bool run = false;
};

const char* const Usage =
    "usage: osm [--folder DIR] [--phys-only | --whole] [--start-year YY] [--years N] [--run]\n"
    "           [--screenshot FILE.png] [--size WxH]\n";

bool parse(int argc, char** argv, Options& o) {
    int width = 0, height = 0;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        auto next = [&]() -> const char* { return i + 1 < argc ? argv[++i] : nullptr; };
        const char* v = nullptr;
        if (a == "--phys-only") o.physOnly = true;
        else if (a == "--whole") o.physOnly = false;
        else if (a == "--run") o.run = true;
        else if (a == "--folder" && (v = next())) o.folder = v;
        else if (a == "--start-year" && (v = next())) o.startYear = QString::fromLocal8Bit(v);
        else if (a == "--years" && (v = next())) o.years = QString::fromLocal8Bit(v);
        else if (a == "--screenshot" && (v = next())) o.screenshot = QString::fromLocal8Bit(v);
        else if (a == "--size" && (v = next()) && std::sscanf(v, "%dx%d", &width, &height) == 2 && width > 0 && height > 0)
            o.size = QSize(width, height);
        else {
            std::fprintf(stderr, "osm: unknown or incomplete option %s\n%s", a.c_str(), Usage);
            return false;
        }
    }
    return true;
}

// Model messages stand in a box that holds the run until it is answered.
class BoxMessages : public osm::MessageSink {
public:
    void Show(const osm::ModelMessage& msg) override {
        const QString text = QString::fromStdString(msg.text) +
                             (msg.detail.empty() ? QString() : QStringLiteral("\n\n") + QString::fromStdString(msg.detail));
        QMessageBox::warning(QApplication::activeWindow(),
                             QString::fromStdString(msg.title.empty() ? "Ostrel Gorge Ecosystem Model" : msg.title), text);
    }
};

// The start dialog answers the mode unless the command line did; it stays up,
// inactive, while the model loads.
bool startUp(osm::Model& m, const Options& o) {
    osm::SplashForm splash(QString::fromStdString(osm::StartMessage(o.folder)));
    bool physOnly = o.physOnly.value_or(false);
    if (!o.physOnly) {
        if (splash.exec() != QDialog::Accepted) return false;
        physOnly = splash.PhysOnly();
    }
    splash.cmdWhole->setEnabled(false);
    splash.cmdRunPhys->setEnabled(false);
    splash.show();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QApplication::processEvents();
    try {
        osm::StartUp(m, osm::StartOptions{o.folder, physOnly, {}});
    } catch (...) {
        QApplication::restoreOverrideCursor();
        throw;
    }
    QApplication::restoreOverrideCursor();
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    Options o;
    if (!parse(argc, argv, o)) return 2;
    osm::Model m;
    BoxMessages messages;
    m.messages = &messages;
    try {
        if (!startUp(m, o)) return 0;
    } catch (const std::exception& e) {
        QMessageBox::critical(nullptr, QStringLiteral("Ostrel Gorge Ecosystem Model"),
                              QStringLiteral("Start-up failed:\n") + QString::fromUtf8(e.what()));
        return 1;
    }
    osm::MainWindow w(m);
    osm::StatusForm* status = w.Status();
    if (!o.startYear.isEmpty()) status->txStartYr->setText(o.startYear);
    if (!o.years.isEmpty()) status->txNYears->setText(o.years);
    if (o.size.isValid()) w.resize(o.size);
    if (!o.screenshot.isEmpty()) {
        if (!o.size.isValid()) w.resize(1600, 1000);
        auto grab = [&w, &o] {
            if (!w.grab().save(o.screenshot)) std::fprintf(stderr, "osm: cannot write %s\n", qPrintable(o.screenshot));
            QApplication::quit();
        };
        if (o.run)
            QObject::connect(status, &osm::StatusForm::runEnded, &w, [grab] { QTimer::singleShot(300, grab); });
        else
            QTimer::singleShot(500, grab);
    }
    w.show();
    QElapsedTimer clock;
    if (o.run) {
        QObject::connect(status, &osm::StatusForm::runEnded, &w, [&clock, &m] {
            std::fprintf(stderr, "osm: %d months ran in %.2f s\n", static_cast<int>(m.main.CumMonth),
                         static_cast<double>(clock.elapsed()) / 1000.0);
        });
        QTimer::singleShot(0, status->BtStart, [&clock, status] {
            clock.start();
            status->BtStart->click();
        });
    }
    return app.exec();
}
