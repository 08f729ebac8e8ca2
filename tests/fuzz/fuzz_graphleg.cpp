// The graph table (graphleg.txt).
#include "fuzz_support.h"
#include "presentation/graph_table.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string path = fuzz::WriteInput("graphleg.txt", data, size);
    Model m = fuzz::StartedModel();
    fuzz::Takes([&] { LoadGraphTable(m, path); });
    return 0;
}
