#include "common/atomic_file.h"

#include <utility>

#include "common/file_error.h"

namespace hydro {

AtomicFile::AtomicFile(std::string path) : path_(std::move(path)), tmp_(path_ + ".part") {
    f_ = std::fopen(tmp_.c_str(), "wb");
    if (!f_) throw FileError{path_ + ": cannot be written"};
}

AtomicFile::~AtomicFile() {
    if (!f_) return;
    std::fclose(f_);
    std::remove(tmp_.c_str());
}

void AtomicFile::Commit() {
    if (!f_) throw FileError{path_ + ": cannot be written"};
    // Buffered text that cannot be flushed shows only here, at the close.
    const bool closed = std::fclose(f_) == 0;
    f_ = nullptr;
    if (!closed || std::rename(tmp_.c_str(), path_.c_str()) != 0) {
        std::remove(tmp_.c_str());
        throw FileError{path_ + ": cannot be written"};
    }
}

}  // namespace hydro
