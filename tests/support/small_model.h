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

std::unique_ptr<SmallModel> StartSmallModel(bool physOnly);

}  // namespace osm::test
