// The production parameter file (.bhp).
#include "fuzz_support.h"
#include "production/production_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.bhp", data, size);
    Model m = fuzz::StartedModel();
    if (fuzz::Takes([&] { ReadBhpFile(m, path); }))
        fuzz::RequireRoundTrip(m, "bhp", ReadBhpFile, WriteBhpFile);
    return 0;
}
