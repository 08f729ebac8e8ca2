#pragma once
// Provenance of results: the program's version, the run's mode and years, and
// the name and SHA-256 of every input file read, so that any figure can be
// traced to its inputs.
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace osm {

struct Provenance {
    std::string version;  // the program's version
    bool physOnly = false;
    int startYr = 0;      // two-digit year from 1900
    int years = 0;
    std::vector<std::pair<std::string, std::string>> inputs;  // path, SHA-256 in hex
};

std::string ProgramVersion();

// SHA-256 of bytes, and of a file's contents, in lower-case hex. An unreadable
// file is a fault naming it.
std::string Sha256Hex(const std::string& bytes);
std::string FileSha256(const std::string& path);

// The files read on this thread while a log is open: every opening of an input
// file notes its path in the innermost open log of the thread. Logs nest; a
// closing log hands its files to the one it was opened inside, unless it was
// opened to drop them (files of the program's own making).
class InputLog {
public:
    enum Closing { HandOn, Drop };
    explicit InputLog(Closing closing = HandOn);
    ~InputLog();
    InputLog(const InputLog&) = delete;
    InputLog& operator=(const InputLog&) = delete;

    const std::set<std::string>& files() const { return files_; }
    void Add(const std::set<std::string>& files) { files_.insert(files.begin(), files.end()); }
    // Called by the readers: notes an absolute, normal form of the path.
    static void Note(const std::string& path);

private:
    InputLog* outer_;
    Closing closing_;
    std::set<std::string> files_;
};

// The provenance of a run made with the files of `inputs`, each hashed now.
Provenance MakeProvenance(bool physOnly, int startYr, int years, const std::set<std::string>& inputs);

// The provenance as a JSON text, and written beside a result file as
// "<result>.json"; the sidecar replaces an older one only when complete.
std::string ProvenanceJson(const Provenance& p, const std::string& result);
void WriteProvenanceSidecar(const Provenance& p, const std::string& result);

}  // namespace osm
