// The population parameter file (.fis).
#include "fuzz_support.h"
#include "population/population_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.fis", data, size);
    Model m = fuzz::StartedModel();
    if (fuzz::Takes([&] { ReadPopFile(m, path); }))
        fuzz::RequireRoundTrip(m, "fis", ReadPopFile, WritePopFile);
    return 0;
}
