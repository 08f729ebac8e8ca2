// USFlow: routes a dam release down the river.
// usage: USFlow CONTROL-FILE   (run in the folder that holds the files; the
// output, named after the control file with .dat, is written there)
#include <cstdio>
#include <exception>

#include "usflow/usflow_files.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: USFlow CONTROL-FILE\n");
        return 2;
    }
    try {
        const std::string control = hydro::FindFile(argv[1]);
        const hydro::RoutingControl c = hydro::ReadRoutingControl(control);
        const hydro::Geometry g = hydro::ReadGeometry(hydro::FindFile(c.geometryFile));
        const std::vector<double> inflow = hydro::ReadInflow(hydro::FindFile(c.inflowFile), c.stepMinutes);
        const int stepsPerDay = static_cast<int>(24 * 60 / c.stepMinutes);
        const hydro::RoutingResult r = hydro::RouteFlow(g, g.damMile + c.lengthMiles, inflow,
                                                        c.stepMinutes * 60.0, c.outMiles, stepsPerDay);
        hydro::WriteRouted(hydro::OutputName(control), r, c.stepMinutes);
    } catch (const hydro::FileError& e) {
        std::fprintf(stderr, "USFlow: %s\n", e.text.c_str());
        return 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "USFlow: %s\n", e.what());
        return 1;
    }
    return 0;
}
