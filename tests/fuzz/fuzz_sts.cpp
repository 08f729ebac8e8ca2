// The flow scenario file (.sts), header and levels.
#include "fuzz_support.h"
#include "hydrology/flow_engine.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.sts", data, size);
    Model header = fuzz::StartedModel();
    fuzz::Takes([&] { ReadSts(header, path, true); });
    Model m = fuzz::StartedModel();
    const auto read = [](Model& into, const std::string& p) { ReadSts(into, p, false); };
    if (fuzz::Takes([&] { read(m, path); })) fuzz::RequireRoundTrip(m, "sts", read, WriteSts);
    return 0;
}
