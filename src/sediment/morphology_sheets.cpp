#include "sediment/morphology_sheets.h"

#include "core/fault.h"
#include "core/model.h"
#include "core/reaches.h"
#include "core/workbook.h"

namespace osm {

void ReadTribFlow(Model& m, const std::string& /*workbook*/, const std::string& /*sheet*/) {
    // The conversion is set before anything else reads it, the flow engine included.
    m.morph.MgLPerGFt3 = static_cast<float>(1000.0 / 28.317);
}
void ReadSpateEvents(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadRC90(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadSubstrate(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadFans(Model& m, const std::string& workbook, const std::string& sheet) {
    Database db = OpenWorkbook(workbook);
    Cursor c = db.OpenSheet(sheet);
    Morph next = m.morph;
    next.NTrib = 0;
    next.TribReach.clear();
    for (int row = 2; !c.AtEnd(); ++row, c.MoveNext()) {
        const int r = ReachOfMileInclusive(m, c.Field("OSD_Mile").number());
        if (next.NTrib == next.TribReach.hi())
            throw FileFault(workbook + ", sheet " + sheet, row, "at most two sediment-bearing tributaries",
                            c.Field("TribName").text());
        next.TribName(r) = c.Field("TribName").text();
        ++next.NTrib;
        next.TribReach(next.NTrib) = static_cast<int16_t>(r);
    }
    m.morph = std::move(next);
}
void ReadTribAttributes(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadTrbFile(Model&, const std::string& /*path*/) {}

}  // namespace osm
