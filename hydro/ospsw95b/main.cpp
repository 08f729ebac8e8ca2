// ospsw95b: schedules a month's hourly hydropower releases.
// usage: ospsw95b CONTROL-FILE   (run in the folder that holds the files)
#include <string>

#include "common/program_main.h"
#include "ospsw95b/peakshav_files.h"

int main(int argc, char** argv) {
    return hydro::RunWithControlFile("ospsw95b", argc, argv, [](const std::string& controlFile) {
        const hydro::Control c = hydro::ReadControl(controlFile);
        const hydro::Parameters par = hydro::ReadParameters(c.parFile);
        const hydro::Plant plant = hydro::ReadPlant("ospsw95b.dat");
        const hydro::Problem p = hydro::MakeProblem(c, par, plant);
        const hydro::Schedule s = hydro::SolveSchedule(p);
        hydro::WriteOutput(c.outFile, c, par, p, s);
    });
}
