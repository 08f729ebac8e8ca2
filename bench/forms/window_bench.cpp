// The desktop program's run on the default data set: a 50-year physical run
// pressed from the status form with the six graphs and six profiles of the
// default setup shown and painted, beside the same run with no window at all.
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

#include <benchmark/benchmark.h>

#include <memory>

#include "core/model.h"
#include "core/run_driver.h"
#include "default_model.h"
#include "forms/main_window.h"
#include "forms/status_form.h"

namespace {

void BM_WindowPhysicalRun50Years(benchmark::State& state) {
    auto m = std::make_unique<osm::Model>();
    if (!osm_bench::StartDefaultModel(state, *m, true)) return;
    osm::MainWindow w(*m);
    w.resize(1600, 1000);
    w.show();
    QApplication::processEvents();
    w.Status()->txNYears->setText(QStringLiteral("50"));
    for (auto _ : state) {
        w.Status()->BtStart->click();
        QApplication::processEvents();  // the last redraw
    }
}

void BM_NoWindowPhysicalRun50Years(benchmark::State& state) {
    auto m = std::make_unique<osm::Model>();
    if (!osm_bench::StartDefaultModel(state, *m, true)) return;
    osm::RunObserver none;
    for (auto _ : state) osm::StartRun(*m, none, 48, 50);
}

}  // namespace

BENCHMARK(BM_WindowPhysicalRun50Years)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NoWindowPhysicalRun50Years)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
