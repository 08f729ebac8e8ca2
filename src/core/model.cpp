#include "core/model.h"

#include <filesystem>
#include <iostream>

namespace osm {

Model::Model() {
    // Tables of fixed size exist from the start; reach-keyed tables come with the
    // Reach Breaks file.
    main.TimeFlags.redim(Bounds{1, 3});
    main.IndexQ.redim(Bounds{1, 4});
    main.MonthName.redim(Bounds{0, 12});
    main.DaysInMonth.redim(Bounds{0, 12});
    main.FirstSunday.redim(Bounds{0, 12});
    main.SunriseHr.redim(Bounds{0, 12});
    main.SunsetHr.redim(Bounds{0, 12});
    physical.DiurnalName.redim(Bounds{0, 10});
    physical.MonthlyVol.redim(Bounds{0, 600});
    physical.SpinVol.redim(Bounds{541, 565});
    physical.AnnualVol.redim(Bounds{48, 148});
    physical.SpikeFlag.redim(Bounds{0, 600});
    physical.DiurnalCode.redim(Bounds{48, 148});
    physical.ExpTempYr.redim(Bounds{48, 148});
    physical.ChangeVol.redim(Bounds{1, 3});
    physical.ChangeLimit.redim(Bounds{1, 3});
    physical.MaxDailyChange.redim(Bounds{0, 12});
    physical.MinFlowMH.redim(Bounds{0, 12}, Bounds{0, 24});
    physical.VolLevel.redim(Bounds{0, 6});
    physical.PowerVal.redim(Bounds{0, 12}, Bounds{0, 6});
    physical.PowerValNoAction.redim(Bounds{0, 12}, Bounds{0, 6});
    physical.BaseTemp.redim(Bounds{0, 12});
    physical.EqTemp.redim(Bounds{0, 12});
    physical.ExpTemp.redim(Bounds{0, 12});
    sediment.SandDest.redim(Bounds{1, 3});
    sediment.IniPropSliceFull.redim(Bounds{1, 3});
    morph.TribReach.redim(Bounds{1, 2});
    physical.RelSeason.redim(Bounds{0, 0}, Bounds{1, 12});
    AllocateSpeciesTables(popsubs);
    Production& pr = production;
    const Bounds veg{0, MaxVegTypes};
    pr.VegName.redim(veg);
    pr.VegClimax.redim(Bounds{0, 5}, veg);
    for (auto* t : {&pr.VegGrowth, &pr.VegDkill, &pr.VegBug, &pr.VegDet}) t->redim(veg);
    pr.VegWmin.redim(veg);
    pr.VegWmax.redim(veg);
    pr.VegComp.redim(veg, veg);
    pr.VegMort.redim(Bounds{0, 0}, veg);
    pr.FoodName.redim(Bounds{0, MaxIndicatorFoods});
    pr.PopName.redim(Bounds{0, MaxIndicatorPops});
    for (auto* t : {&pr.PopR, &pr.PopS, &pr.PopV, &pr.PopA1, &pr.PopA2, &pr.PopE})
        t->redim(Bounds{0, MaxIndicatorPops});
    pr.PopF.redim(Bounds{0, MaxIndicatorFoods}, Bounds{0, MaxIndicatorPops});
    physical.SeqType.redim(Bounds{1, 3});
    physical.RepYr.redim(Bounds{1, 3});
    for (int i = 1; i <= 3; ++i) physical.SeqType(i) = 1, physical.RepYr(i) = 48;
    graphs.VisForms.redim(Bounds{1, 4});
    graphs.GraphSlot.redim(Bounds{1, 6});
    graphs.MapSlot.redim(Bounds{1, 6});
    graphs.ProfSlot.redim(Bounds{1, 6});
    graphs.YMax.redim(Bounds{1, 2}, Bounds{1, 6});
    graphs.YMin.redim(Bounds{1, 2}, Bounds{1, 6});
    graphs.CXProfile.redim(Bounds{1, 3});
    graphs.VarTime.redim(Bounds{0, 0});
}

void ShowMessage(Model& m, const std::string& kind, const std::string& text,
                 const std::string& title, const std::string& detail) {
    if (m.messages) {
        m.messages->Show(ModelMessage{kind, text, title, detail});
        return;
    }
    std::cerr << (title.empty() ? "" : title + ": ") << text
              << (detail.empty() ? "" : " (" + detail + ")") << "\n";
}

std::string InFolder(const Model& m, const std::string& name) {
    const std::filesystem::path p(name);
    if (p.is_absolute() || m.main.ProgramFolder.empty()) return name;
    return (std::filesystem::path(m.main.ProgramFolder) / p).string();
}

}  // namespace osm
