#include "core/colours.h"

#include <array>
#include <cstddef>

namespace osm {

int32_t QBColor(int n) {
    static constexpr std::array<int32_t, 16> table = {
        RGB(0, 0, 0),       RGB(0, 0, 128),     RGB(0, 128, 0),     RGB(0, 128, 128),
        RGB(128, 0, 0),     RGB(128, 0, 128),   RGB(128, 128, 0),   RGB(192, 192, 192),
        RGB(128, 128, 128), RGB(0, 0, 255),     RGB(0, 255, 0),     RGB(0, 255, 255),
        RGB(255, 0, 0),     RGB(255, 0, 255),   RGB(255, 255, 0),   RGB(255, 255, 255)};
    return n >= 0 && n < 16 ? table[static_cast<std::size_t>(n)] : -1;
}

}  // namespace osm
