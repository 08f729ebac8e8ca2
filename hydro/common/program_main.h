#pragma once
// The outer shell of both programs: each takes the name of its control file as
// its only argument, and the model reads only the exit status and the output
// file, so any failure becomes one line on stderr and a non-zero status.
#include <functional>
#include <string>

namespace hydro {

// Runs run(argv[1]). Exit status 2 with a usage line when the argument count is
// wrong, 1 with "program: text" when run throws, 0 otherwise.
int RunWithControlFile(const char* program, int argc, char** argv,
                       const std::function<void(const std::string& controlFile)>& run);

}  // namespace hydro
