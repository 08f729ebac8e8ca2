#include "default_model.h"

#include <exception>

#include "core/start_up.h"

namespace osm_bench {

namespace {

class Silent : public osm::MessageSink {
public:
    void Show(const osm::ModelMessage&) override {}
};

}  // namespace

osm::MessageSink& SilentMessages() {
    static Silent silent;
    return silent;
}

bool StartDefaultModel(benchmark::State& state, osm::Model& m, bool physOnly) {
    m.messages = &SilentMessages();
    try {
        osm::StartUp(m, osm::StartOptions{OSM_DEFAULT_FOLDER, physOnly, {}});
    } catch (const std::exception& e) {
        state.SkipWithError(e.what());
        return false;
    }
    return true;
}

}  // namespace osm_bench
