// The experiment file (.exp).
#include "fuzz_support.h"
#include "hydrology/flow_engine.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.exp", data, size);
    Model m = fuzz::StartedModel();
    if (fuzz::Takes([&] { LoadExp(m, path); }))
        fuzz::RequireRoundTrip(m, "exp", LoadExp, SaveExp);
    return 0;
}
