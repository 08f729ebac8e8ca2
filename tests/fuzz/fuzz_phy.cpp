// The physical parameters file (.phy).
#include "fuzz_support.h"
#include "sediment/physical_parameters.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.phy", data, size);
    Model m = fuzz::StartedModel();
    if (fuzz::Takes([&] { ReadPhyFile(m, path); }))
        fuzz::RequireRoundTrip(m, "phy", ReadPhyFile, WritePhyFile);
    return 0;
}
