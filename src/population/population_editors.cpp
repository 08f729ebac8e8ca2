#include "population/population_editors.h"

#include <algorithm>

#include "core/model.h"
#include "core/numbers.h"

namespace osm {

float ShownRcJuv(const Popsubs& ps, int i) { return ps.RcJuv(i) != 0 ? ps.RcJuv(i) : ps.CompK(i); }

void SetRcJuv(Popsubs& ps, int i, float value) {
    const float old = ps.RcJuv(i);
    ps.RcJuv(i) = value;
    if (old > 0) ps.Sejuv(i) = Sng(static_cast<double>(value) / old * ps.Sejuv(i));
}

std::optional<float> HabAxisMax(const Popsubs& ps, int i, int h, int k) {
    if (ps.HabLinked(i, h, k) == 0 || ps.HabMean(i, h, 0) <= 0 || ps.HabScale(i, h, k) <= 0) return std::nullopt;
    return Sng(20.0 / ps.HabScale(i, h, k) * ps.HabMean(i, h, 0));
}

std::vector<ReachMark> HabReachMarks(const Model& m, int i, int h, int k) {
    const Popsubs& ps = m.popsubs;
    std::vector<ReachMark> marks;
    const double mean = ps.HabMean(i, h, 0);
    if (ps.VulSum(i) <= 0 || k != 1 || mean <= 0) return marks;
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) {
        const double z = ps.HabScale(i, h, k) * static_cast<double>(ps.HabReachMean(i, h, r)) / mean;
        marks.push_back({r, Sng(std::max(1.0, std::min(z, 19.0))), std::min(ps.CompRel(r, i), 1.0f)});
    }
    return marks;
}

void SetHabCell(Popsubs& ps, int i, int h, int k, int j, float value) {
    if (ps.HabLinked(i, h, k) == 0) {
        ps.HabLinked(i, h, k) = -1;
        if (ps.HabScale(i, h, k) < 1) ps.HabScale(i, h, k) = NewLinkScale;
    }
    ps.HabCurve(i, h, k, j) = value;
}

void SetHabScale(Popsubs& ps, int i, int h, int k, int cell) {
    ps.HabScale(i, h, k) = static_cast<float>(std::clamp(cell, 1, HabCells));
}

const char* const FoodTypeNames[3] = {"Aquat. insects", "Terr. insects", "Cladophora"};

LinkEditor::LinkEditor(Model& m) : m_(m) {
    Popsubs& ps = m_.popsubs;
    for (int f = 1; f <= 3; ++f) ps.SpName(ps.NSpecies + f) = FoodTypeNames[f - 1];
    index_.redim(Bounds{0, SpeciesRoom}, Bounds{0, SpeciesRoom});
    predSum_.redim(Bounds{0, SpeciesRoom});
    dietSum_.redim(Bounds{0, SpeciesRoom});
    for (int l = 1; l <= ps.NLinks; ++l) {
        predSum_(ps.LinkPrey(l)) += ps.LinkMort(l);
        dietSum_(ps.LinkPred(l)) += ps.LinkDiet(l);
        if (index_(ps.LinkPred(l), ps.LinkPrey(l)) == 0) index_(ps.LinkPred(l), ps.LinkPrey(l)) = static_cast<int16_t>(l);
    }
}

int LinkEditor::Top() const { return m_.popsubs.NSpecies + 3; }

// The pair's link, made when a proportion above 0 is given to a pair with none.
int LinkEditor::linkFor(int pred, int prey, float v) {
    Popsubs& ps = m_.popsubs;
    int l = index_(pred, prey);
    if (l != 0 || v <= 0) return l;
    if (ps.NLinks >= MaxLinks) {
        ShowMessage(m_, "trophic links", "No more than " + NumText(MaxLinks) + " trophic links can be kept; remove one first.");
        return 0;
    }
    l = ps.NLinks + 1;
    ps.NLinks = static_cast<int16_t>(l);
    ps.LinkPred(l) = static_cast<int16_t>(pred);
    ps.LinkPrey(l) = static_cast<int16_t>(prey);
    ps.LinkDiet(l) = 0;
    ps.LinkMort(l) = 0;
    index_(pred, prey) = static_cast<int16_t>(l);
    return l;
}

int LinkEditor::SetMort(int pred, int prey, float v) {
    Popsubs& ps = m_.popsubs;
    const int l = linkFor(pred, prey, v);
    if (l == 0) return 0;
    predSum_(prey) = Sng(static_cast<double>(predSum_(prey)) - ps.LinkMort(l) + v);
    if (predSum_(prey) > 1)
        ShowMessage(m_, "predation proportions",
                    "Predation proportions on prey " + ps.SpName(prey) + " sum to >1.0, REENTER BEFORE RUNNING MODEL");
    ps.LinkMort(l) = v;
    return l;
}

int LinkEditor::SetDiet(int pred, int prey, float v) {
    Popsubs& ps = m_.popsubs;
    const int l = linkFor(pred, prey, v);
    if (l == 0) return 0;
    dietSum_(pred) = Sng(static_cast<double>(dietSum_(pred)) - ps.LinkDiet(l) + v);
    if (dietSum_(pred) > 1)
        ShowMessage(m_, "diet proportions",
                    "Diet proportions for " + ps.SpName(pred) + " sum to >1.0, REENTER BEFORE RUNNING MODEL");
    ps.LinkDiet(l) = v;
    return l;
}

bool LinkEditor::Remove(int pred, int prey) {
    Popsubs& ps = m_.popsubs;
    const int l = index_(pred, prey);
    if (l == 0) return false;
    predSum_(prey) = Sng(static_cast<double>(predSum_(prey)) - ps.LinkMort(l));
    dietSum_(pred) = Sng(static_cast<double>(dietSum_(pred)) - ps.LinkDiet(l));
    index_(pred, prey) = 0;
    for (int n = l; n < ps.NLinks; ++n) {
        ps.LinkPred(n) = ps.LinkPred(n + 1);
        ps.LinkPrey(n) = ps.LinkPrey(n + 1);
        ps.LinkDiet(n) = ps.LinkDiet(n + 1);
        ps.LinkMort(n) = ps.LinkMort(n + 1);
        // A pair listed twice in a file takes its second link once the first is gone.
        int16_t& pair = index_(ps.LinkPred(n), ps.LinkPrey(n));
        if (pair == n + 1 || pair == 0) pair = static_cast<int16_t>(n);
    }
    ps.NLinks = static_cast<int16_t>(std::max(0, ps.NLinks - 1));
    return true;
}

}  // namespace osm
