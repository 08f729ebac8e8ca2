// The reach breaks file (Reaches.csv).
#include "core/reaches.h"
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("Reaches.csv", data, size);
    Model m = fuzz::StartedModel();
    fuzz::Takes([&] { ReadReachFile(m, path); });
    return 0;
}
