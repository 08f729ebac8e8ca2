// The desktop program's run on the default data set: a 50-year physical run
// pressed from the status form with the six graphs, six maps and six profiles of
// the default setup shown and painted, the same run without the maps, and the
// same run with no window at all. The window runs report the longest time the
// event loop went unserved ("freeze_ms") beside the mean month's step
// ("month_ms"): the window must never freeze for longer than a month's step.
// Both are the main thread's processor time, so that other work on the machine
// doesn't count.
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>

#include "core/model.h"
#include "core/run_driver.h"
#include "default_model.h"
#include "forms/main_window.h"
#include "forms/status_form.h"

namespace {

constexpr int kYears = 50;

long long threadNs() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<long long>(t.tv_sec) * 1000000000LL + t.tv_nsec;
}

void windowRun(benchmark::State& state, bool maps) {
    auto m = std::make_unique<osm::Model>();
    if (!osm_bench::StartDefaultModel(state, *m, true)) return;
    for (int i = 1; i <= 3; ++i) m->graphs.VisForms(i) = 1;
    if (!maps) m->graphs.VisForms(2) = 0;
    osm::MainWindow w(*m);
    w.resize(1600, 1000);
    w.show();
    QApplication::processEvents();
    w.Status()->txNYears->setText(QString::number(kYears));

    // A zero timer fires at every turn of the event loop: the longest gap between
    // two firings is the longest the window went without answering the user.
    long long last = 0, longest = 0, runNs = 0;
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&] {
        const long long now = threadNs();
        longest = std::max(longest, now - last);
        last = now;
    });
    beat.start(0);
    for (auto _ : state) {
        const long long start = threadNs();
        last = start;
        w.Status()->BtStart->click();
        QApplication::processEvents();  // the last redraw
        runNs += threadNs() - start;
    }
    const double months = static_cast<double>(state.iterations()) * kYears * 12;
    state.counters["month_ms"] = static_cast<double>(runNs) / 1e6 / months;
    state.counters["freeze_ms"] = static_cast<double>(longest) / 1e6;
}

void BM_WindowPhysicalRun50Years(benchmark::State& state) { windowRun(state, true); }
void BM_WindowNoMapsPhysicalRun50Years(benchmark::State& state) { windowRun(state, false); }

void BM_NoWindowPhysicalRun50Years(benchmark::State& state) {
    auto m = std::make_unique<osm::Model>();
    if (!osm_bench::StartDefaultModel(state, *m, true)) return;
    osm::RunObserver none;
    for (auto _ : state) osm::StartRun(*m, none, 48, kYears);
}

}  // namespace

BENCHMARK(BM_WindowPhysicalRun50Years)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowNoMapsPhysicalRun50Years)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NoWindowPhysicalRun50Years)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
