#pragma once
// Starting an external program and waiting for it: no shell (an argument
// vector), a working folder, and a time limit. A program that cannot be found,
// that ends with a non-zero status or a signal, or that outlives its time limit
// is a fault naming it.
#include <chrono>
#include <string>
#include <vector>

namespace osm {

struct ProgramRun {
    std::string program;            // path of the executable
    std::vector<std::string> args;  // arguments after the program name
    std::string workDir;            // the folder it runs in
    std::chrono::milliseconds timeLimit{60000};
    // The program's standard output and error go to this file in workDir
    // (empty: discarded); its last line is quoted when the program fails.
    std::string logFile;
};

void RunProgram(const ProgramRun& run);

// A fault unless the program left its output file.
void RequireOutput(const std::string& program, const std::string& path);

}  // namespace osm
