#pragma once
// Reach-scale indicator populations: one number per population and reach,
// updated once a year from the food of the reach.
#include <string>
#include <vector>

namespace osm {

struct Model;

// PopN = 1 for every population and reach (at the start of a run).
void ResetReachPops(Model& m);
// One year of every population in every reach, from detritus, riparian litter
// and the first two populations; the food is a 16-bit whole number rounded after
// every addition, and a total beyond it stops the run.
void ReachPopYear(Model& m);
// One year of population i in reach r with `food`.
void ReachPopStep(Model& m, int i, int r, double food);

// The 50-year test of population i with the test food fmax and the yearly food
// pattern testFood(1..50): the expected size and the series PopN(i, 1) of the
// years 1..50 before each step, or the message that stops it.
struct TestPopResult {
    std::string message;  // empty when the test ran
    float Neq = 0;
    std::vector<float> series;
};
TestPopResult RunTestPop(Model& m, int i, float fmax, const std::vector<float>& testFood);

}  // namespace osm
