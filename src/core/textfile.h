#pragma once
// The one reader and writer of the program's text files (.grs, .phy, .rec,
// .sts, .exp, Reaches.csv, graphleg.txt, label files, the dump, and the files
// written with blanks). Every reading error names the file, the line, what was
// expected and what was found.
#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>

namespace osm {

class TextReader {
public:
    enum class Mode {
        Comma,   // fields end at commas and line ends; numbers also at blanks
        Blanks,  // blanks, commas and line ends all separate fields
    };

    // A file that cannot be opened is a fault naming it.
    explicit TextReader(const std::string& path, Mode mode = Mode::Comma);

    // True when nothing but blanks and line ends remains.
    bool AtEnd() const;
    // True when the rest of the current line is blank.
    bool AtLineEnd() const;

    // One field. `what` says what was expected, for the message.
    std::string Text(std::string_view what);
    // A text that keeps its blanks and ends at a comma or the line end, whatever
    // the mode (names written bare in files written with blanks).
    std::string Name(std::string_view what);
    double Number(std::string_view what);
    float Single(std::string_view what) { return static_cast<float>(Number(what)); }
    // A single of 0 or more (a flow, a volume, a limit, a count).
    float NonNegative(std::string_view what);
    int16_t Int16(std::string_view what);
    int32_t Int32(std::string_view what);
    // #TRUE# / #FALSE#, or a number (non-zero is True).
    bool Flag(std::string_view what);

    // The rest of the current line, without its line end.
    std::string Line(std::string_view what);
    void SkipLine(std::string_view what) { Line(what); }
    // `n` characters of the current line, the line end not crossed.
    std::string Chars(size_t n, std::string_view what);

    // The line the reader stands on; after the last field of a line, the next one.
    int line() const { return line_; }
    // The line of the last field read.
    int fieldLine() const { return fieldLine_; }
    const std::string& path() const { return path_; }
    [[noreturn]] void Fail(std::string_view expected, std::string_view found) const;

private:
    bool atLineBreak() const;
    void consumeLineBreak();
    void skipBlanks();
    void finishField();
    // Raw field text; `quoted` tells whether it stood in quotes.
    std::string field(std::string_view what, bool numeric, bool& quoted, bool keepBlanks = false);

    std::string path_;
    std::string buf_;
    size_t pos_ = 0;
    int line_ = 1;
    int fieldLine_ = 1;  // line of the last field read: the one an error names
    Mode mode_;
};

// Writes to a temporary file beside the target and renames it over the target on
// Commit, so a failed save never loses the old file. The temporary file is
// flushed to the disk before the rename and the folder after it, so that a crash
// leaves the old file or the new one. Temporary files that an ended program left
// beside the target are removed when the target is next written.
class TextWriter {
public:
    enum class Mode { Comma, Blanks };

    explicit TextWriter(std::string path, Mode mode = Mode::Comma);
    ~TextWriter();
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;

    TextWriter& Text(std::string_view s);   // in double quotes (bare in Blanks mode)
    TextWriter& Bare(std::string_view s);   // as it stands
    TextWriter& Number(float x);
    TextWriter& Number(double x);
    TextWriter& Number(int x);
    TextWriter& Flag(bool b);               // #TRUE# / #FALSE#
    TextWriter& FlagNumber(bool b) { return Number(b ? -1 : 0); }
    void EndRecord();
    void Line(std::string_view s);          // a whole line
    // Writes the temporary file out to the disk; the target is not touched yet.
    void Finish();
    // Finish, then put the file in place of the target.
    void Commit();

    const std::string& path() const { return path_; }

private:
    void separate();

    std::string path_;
    std::string tmp_;
    std::ofstream out_;
    Mode mode_;
    bool inRecord_ = false;
    bool finished_ = false;
    bool committed_ = false;
};

// Commits several files so that a failure before the first rename leaves every
// target as it was: all are written out first, then all are renamed.
void CommitAll(std::initializer_list<TextWriter*> files);

// Renames a finished temporary file over `target` durably: the file's data reach
// the disk before the rename, the folder's entry after it.
void ReplaceDurably(const std::string& temp, const std::string& target);

}  // namespace osm
