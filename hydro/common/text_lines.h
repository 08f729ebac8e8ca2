#pragma once
// The input files of both programs are read as whole lines, Windows or Unix
// line ends alike.
#include <string>
#include <vector>

namespace hydro {

// Every line of the file without its line end; FileError when it cannot be
// opened.
std::vector<std::string> ReadLines(const std::string& path);

}  // namespace hydro
