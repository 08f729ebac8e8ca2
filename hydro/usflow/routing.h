#pragma once
// Unsteady flow routing down the river by the Muskingum-Cunge method with
// variable parameters.
#include <string>
#include <vector>

namespace hydro {

// A cross-section station: field mile, bed slope, and the wetted area and top
// width at each discharge of the geometry's discharge list.
struct Station {
    double mile = 0;
    double slope = 0;
    std::vector<double> area;   // ft2
    std::vector<double> width;  // ft
};

struct Geometry {
    double damMile = 0;             // field mile of the dam, where the inflow enters
    std::vector<double> discharge;  // cfs, rising
    std::vector<Station> stations;  // by rising mile
};

// Kinematic celerity dQ/dA (ft/s) and top width (ft) of a station at flow q.
struct Hydraulics {
    double celerity = 0;
    double width = 0;
};
Hydraulics StationHydraulics(const Geometry& g, const Station& s, double q);

struct RoutingResult {
    std::vector<std::vector<double>> flow;  // (step 1..n, output point), cfs
    double dxMiles = 0;                     // length of a computation reach
    double maxCourant = 0;                  // highest c dt / dx met
};

// Routes an inflow series at the dam (cfs at steps of dtSeconds, value k at time
// k*dt) from the dam to endMile, and returns the flow at each output mile at the
// same steps. The river starts steady at the mean of the first `warmSteps`
// inflows (one day), and that day is routed until its wave has crossed the
// river before the recorded run begins.
RoutingResult RouteFlow(const Geometry& g, double endMile, const std::vector<double>& inflow,
                        double dtSeconds, const std::vector<double>& outMiles, int warmSteps);

}  // namespace hydro
