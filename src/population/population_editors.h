#pragma once
// What the population editors compute and change beyond storing a typed value:
// the compensation ratio that moves the fry survival, the habitat link panels
// (axis, reach marks, cells drawn with the mouse) and the trophic link editor
// with its running sums of proportions.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/table.h"
#include "population/popsubs_module.h"

namespace osm {

struct Model;

// --- Population dynamics parameters.

// The compensation ratio a box shows: RcJuv when set, else CompK, the ratio of
// the last initialisation.
float ShownRcJuv(const Popsubs& ps, int i);
// RcJuv = value; when the old ratio was above 0, Sejuv moves in proportion to
// it (a new ratio of twice the old doubles the fry survival).
void SetRcJuv(Popsubs& ps, int i, float value);

// --- Habitat links: one panel for each variable h and effect k.

inline constexpr int HabPanels = NHabVars * NHabEffects;
// Panel j (0..17) shows variable PanelVar(j) on effect PanelEffect(j); the
// effects of one variable sit side by side.
inline int PanelVar(int j) { return j / NHabEffects + 1; }
inline int PanelEffect(int j) { return j % NHabEffects + 1; }

// The right end of a panel's axis in the variable's own units, 20/HabScale
// times the species' first-year mean; none ("n.a.") when the link is off or
// there is no mean (or no scale) yet.
std::optional<float> HabAxisMax(const Popsubs& ps, int i, int h, int k);

// Where a reach lies on a juvenile capacity curve and how good it proved in
// the year-1 fit.
struct ReachMark {
    int r = 0;
    float cell = 0;    // 1..19
    float height = 0;  // CompRel, at most 1
};
// The marks of every reach on panel (h, k): only effect 1, and only once an
// initialisation has summed the vulnerabilities and a first year the means.
std::vector<ReachMark> HabReachMarks(const Model& m, int i, int h, int k);

// The scale a newly drawn link starts from: the species' mean falls in the
// middle of the curve.
inline constexpr float NewLinkScale = 10;
// Curve cell j (1..20) of a link takes `value`; a link that was off is turned
// on (with NewLinkScale when it had no scale).
void SetHabCell(Popsubs& ps, int i, int h, int k, int j, float value);
// The axis scale of a link: the cell number dragged to, held to 1..20.
void SetHabScale(Popsubs& ps, int i, int h, int k, int cell);

// --- Trophic links.

// The three food types' names, at NSpecies + 1..3.
extern const char* const FoodTypeNames[3];

// The trophic link editor. Opening it names the food types in SpName and sums
// the links' proportions of mortality by prey and of diet by predator; each
// change keeps the sums and the pairs' link numbers up to date and says when a
// sum goes above 1. The sums are the editor's own: PredFree and DietFree, which
// a run in progress reads, keep their meaning until the next initialisation.
class LinkEditor {
public:
    explicit LinkEditor(Model& m);

    // The species and food types, 1..Top().
    int Top() const;
    // The link of a pair, 0 for none.
    int LinkIndex(int pred, int prey) const { return index_(pred, prey); }
    // The running sums: mortality proportions of prey a, diet proportions of predator a.
    float PredSum(int a) const { return predSum_(a); }
    float DietSum(int a) const { return dietSum_(a); }
    // The share of the prey's mortality caused by the predator. A value above 0
    // for a pair with no link adds one; none is added beyond the 200 the file
    // holds (a message says so). Returns the pair's link, 0 for none.
    int SetMort(int pred, int prey, float v);
    // The share of the predator's diet from the prey, in the same way.
    int SetDiet(int pred, int prey, float v);
    // Removes the pair's link, if it has one; the later links move down by one
    // and the running sums lose its proportions.
    bool Remove(int pred, int prey);

private:
    int linkFor(int pred, int prey, float v);
    Model& m_;
    Table2<int16_t> index_{"LinkIndex"};
    Table1<float> predSum_{"PredSum"}, dietSum_{"DietSum"};
};

}  // namespace osm
