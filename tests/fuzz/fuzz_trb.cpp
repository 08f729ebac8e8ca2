// The tributary habitat file (.trb).
#include "fuzz_support.h"
#include "sediment/tributary_habitat_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.trb", data, size);
    Model m = fuzz::StartedModel();
    if (fuzz::Takes([&] { ReadTrbFile(m, path); }))
        fuzz::RequireRoundTrip(m, "trb", ReadTrbFile, WriteTrbFile);
    return 0;
}
