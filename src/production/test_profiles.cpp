#include "production/test_profiles.h"

#include <algorithm>

#include "core/model.h"
#include "core/numbers.h"
#include "hydrology/flow_engine.h"
#include "hydrology/river_temperature.h"
#include "production/production_steps.h"

namespace osm {

namespace {

Profile ProfileOf(const Model& m, const Table1<float>& t) {
    Profile p;
    for (int r = m.main.FirstReach - 1; r <= m.main.LastReach; ++r) {
        p.mile.push_back(m.main.ReachMile(r, 1));
        p.value.push_back(t(r));
    }
    p.max = *std::max_element(p.value.begin(), p.value.end());
    return p;
}

}  // namespace

AlgaeProfiles SetTestFlows(Model& test, double month, double year) {
    const int yearIdx = static_cast<int>(CInt(year - 48 + 1));
    const int mo = static_cast<int>(CInt(month));
    test.main.MonthIdx = ToInt16((yearIdx - 1) * 12.0 + mo, "test month index");
    MonthlyFlows(test, yearIdx, mo);
    return Redrawalgae(test, mo);
}

AlgaeProfiles Redrawalgae(Model& test, int month) {
    AlgaeDetritusStep(test, month);
    BenthosStep(test);
    Production& pr = test.production;
    pr.BenthosEq(test.main.FirstReach - 1) = pr.BaseBenthos;
    return {ProfileOf(test, pr.AlgaeBiomass), ProfileOf(test, pr.DetLabile), ProfileOf(test, pr.DetRefract),
            ProfileOf(test, pr.BenthosEq), ProfileOf(test, pr.BenthosTotal)};
}

Profile RedrawOxygen(Model& test, int month) {
    RiverTemperature(test, month);
    OxygenStep(test, month);
    Production& pr = test.production;
    pr.DO(test.main.FirstReach - 1) = pr.OutflowO2;
    return ProfileOf(test, pr.DO);
}

}  // namespace osm
