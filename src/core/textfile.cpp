#include "core/textfile.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

#include <atomic>
#include <filesystem>
#include <sstream>

#include "core/fault.h"
#include "core/numbers.h"
#include "core/provenance.h"

namespace osm {

namespace fs = std::filesystem;

TextReader::TextReader(const std::string& path, Mode mode) : path_(path), mode_(mode) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw FileFault(path, "cannot open the file (missing or unreadable)");
    InputLog::Note(path);
    std::ostringstream ss;
    ss << in.rdbuf();
    buf_ = ss.str();
}

void TextReader::Fail(std::string_view expected, std::string_view found) const {
    throw FileFault(path_, fieldLine_, std::string(expected), std::string(found));
}

bool TextReader::atLineBreak() const {
    return pos_ < buf_.size() && (buf_[pos_] == '\n' || buf_[pos_] == '\r');
}

void TextReader::consumeLineBreak() {
    if (pos_ < buf_.size() && buf_[pos_] == '\r') ++pos_;
    if (pos_ < buf_.size() && buf_[pos_] == '\n') ++pos_;
    ++line_;
}

void TextReader::skipBlanks() {
    while (pos_ < buf_.size() && (buf_[pos_] == ' ' || buf_[pos_] == '\t')) ++pos_;
}

bool TextReader::AtEnd() const {
    for (size_t i = pos_; i < buf_.size(); ++i) {
        const char c = buf_[i];
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n') return false;
    }
    return true;
}

bool TextReader::AtLineEnd() const {
    for (size_t i = pos_; i < buf_.size(); ++i) {
        const char c = buf_[i];
        if (c == '\r' || c == '\n') return true;
        if (c != ' ' && c != '\t') return false;
    }
    return true;
}

// After a field: blanks, then one comma or one line end.
void TextReader::finishField() {
    skipBlanks();
    if (pos_ < buf_.size() && buf_[pos_] == ',') ++pos_;
    else if (atLineBreak()) consumeLineBreak();
}

std::string TextReader::field(std::string_view what, bool numeric, bool& quoted, bool keepBlanks) {
    quoted = false;
    skipBlanks();
    if (mode_ == Mode::Blanks) {
        // Line ends separate fields like blanks do.
        while (pos_ < buf_.size() && (atLineBreak() || buf_[pos_] == ' ' || buf_[pos_] == '\t')) {
            if (atLineBreak()) consumeLineBreak();
            else ++pos_;
        }
    }
    fieldLine_ = line_;
    if (pos_ >= buf_.size()) Fail(what, "the end of the file");
    if (atLineBreak()) {  // an empty field at the end of a line
        consumeLineBreak();
        return {};
    }
    std::string out;
    if (buf_[pos_] == '"') {
        quoted = true;
        const size_t close = buf_.find('"', pos_ + 1);
        const size_t eol = buf_.find_first_of("\r\n", pos_ + 1);
        if (close == std::string::npos || (eol != std::string::npos && eol < close))
            Fail(std::string(what) + " (a closing quote)", buf_.substr(pos_, std::min<size_t>(40, eol - pos_)));
        out = buf_.substr(pos_ + 1, close - pos_ - 1);
        pos_ = close + 1;
    } else {
        const bool blankEnds = numeric || (mode_ == Mode::Blanks && !keepBlanks);
        size_t end = pos_;
        while (end < buf_.size()) {
            const char c = buf_[end];
            if (c == ',' || c == '\r' || c == '\n') break;
            if (blankEnds && (c == ' ' || c == '\t')) break;
            ++end;
        }
        out = buf_.substr(pos_, end - pos_);
        pos_ = end;
        while (!out.empty() && (out.back() == ' ' || out.back() == '\t')) out.pop_back();
    }
    finishField();
    return out;
}

std::string TextReader::Text(std::string_view what) {
    bool quoted = false;
    return field(what, false, quoted);
}

std::string TextReader::Name(std::string_view what) {
    bool quoted = false;
    return field(what, false, quoted, true);
}

double TextReader::Number(std::string_view what) {
    bool quoted = false;
    const std::string tok = field(what, true, quoted);
    const int line = fieldLine_;
    if (tok.empty()) return 0.0;
    if (tok == "#TRUE#") return -1.0;
    if (tok == "#FALSE#") return 0.0;
    if (!IsNumber(tok)) throw FileFault(path_, line, std::string(what), tok);
    // Every number of the program's files is stored as a single or an integer.
    const double x = Val(tok);
    if (!FitsSingle(x))
        throw FileFault(path_, line, std::string(what) + " (a number within the range of a single, about 3.4E+38)", tok);
    return x;
}

float TextReader::NonNegative(std::string_view what) {
    const float x = Single(what);
    if (x < 0) Fail(std::string(what) + " (0 or more)", NumText(x));
    return x;
}

int16_t TextReader::Int16(std::string_view what) {
    const double x = Number(what);
    const int line = fieldLine_;
    try {
        return ToInt16(x, what);
    } catch (const Fault&) {
        throw FileFault(path_, line, std::string(what) + " (a 16-bit integer)", NumText(x));
    }
}

int32_t TextReader::Int32(std::string_view what) {
    const double x = Number(what);
    const int line = fieldLine_;
    try {
        return ToInt32(x, what);
    } catch (const Fault&) {
        throw FileFault(path_, line, std::string(what) + " (a 32-bit integer)", NumText(x));
    }
}

bool TextReader::Flag(std::string_view what) {
    bool quoted = false;
    const std::string tok = field(what, true, quoted);
    const int line = fieldLine_;
    if (tok == "#TRUE#" || tok == "True" || tok == "TRUE" || tok == "true") return true;
    if (tok == "#FALSE#" || tok == "False" || tok == "FALSE" || tok == "false" || tok.empty())
        return false;
    if (!IsNumber(tok)) throw FileFault(path_, line, std::string(what) + " (#TRUE#, #FALSE# or a number)", tok);
    return Val(tok) != 0.0;
}

std::string TextReader::Line(std::string_view what) {
    fieldLine_ = line_;
    if (pos_ >= buf_.size()) Fail(what, "the end of the file");
    const size_t eol = buf_.find_first_of("\r\n", pos_);
    std::string out = buf_.substr(pos_, eol == std::string::npos ? std::string::npos : eol - pos_);
    pos_ = eol == std::string::npos ? buf_.size() : eol;
    if (atLineBreak()) consumeLineBreak();
    return out;
}

std::string TextReader::Chars(size_t n, std::string_view what) {
    fieldLine_ = line_;
    if (pos_ >= buf_.size()) Fail(what, "the end of the file");
    std::string out;
    while (out.size() < n && pos_ < buf_.size() && !atLineBreak()) out += buf_[pos_++];
    return out;
}

namespace {

constexpr std::string_view TempSuffix = ".saving~";

// A temporary name of its own for each save, so two saves of one file never
// write into the same temporary file: target.<process>.<count>.saving~
std::string temporaryName(const std::string& path) {
    static std::atomic<unsigned> counter{0};
    return path + "." + std::to_string(getpid()) + "." + std::to_string(counter++) + std::string(TempSuffix);
}

// The process id in a temporary name of `target`, or 0 when the name is not one.
pid_t temporaryOwner(const std::string& name, const std::string& target) {
    const std::string head = target + ".";
    if (name.size() <= head.size() + TempSuffix.size() || !name.starts_with(head) || !name.ends_with(TempSuffix))
        return 0;
    const std::string middle = name.substr(head.size(), name.size() - head.size() - TempSuffix.size());
    const size_t dot = middle.find('.');
    if (dot == std::string::npos) return 0;
    const auto digits = [](const std::string& t) {
        return !t.empty() && t.size() <= 9 && t.find_first_not_of("0123456789") == std::string::npos;
    };
    const std::string pid = middle.substr(0, dot);
    return digits(pid) && digits(middle.substr(dot + 1)) ? static_cast<pid_t>(std::stol(pid)) : 0;
}

bool processRuns(pid_t pid) { return kill(pid, 0) == 0 || errno != ESRCH; }

// Temporary files of the target whose writer has ended (killed mid-save).
void removeStaleTemporaries(const std::string& path) {
    const fs::path target(path);
    const fs::path folder = target.parent_path().empty() ? fs::path(".") : target.parent_path();
    const std::string name = target.filename().string();
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const pid_t owner = temporaryOwner(it->path().filename().string(), name);
        if (owner > 0 && !processRuns(owner)) {
            std::error_code ignored;
            fs::remove(it->path(), ignored);
        }
    }
}

// Flushes a file or folder to the disk; false when that fails.
bool syncPath(const std::string& path, bool folder) {
    const int fd = ::open(path.c_str(), O_RDONLY | (folder ? O_DIRECTORY : 0));
    if (fd < 0) return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

}  // namespace

void ReplaceDurably(const std::string& temp, const std::string& target) {
    if (!syncPath(temp, false))
        throw FileFault(target, "cannot write the new file to the disk; the old file is unchanged");
    std::error_code ec;
    fs::rename(temp, target, ec);
    if (ec) throw FileFault(target, "cannot replace the file: " + ec.message());
    const fs::path folder = fs::path(target).parent_path();
    syncPath(folder.empty() ? "." : folder.string(), true);
}

TextWriter::TextWriter(std::string path, Mode mode)
    : path_(std::move(path)), tmp_(temporaryName(path_)), mode_(mode) {
    removeStaleTemporaries(path_);
    out_.open(tmp_, std::ios::binary | std::ios::trunc);
    if (!out_) throw FileFault(path_, "cannot create the file (folder missing or not writable)");
}

TextWriter::~TextWriter() {
    if (!committed_) {
        out_.close();
        std::error_code ec;
        fs::remove(tmp_, ec);
    }
}

void TextWriter::separate() {
    if (inRecord_) out_ << (mode_ == Mode::Comma ? "," : " ");
    inRecord_ = true;
}

TextWriter& TextWriter::Text(std::string_view s) {
    separate();
    if (mode_ == Mode::Comma) out_ << '"' << s << '"';
    else out_ << s;
    return *this;
}

TextWriter& TextWriter::Bare(std::string_view s) {
    separate();
    out_ << s;
    return *this;
}

TextWriter& TextWriter::Number(float x) { return Bare(NumText(x)); }
TextWriter& TextWriter::Number(double x) { return Bare(NumText(x)); }
TextWriter& TextWriter::Number(int x) { return Bare(NumText(x)); }
TextWriter& TextWriter::Flag(bool b) { return Bare(b ? "#TRUE#" : "#FALSE#"); }

void TextWriter::EndRecord() {
    out_ << "\r\n";
    inRecord_ = false;
}

void TextWriter::Line(std::string_view s) {
    if (inRecord_) EndRecord();
    out_ << s << "\r\n";
}

void TextWriter::Finish() {
    if (finished_) return;
    if (inRecord_) EndRecord();
    out_.close();
    if (!out_) throw FileFault(path_, "writing failed (disk full?); the old file is unchanged");
    finished_ = true;
}

void TextWriter::Commit() {
    Finish();
    ReplaceDurably(tmp_, path_);
    committed_ = true;
}

void CommitAll(std::initializer_list<TextWriter*> files) {
    for (TextWriter* f : files)
        if (f) f->Finish();
    for (TextWriter* f : files)
        if (f) f->Commit();
}

}  // namespace osm
