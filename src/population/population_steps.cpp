#include "population/population_steps.h"

#include "core/model.h"

namespace osm {

void ResetPredIdx(Model& m) {
    Popsubs& ps = m.popsubs;
    for (int a = ps.NSpecies + 1; a <= ps.NSpecies + 3; ++a)
        for (int r = 1; r <= m.main.NReaches; ++r) {
            ps.PredIdx(a, r) = 1;
            ps.PredIdx0(a, r) = 1;
        }
}
void PopInit(Model&, int /*flag*/) {}
void CopyPredIdx(Model&) {}
void PopHabitat(Model&, int /*iYear*/, int /*iMonth*/) {}
void PopEffects(Model&, int /*iYear*/, int /*iMonth*/) {}
void PopRisk(Model&, int /*iMonth*/) {}
void PopYear(Model&, int /*iYear*/) {}
void ResetReachPops(Model&) {}
void ReadPopFile(Model&, const std::string& /*path*/) {}
void ReadCatchData(Model&, const std::string& /*path*/, const std::string& /*sheet*/,
                   int /*yrFirst*/, int /*yrLast*/) {}
void ReadRainbowData(Model&, const std::string& /*path*/, const std::string& /*sheet*/,
                     int /*yrFirst*/, int /*yrLast*/) {}

}  // namespace osm
