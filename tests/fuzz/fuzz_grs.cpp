// The graphics setup file (.grs). A file the loader refuses leaves the defaults
// and a message, so the round trip runs on every input.
#include "fuzz_support.h"
#include "presentation/graphics_setup.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.grs", data, size);
    Model m = fuzz::StartedModel();
    const auto read = [](Model& into, const std::string& p) {
        if (!LoadGraphSetup(into, p)) throw Fault("refused");
    };
    if (fuzz::Takes([&] { read(m, path); })) fuzz::RequireRoundTrip(m, "grs", read, SaveGraphSetup);
    return 0;
}
