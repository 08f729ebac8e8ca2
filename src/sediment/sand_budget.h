#pragma once
// The sand budget by reach, storage zone and slice.
namespace osm {

struct Model;

void SandStep(Model& m, int r, int month, float p, float Q, float StageHi, float QHi);
void ResetSandStore(Model& m);

}  // namespace osm
