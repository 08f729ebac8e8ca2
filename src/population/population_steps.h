#pragma once
// The population model of the whole river: initialisation, the three monthly
// steps (habitat, habitat effects, risk) and the annual step; the recruitment
// fitting and the dilution index; the trophic links.
#include <string>

namespace osm {

struct Model;

// PredIdx and PredIdx0 of the three food types = 1 in every reach.
void ResetPredIdx(Model& m);
// Every species on the equilibrium of its parameters and its catch-index shares;
// flag 0 also rebuilds the overlap of the trophic links.
void PopInit(Model& m, int flag);
// PredIdx0 = PredIdx for the food types: the reference of the production steps.
void CopyPredIdx(Model& m);
void PopHabitat(Model& m, int iYear, int iMonth);
void PopEffects(Model& m, int iYear, int iMonth);
void PopRisk(Model& m, int iMonth);
void PopYear(Model& m, int iYear);

// The month of life of species i in calendar month iMonth (1 = its breedtime).
int MonthOfLife(const Model& m, int i, int iMonth);
// Food abundances by reach into ReachBio and Share of the food types; their
// totals (1e-20 + the sum) are returned for the caller to keep as B0 or Biomass.
void FoodTotals(Model& m, bool intoBiomass);

// Recruitment fitting (recruitment_fitting.cpp).
void DilutionIndex(Model& m);
void FitRiskRate(Model& m, int i);
// The fitting block of year 1 for species i, with the habitat sum K3 of the
// annual step.
void FitRecruitment(Model& m, int i, double K3);

// Trophic links (trophic_links.cpp).
void BuildLinks(Model& m, int flag);
void ReachIndices(Model& m, int r);

}  // namespace osm
