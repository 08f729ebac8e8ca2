#include "recreation/economic_values.h"

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/workbook.h"

namespace osm {

void ReadEconomic(Model& m, const std::string& path, const std::string& sheet) {
    Database book = OpenWorkbook(path);
    Cursor rows = book.OpenSheet(sheet);
    Rec next = m.rec;
    for (int mo = 1; mo <= 12; ++mo, rows.MoveNext()) {
        if (rows.AtEnd())
            throw Fault(path + ", sheet " + sheet + ": 12 rows of months expected, found " + NumText(mo - 1));
        next.DolDayAng(mo) = rows.Field("Dol_Day_Ang").int16();
        next.DolTrip(1, mo) = rows.Field("Dol_Com_Trp").int16();
        next.DolTrip(2, mo) = rows.Field("Dol_Priv_Trp").int16();
    }
    m.rec = std::move(next);
}

RaftingValue ShowTotals(const Model& m) {
    const Rec& rc = m.rec;
    RaftingValue v;
    // Both commercial types pay the commercial dollars; the third is private and
    // any later type carries no money.
    for (int t = 1; t <= rc.NTripTypes && t <= 3; ++t) {
        const int cls = t <= 2 ? 1 : 2;
        for (int mo = 1; mo <= 12; ++mo) {
            const double value = CInt(static_cast<double>(rc.Launches(t, mo)) * rc.TripPeople(t) *
                                      m.main.DaysInMonth(mo) * rc.DolTrip(cls, mo));
            v.byClass[static_cast<size_t>(cls - 1)] += value;
            v.total += value;
        }
    }
    return v;
}

std::string DollarText(double value) { return Format(value, "$###,###,##0"); }

}  // namespace osm
