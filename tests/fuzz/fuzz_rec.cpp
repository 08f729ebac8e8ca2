// The recreation file (.rec): the rafting policy and the angling parameters.
#include "fuzz_support.h"
#include "recreation/recreation_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("input.rec", data, size);
    Model m = fuzz::StartedModel();
    const auto read = [](Model& into, const std::string& p) {
        ReadRafting(into, p);
        ReadAnglingPars(into, p);
    };
    if (fuzz::Takes([&] { read(m, path); })) fuzz::RequireRoundTrip(m, "rec", read, WriteRecFile);
    return 0;
}
