#pragma once
// Parameter ensembles: a small text file (docs/ensemble_spec.md) names
// parameters of the .phy, .bhp, .fis and .rec files, each with a distribution
// and bounds, the number of runs and a seed. Each run gets its own draw of
// every parameter, written into its copy of the parameter file and loaded by
// that file's own reader, so a value reaches the model exactly as if it stood
// in the file.
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace osm {

struct Model;
struct RunSet;
class TextWriter;

enum class Distribution { Uniform, Normal, LogNormal };

struct EnsembleParameter {
    std::string kind;    // phy, bhp, fis or rec
    std::string target;  // "Name", "Name#k" (k-th value after the name), or "line:field"
    Distribution distribution = Distribution::Uniform;
    double a = 0, b = 0;  // uniform: lowest, highest; normal: mean, sd; lognormal: mu, sigma of the log
    double lo = -std::numeric_limits<double>::infinity();
    double hi = std::numeric_limits<double>::infinity();
    bool whole = false;  // drawn values rounded to whole numbers (bounds still hold)
    std::string label() const { return kind + ":" + target; }
};

struct EnsembleSpec {
    std::string path;
    int runs = 0;
    uint64_t seed = 0;
    std::vector<EnsembleParameter> parameters;
};

// A bad line is a fault naming the file, the line and what was expected.
EnsembleSpec ReadEnsembleSpec(const std::string& path);

// The values of every parameter for every run, [run][parameter]: the same for
// the same spec on any machine. A bounded draw is drawn again until it falls
// within its bounds.
std::vector<std::vector<double>> DrawParameters(const EnsembleSpec& spec);

// The text of a parameter file with the value of `target` replaced by `value`;
// a target the text lacks, or that is not a number, is a fault naming `file`.
std::string SetParameter(const std::string& text, const std::string& target, double value, const std::string& file);

// The parameter files of the spec as they stand in the loaded model, by kind.
std::map<std::string, std::string> ParameterTexts(const Model& m, const EnsembleSpec& spec);

// Puts one run's values into its model: each file of the spec is written with
// its values into `folder` and read back by the file's reader.
void ApplyParameters(Model& m, const EnsembleSpec& spec, const std::map<std::string, std::string>& texts,
                     const std::vector<double>& values, const std::string& folder, size_t run);

// The p-th fraction (0..1) of the values, interpolated linearly between the
// order statistics: x[h] with h = (n - 1) p. NaN values are left out; none
// left gives NaN. Reorders the values.
double Percentile(std::vector<float>& values, double p);

// The 5th, 50th and 95th percentiles of the runs' values at every row, reach
// and month, as a set of three runs named "5th percentile", "median" and
// "95th percentile"; the work is shared among `threads` threads.
RunSet EnsemblePercentiles(const RunSet& runs, int threads);

// run,name,fault, then one column per parameter: the values of each run.
void WriteParametersCsv(const EnsembleSpec& spec, const std::vector<std::vector<double>>& values, const RunSet& runs,
                        TextWriter& out);
// var,set,reach,month,p5,p50,p95 from the set EnsemblePercentiles made; a
// percentile without values is empty.
void WritePercentilesCsv(const RunSet& percentiles, TextWriter& out);

}  // namespace osm
