#pragma once
// An output file that appears whole or not at all. The model waits for each
// program's output and reads it as soon as it exists, so the text is written to
// a temporary file beside the target and renamed over it only once complete; a
// writer that fails or is abandoned leaves no temporary file behind and the
// target as it was.
#include <cstdio>
#include <string>

namespace hydro {

class AtomicFile {
public:
    // Opens the temporary file; FileError when it cannot be made.
    explicit AtomicFile(std::string path);
    // Uncommitted: the temporary file is closed and removed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Where the text goes until Commit.
    std::FILE* Stream() const { return f_; }
    // Closes the temporary file and renames it to the target; FileError, with
    // the temporary file removed, when either fails.
    void Commit();

    const std::string& Path() const { return path_; }
    const std::string& TempPath() const { return tmp_; }

private:
    std::string path_;
    std::string tmp_;
    std::FILE* f_ = nullptr;
};

}  // namespace hydro
