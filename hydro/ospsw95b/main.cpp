// ospsw95b: schedules a month's hourly hydropower releases.
// usage: ospsw95b CONTROL-FILE   (run in the folder that holds the files)
#include <cstdio>
#include <exception>

#include "ospsw95b/peakshav_files.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: ospsw95b CONTROL-FILE\n");
        return 2;
    }
    try {
        const hydro::Control c = hydro::ReadControl(argv[1]);
        const hydro::Parameters par = hydro::ReadParameters(c.parFile);
        const hydro::Plant plant = hydro::ReadPlant("ospsw95b.dat");
        const hydro::Problem p = hydro::MakeProblem(c, par, plant);
        const hydro::Schedule s = hydro::SolveSchedule(p);
        hydro::WriteOutput(c.outFile, c, par, p, s);
    } catch (const hydro::InputError& e) {
        std::fprintf(stderr, "ospsw95b: %s\n", e.text.c_str());
        return 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "ospsw95b: %s\n", e.what());
        return 1;
    }
    return 0;
}
