// USFlow: routes a dam release down the river.
// usage: USFlow CONTROL-FILE   (run in the folder that holds the files; the
// output, named after the control file with .dat, is written there)
#include <string>
#include <vector>

#include "common/program_main.h"
#include "usflow/usflow_files.h"

int main(int argc, char** argv) {
    return hydro::RunWithControlFile("USFlow", argc, argv, [](const std::string& controlFile) {
        const std::string control = hydro::FindFile(controlFile);
        const hydro::RoutingControl c = hydro::ReadRoutingControl(control);
        const hydro::Geometry g = hydro::ReadGeometry(hydro::FindFile(c.geometryFile));
        const std::vector<double> inflow = hydro::ReadInflow(hydro::FindFile(c.inflowFile), c.stepMinutes);
        const int stepsPerDay = static_cast<int>(24 * 60 / c.stepMinutes);
        const hydro::RoutingResult r = hydro::RouteFlow(g, g.damMile + c.lengthMiles, inflow,
                                                        c.stepMinutes * 60.0, c.outMiles, stepsPerDay);
        hydro::WriteRouted(hydro::OutputName(control), r, c.stepMinutes);
    });
}
