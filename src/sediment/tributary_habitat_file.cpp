#include "sediment/tributary_habitat_file.h"

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"

namespace osm {

void ReadTrbFile(Model& m, const std::string& path) {
    TextReader in(path, TextReader::Mode::Blanks);
    // The file's own reach range says which blocks follow.
    const int first = in.Int16("the first reach");
    const int last = in.Int16("the last reach");
    if (first < 1 || last > m.main.NReaches || first > last)
        throw FileFault(path, 1, "a reach range within 1 to " + NumText(static_cast<int>(m.main.NReaches)),
                        NumText(first) + " " + NumText(last));
    Morph& mo = m.morph;
    Table1<float> len = mo.TribHabLen;
    Table2<float> index = mo.TribHabIndex;
    Table3<float> curve = mo.TribHabCurve;
    for (int r = first; r <= last; ++r) {
        const std::string reach = " of reach " + NumText(r);
        len(r) = in.Single("the accessible length" + reach);
        for (int c = 1; c <= 3; ++c) {
            const std::string cls = " of habitat class " + NumText(c) + reach;
            index(c, r) = in.Single("the habitat index" + cls);
            for (int j = 0; j <= 20; ++j) curve(c, r, j) = in.Single("curve point " + NumText(j) + cls);
        }
    }
    mo.TribHabIndex = std::move(index);
    mo.TribHabLen = std::move(len);
    mo.TribHabCurve = std::move(curve);
}

void WriteTrbFile(const Model& m, const std::string& path) {
    const Morph& mo = m.morph;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    TextWriter out(path, TextWriter::Mode::Blanks);
    out.Number(first).Number(last);
    out.EndRecord();
    auto line = [&out](float v) {
        out.Number(v);
        out.EndRecord();
    };
    for (int r = first; r <= last; ++r) {
        line(mo.TribHabLen(r));
        for (int c = 1; c <= 3; ++c) {
            line(mo.TribHabIndex(c, r));
            for (int j = 0; j <= 20; ++j) line(mo.TribHabCurve(c, r, j));
        }
    }
    out.Commit();
}

}  // namespace osm
