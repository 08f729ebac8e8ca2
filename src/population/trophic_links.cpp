// Trophic links: the share of mortality and diet that no link explains, the
// overlap of predator and prey at the start, and the month's predation and
// food indices of a reach.
#include "core/model.h"
#include "core/numbers.h"
#include "population/population_checks.h"
#include "population/population_steps.h"

namespace osm {

void BuildLinks(Model& m, int flag) {
    Popsubs& ps = m.popsubs;
    const int top = ps.NSpecies + 3;
    ps.PredFree.clear();
    ps.DietFree.clear();
    if (flag == 0) {
        ps.Overlap.clear();
        for (int a = 1; a <= top; ++a)
            for (int b = 1; b <= top; ++b) {
                float sum = 0;
                for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r)
                    sum += Sng(static_cast<double>(ps.ReachBio(r, b)) * ps.Share(r, a));
                ps.Overlap(a, b) = sum;
            }
    }
    for (int l = 1; l <= ps.NLinks; ++l) {
        ps.PredFree(ps.LinkPrey(l)) += ps.LinkMort(l);
        ps.DietFree(ps.LinkPred(l)) += ps.LinkDiet(l);
    }
    for (int a = 1; a <= top; ++a) {
        ps.PredFree(a) = Sng(1.0 - ps.PredFree(a) + 1e-10);
        ps.DietFree(a) = Sng(1.0 - ps.DietFree(a) + 1e-10);
        if (ps.PredFree(a) < 0)
            ShowMessage(m, "predation impacts", "predation impacts on species " + NumTextLead(a) + ">1, must reenter");
        if (ps.DietFree(a) < 0)
            ShowMessage(m, "food proportions", "food proportions for species " + NumTextLead(a) + ">1, must reenter");
    }
}

void ReachIndices(Model& m, int r) {
    Popsubs& ps = m.popsubs;
    for (int a = 1; a <= ps.NSpecies + 3; ++a) {
        ps.PredNow(a) = ps.PredFree(a);
        ps.FoodNow(a) = ps.DietFree(a);
    }
    for (int l = 1; l <= ps.NLinks; ++l) {
        const int p = ps.LinkPred(l), q = ps.LinkPrey(l);
        ps.PredNow(q) = Sng(ps.PredNow(q) + static_cast<double>(ps.Share(r, p)) * ps.LinkMort(l) *
                                                PopDiv(m, q, r, ps.Biomass(p), ps.Overlap(q, p), "the overlap of prey and predator"));
        ps.FoodNow(p) = Sng(ps.FoodNow(p) + static_cast<double>(ps.Share(r, q)) * ps.LinkDiet(l) *
                                                PopDiv(m, p, r, ps.Biomass(q), ps.Overlap(p, q), "the overlap of predator and prey"));
    }
}

}  // namespace osm
