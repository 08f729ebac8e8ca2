#pragma once
// A started model on the small test river.
#include <memory>

#include "core/model.h"
#include "support/test_folder.h"

namespace osm::test {

struct SmallModel {
    TestFolder folder;
    Model m;
};

// Writes the small river and starts the model on it. Until the flow engine
// fills them, the sediment concentrations are set so that every stored value is
// a number.
std::unique_ptr<SmallModel> StartSmallModel(bool physOnly);

}  // namespace osm::test
