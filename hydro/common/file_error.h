#pragma once
// The one failure both simulator programs report: a file they could not read,
// could not make sense of, or could not write. The text names the file and,
// where there is one, the line; main prints it after the program's name.
#include <string>

namespace hydro {

struct FileError {
    std::string text;
};

}  // namespace hydro
