#pragma once
// Colours as 32-bit values with red in the low byte.
#include <cstdint>

namespace osm {

constexpr int32_t RGB(int r, int g, int b) { return r + 256 * g + 65536 * b; }
// The 16 standard colours by number; -1 for a number outside 0..15.
int32_t QBColor(int n);

}  // namespace osm
