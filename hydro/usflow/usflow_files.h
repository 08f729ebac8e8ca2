#pragma once
// The files of USFlow: its control file, the inflow file, the river geometry
// caddqd.In, and the output file.
#include <string>
#include <vector>

#include "common/file_error.h"
#include "usflow/routing.h"

namespace hydro {

// Line 1: run name, inflow file, time step in minutes, river length below the
// dam in miles, geometry file, and a flag; then one output mile a line.
struct RoutingControl {
    std::string runName;
    std::string inflowFile;
    double stepMinutes = 0;
    double lengthMiles = 0;
    std::string geometryFile;
    std::vector<double> outMiles;
};

RoutingControl ReadRoutingControl(const std::string& path);
Geometry ReadGeometry(const std::string& path);
// Lines of time (hours) and flow (m3/s) at equal steps; returns the flows in cfs.
std::vector<double> ReadInflow(const std::string& path, double stepMinutes);
// Lines of time (hours) and the flow at each output mile (m3/s).
void WriteRouted(const std::string& path, const RoutingResult& r, double stepMinutes);

// The file of that name in the folder, or, failing that, the one whose name
// differs only in letter case (the control files name their files in any case).
std::string FindFile(const std::string& name);

// The output name of a control file: usflowON.in gives usflowON.dat.
std::string OutputName(const std::string& controlPath);

inline constexpr double CubicMetresPerCubicFoot = 0.028317;

}  // namespace hydro
