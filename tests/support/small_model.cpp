#include "support/small_model.h"

#include "core/start_up.h"

namespace osm::test {

std::unique_ptr<SmallModel> StartSmallModel(bool physOnly) {
    auto s = std::make_unique<SmallModel>();
    WriteSmallRiver(s->folder);
    StartUp(s->m, StartOptions{s->folder.path(), physOnly, {}});
    return s;
}

}  // namespace osm::test
