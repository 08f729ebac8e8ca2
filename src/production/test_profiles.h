#pragma once
// The test profiles of the production parameter form: one test month of the
// flow engine, then the algae, detritus, benthos and oxygen steps, drawn down
// the river. The form runs them on its own copy of the model (`Model test =
// live;`), so a test month never disturbs a run in progress.
#include <vector>

namespace osm {

struct Model;

// One curve over river mile: the row above the first reach (the dam's row with
// the default reaches) and then every reach, each at its downstream mile.
struct Profile {
    std::vector<double> mile;
    std::vector<double> value;
    double max = 0;  // the largest value, for the chart's scale
};

struct AlgaeProfiles {
    Profile algae;        // AlgaeBiomass, "Algae Profile"
    Profile labile;       // DetLabile, "Detritus Profile"
    Profile refractory;   // DetRefract
    Profile benthosEq;    // BenthosEq, "Benthos Profile"; its first point BaseBenthos
    Profile benthos;      // BenthosTotal
};

// Month index of the test time (month and year as the form's boxes give them,
// the year as a calendar year 48..97) and one month of the flow engine there;
// then Redrawalgae. A year before 48 leaves the monthly tables: a fault.
AlgaeProfiles SetTestFlows(Model& test, double month, double year);
// The algae and detritus step and the benthos step of the test month on the
// test model's tables.
AlgaeProfiles Redrawalgae(Model& test, int month);
// The temperature and oxygen steps of the test month; the first point is the
// release's OutflowO2.
Profile RedrawOxygen(Model& test, int month);

}  // namespace osm
