#pragma once
// The compare and ensemble commands of osm-batch.
#include <set>
#include <string>

#include "batch/batch_options.h"
#include "batch/progress_bar.h"

namespace osm {
struct Model;
}

namespace osm::batch {

// Each runs on copies of the loaded model; `startInputs` are the files its
// start-up read. The exit status: 0, or 1 when a run faulted or a file could
// not be written.
int Compare(const Model& loaded, const Options& o, const std::set<std::string>& startInputs, ProgressBar& bar);
int Ensemble(const Model& loaded, const Options& o, const std::set<std::string>& startInputs, ProgressBar& bar);

}  // namespace osm::batch
