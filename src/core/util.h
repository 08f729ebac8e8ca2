#pragma once
// Small file helpers shared by the loaders and the forms.
#include <string>

namespace osm {

// True if the file exists.
bool FileExists(const std::string& path);
// The path less its last three characters: "Reaches.csv" -> "Reaches.".
std::string Stem(const std::string& path);

}  // namespace osm
