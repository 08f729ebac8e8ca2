#include "sediment/morphology_sheets.h"

#include "core/model.h"

namespace osm {

void ReadTribFlow(Model& m, const std::string& /*workbook*/, const std::string& /*sheet*/) {
    // The conversion is set before anything else reads it, the flow engine included.
    m.morph.MgLPerGFt3 = static_cast<float>(1000.0 / 28.317);
}
void ReadSpateEvents(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadRC90(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadSubstrate(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadFans(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadTribAttributes(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void ReadTrbFile(Model&, const std::string& /*path*/) {}

}  // namespace osm
