#pragma once
// What every benchmark on the default data set starts with: a model loaded from
// the data folder of the source tree, its messages silenced so that the timings
// hold no dialogue and no console output.
#include <benchmark/benchmark.h>

#include "core/messages.h"
#include "core/model.h"

namespace osm_bench {

// A message sink that drops every message.
osm::MessageSink& SilentMessages();

// Starts m on the default folder, the physical model only or the whole model,
// with its messages silenced. False, with the benchmark marked skipped and the
// reason given, when the start-up fails.
bool StartDefaultModel(benchmark::State& state, osm::Model& m, bool physOnly);

}  // namespace osm_bench
