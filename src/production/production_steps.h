#pragma once
// The production steps: oxygen, light and algae, detritus and benthos, riparian
// vegetation, and the observed production data. Each step works on the tables of
// the month that the flow engine and the temperature step have just filled.
#include <string>

namespace osm {

struct Model;

// Oxygen at the end of each reach (oxygen.cpp).
void OxygenStep(Model& m, int month);
// Light and algae, then the two detritus pools (algae.cpp, detritus.cpp).
void AlgaeDetritusStep(Model& m, int month);
void AlgaeStep(Model& m, int month);
void DetritusStep(Model& m, int month);
// Benthos and drift (benthos.cpp). Shows the benthos message and leaves benthos
// and drift as they are while the parameters imply a negative feeding rate.
void BenthosStep(Model& m);
void ResetBenthos(Model& m);
// Annual production summary with the reach indicator populations; the
// populations' work, a call point until then.
void ProductionYear(Model& m, int iYear);

// Riparian vegetation (riparian_vegetation.cpp). The slice step is called by the
// sand step: Depth is the water over the middle of the slice at the highest
// stage (negative when dry); p is not used.
void VegSliceMonth(Model& m, int r, int s, float Depth, float p);
void VegYear(Model& m, int iYear);
void ResetVeg(Model& m);

// Observed production of the workbook's sheets "Benthos$" and "Drift$", years
// yrFirst..yrLast (production_obs.cpp).
void ReadProductionObs(Model& m, const std::string& workbook, int yrFirst, int yrLast);

// The mortality multiplier of a food type a (species count + 1 aquatic insects,
// + 3 algae) in reach r from the trophic links: (1 - PredFree) * PredIdx /
// PredIdx0 + PredFree, and 1 where PredIdx0 is not above 0 (predation_factor.cpp).
double PredationFactor(const Model& m, int a, int r);

// A step dividing by (or taking the logarithm of) x stops the run when x is 0,
// naming year, month, reach and what was zero (step_checks.cpp).
void CheckNonZero(const Model& m, double x, const char* step, const char* what, int r);

}  // namespace osm
