#include "core/table.h"

namespace osm {

void ThrowIndexFault(const std::string& name, int dim, int index, Bounds b) {
    throw Fault("index out of bounds: " + name + " index " + std::to_string(dim + 1) + " is " +
                std::to_string(index) + ", bounds " + std::to_string(b.lo) + ".." +
                std::to_string(b.hi));
}

}  // namespace osm
