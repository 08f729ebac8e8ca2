// The one text reader and writer. The first byte picks the mode and the kinds of
// field asked for; the rest is the file. Every text and number the reader takes is
// written again by the writer and read back: texts must come back unchanged and
// numbers with the same number text.
#include <cmath>
#include <variant>
#include <vector>

#include "core/numbers.h"
#include "core/textfile.h"
#include "fuzz_support.h"

namespace {

using Field = std::variant<std::string, double>;

// Whether the writer can give a text back in this mode: quotes and line ends
// cannot be written inside a field, nor blanks and commas between blanks.
bool writable(const std::string& s, osm::TextReader::Mode mode) {
    if (s.find_first_of("\"\r\n") != std::string::npos) return false;
    if (mode == osm::TextReader::Mode::Comma) return true;
    return !s.empty() && s.find_first_of(" \t,") == std::string::npos;
}

// Reads fields of the kinds the control byte cycles through, until the end of the
// file or a refusal.
std::vector<Field> readFields(osm::TextReader& in, uint8_t control) {
    std::vector<Field> kept;
    for (unsigned k = 0; !in.AtEnd() && k < 4096; ++k) {
        switch ((control / 2u + k * (1u + control % 5u)) % 7u) {
            case 0: kept.emplace_back(in.Text("a text")); break;
            case 1: kept.emplace_back(in.Number("a number")); break;
            case 2: in.Int16("a 16-bit integer"); break;
            case 3: in.Int32("a 32-bit integer"); break;
            case 4: in.Flag("a flag"); break;
            case 5: in.Line("a line"); break;
            default: in.Chars(k % 9, "some characters"); break;
        }
    }
    return kept;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    if (size == 0) return 0;
    const auto mode = (data[0] & 1) != 0 ? TextReader::Mode::Blanks : TextReader::Mode::Comma;
    const std::string path = fuzz::WriteInput("input.txt", data + 1, size - 1);
    std::vector<Field> fields;
    fuzz::Takes([&] {
        TextReader in(path, mode);
        fields = readFields(in, data[0]);
    });

    const std::string copy = fuzz::WorkFolder() + "/copy.txt";
    TextWriter out(copy, mode == TextReader::Mode::Comma ? TextWriter::Mode::Comma
                                                         : TextWriter::Mode::Blanks);
    std::vector<Field> written;
    for (const Field& f : fields) {
        if (const auto* s = std::get_if<std::string>(&f)) {
            if (!writable(*s, mode)) continue;
            out.Text(*s);
        } else {
            if (!std::isfinite(std::get<double>(f))) continue;
            out.Number(std::get<double>(f));
        }
        written.push_back(f);
        if (written.size() % 5 == 0) out.EndRecord();
    }
    out.Commit();

    TextReader back(copy, mode);
    for (const Field& f : written) {
        if (const auto* s = std::get_if<std::string>(&f)) {
            const std::string got = back.Text("the text written");
            if (got != *s) fuzz::Finding("text written as [" + *s + "] read back as [" + got + "]");
        } else {
            const std::string want = NumText(std::get<double>(f));
            const std::string got = NumText(back.Number("the number written"));
            if (got != want) fuzz::Finding("number written as " + want + " read back as " + got);
        }
    }
    if (!back.AtEnd()) fuzz::Finding("the writer wrote more than the fields given");
    return 0;
}
