#pragma once
// The vegetation growth test of the vegetation parameter form: cover of each
// type in one slice after complete removal, year by year. The slice steps and
// the yearly step are declared with the other production steps.
#include "core/table.h"

namespace osm {

struct Model;

struct VegPattern {
    Table2<float> cover{"VegPatternCover"};  // (year 0..100, v 1..NVegTypes), proportion
};

// Slice 1 of reach 2 from the cover floor through 100 yearly steps, on a copy of
// the model, so the live cover is never touched.
VegPattern VegPatternTest(const Model& live);

}  // namespace osm
