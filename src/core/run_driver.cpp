#include "core/run_driver.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/results_store.h"
#include "core/scenario.h"
#include "hydrology/flow_engine.h"
#include "hydrology/river_temperature.h"
#include "population/population_steps.h"
#include "population/reach_populations.h"
#include "production/production_steps.h"
#include "recreation/recreation_steps.h"
#include "sediment/sand_budget.h"

namespace osm {

// The monthly input tables hold 1948..1997; later years reuse that record up to
// 2047, where month index 600 is reached.
constexpr int FirstRecordYear = 48;
constexpr int LastUsableYear = 147;

void RunObserver::PauseSleep() { std::this_thread::sleep_for(std::chrono::milliseconds(100)); }

void SetCalendar(Model& m, int iYear, int iMonth) {
    Main& mn = m.main;
    if (mn.CurYr > LastUsableYear)
        throw Fault("year " + NumText(1900 + mn.CurYr) + " is past " +
                    NumText(1900 + LastUsableYear) +
                    ", the last year the 50-year input record can serve; start earlier or "
                    "simulate fewer years");
    mn.TimeFlags(2) = true;
    mn.TimeFlags(3) = false;
    mn.CumMonth = ToInt16((iYear - 1) * 12.0 + iMonth, "CumMonth");
    if (mn.CurYr <= 97) {
        mn.MonthIdx = static_cast<int16_t>((mn.CurYr - 48) * 12 + iMonth);
        mn.SimYr = mn.CurYr;
    } else {
        mn.MonthIdx = static_cast<int16_t>((mn.CurYr - 98) * 12 + iMonth);
        mn.SimYr = static_cast<int16_t>(mn.CurYr - 50);
    }
    mn.RunYear0 = static_cast<int16_t>(iYear - 1);
}

void ShowProgress(Model& m, RunObserver& obs, int iMonth) {
    const Main& mn = m.main;
    obs.ShowProgress(NumText(mn.CurYr < 98 ? mn.CurYr : mn.SimYr), mn.MonthName(iMonth));
}

void AddOverlaySlot(Model& m) {
    Main& mn = m.main;
    mn.NRuns = mn.Overlay ? static_cast<int16_t>(std::min(mn.NRuns + 1, 1)) : int16_t{0};
}

void WaitWhilePaused(Model& m, RunObserver& obs) {
    while (m.main.Paused) {
        obs.Yield();
        if (!m.main.Paused) break;
        obs.PauseSleep();
    }
}

std::string RunYearsProblem(double startYr, double nYears) {
    const auto whole = [](double v) { return v == static_cast<double>(static_cast<long long>(v)); };
    if (!whole(startYr) || startYr < FirstRecordYear || startYr > LastUsableYear)
        return "The start year must be a whole two-digit year from " + NumText(FirstRecordYear) + " (1948) to " +
               NumText(LastUsableYear) + " (2047).";
    const int most = LastUsableYear - static_cast<int>(startYr) + 1;
    if (!whole(nYears) || nYears < 1 || nYears > most)
        return "The number of years must be a whole number from 1 to " + NumText(most) + ": a run from " +
               NumText(1900 + static_cast<int>(startYr)) + " must end by " + NumText(1900 + LastUsableYear) + ".";
    return "";
}

void PrepareRun(Model& m, RunObserver& obs, int startYr, int nYears) {
    Main& mn = m.main;
    mn.StopRun = false;
    obs.ClearGraphs();
    mn.RunYear0 = 0;
    mn.CumMonth = 0;
    mn.StartYr = ToInt16(startYr, "start year");
    // The whole model spins up on 1993 and 1994 before the run.
    mn.CurYr = mn.PhysOnly ? mn.StartYr : int16_t{93};
    mn.NYears = ToInt16(nYears, "number of years");
    ResetSandStore(m);
    if (!mn.PhysOnly) {
        ResetBenthos(m);
        ResetVeg(m);
        ResetReachPops(m);
    }
}

void SpinUp(Model& m) {
    // Months 541..565 (1993, 1994 and one more kept for symmetry) run on the
    // historical volumes without spikes, then the policy's values come back.
    ResetPredIdx(m);
    Physical& ph = m.physical;
    constexpr int first = 541, last = 565;
    std::array<float, last - first + 1> savedVol{};
    std::array<bool, last - first + 1> savedSpike{};
    for (int i = first; i <= last; ++i) {
        savedVol[i - first] = ph.MonthlyVol(i);
        savedSpike[i - first] = ph.SpikeFlag(i);
        ph.MonthlyVol(i) = ph.SpinVol(i);
        ph.SpikeFlag(i) = false;
    }
    for (int y = 1; y <= 2; ++y) {
        for (int mo = 1; mo <= 12; ++mo) {
            SetCalendar(m, y, mo);
            MonthlyFlows(m, y, mo);
            RiverTemperature(m, mo);
            OxygenStep(m, mo);
            AlgaeDetritusStep(m, mo);
            BenthosStep(m);
        }
        VegYear(m, y);
        m.main.CurYr = static_cast<int16_t>(m.main.CurYr + 1);
    }
    for (int i = first; i <= last; ++i) {
        ph.MonthlyVol(i) = savedVol[i - first];
        ph.SpikeFlag(i) = savedSpike[i - first];
    }
}

void MonthStep(Model& m, RunObserver& obs, int iYear, int iMonth) {
    const bool whole = !m.main.PhysOnly;
    SetCalendar(m, iYear, iMonth);
    ShowProgress(m, obs, iMonth);
    MonthlyFlows(m, iYear, iMonth);
    obs.HourlyPanel();
    RiverTemperature(m, iMonth);
    if (whole) {
        OxygenStep(m, iMonth);
        AlgaeDetritusStep(m, iMonth);
        obs.VegetationPanel(iMonth);
        BenthosStep(m);
        PopHabitat(m, iYear, iMonth);
        PopEffects(m, iYear, iMonth);
        PopRisk(m, iMonth);
    }
    RaftingMonth(m, iMonth);
    StoreResults(m, iYear, iMonth);
    obs.UpdateGraphs(iYear, iMonth);
    if (m.main.ProfileMonth == 0 || m.main.ProfileMonth == iMonth) {
        obs.UpdateMaps(iYear, iMonth);
        obs.UpdateProfiles(iYear, iMonth);
    }
    obs.Yield();
}

void YearStep(Model& m, RunObserver& obs, int iYear) {
    Main& mn = m.main;
    const bool whole = !mn.PhysOnly;
    mn.TimeFlags(3) = true;
    mn.TimeFlags(2) = false;
    if (whole) {
        VegYear(m, iYear);
        obs.SandVegetationPanel();
        ProductionYear(m, iYear);
        if (iYear == 1) {
            // Populations start again from the food and habitat of one simulated year.
            PopInit(m, 1);
            CopyPredIdx(m);
        }
        TroutAngling(m, iYear);
        PopYear(m, iYear);
    }
    StoreResults(m, iYear, 12);
    obs.UpdateGraphs(iYear, 12);
    obs.UpdateMaps(iYear, 12);
    obs.UpdateProfiles(iYear, 13);
    if (mn.AnnPause) {
        mn.Paused = true;
        obs.PausedAtYearEnd();
        WaitWhilePaused(m, obs);
    }
}

void RunModel(Model& m, RunObserver& obs) {
    Main& mn = m.main;
    if (!mn.PhysOnly) {
        VegYear(m, 0);
        SpinUp(m);
        PopInit(m, 0);
    }
    mn.CurYr = mn.StartYr;
    for (int iYear = 1; iYear <= mn.NYears; ++iYear) {
        for (int iMonth = 1; iMonth <= 12; ++iMonth) {
            if (mn.StopRun) return;
            mn.iYear = static_cast<int16_t>(iYear);
            mn.iMonth = static_cast<int16_t>(iMonth);
            MonthStep(m, obs, iYear, iMonth);
        }
        YearStep(m, obs, iYear);
        mn.CurYr = ToInt16(mn.StartYr + iYear, "CurYr");
    }
}

void StartRun(Model& m, RunObserver& obs, int startYr, int nYears) {
    Main& mn = m.main;
    mn.StopRun = false;
    mn.Paused = false;
    PrepareRun(m, obs, startYr, nYears);
    if (mn.Overlay) {
        AddOverlaySlot(m);
        obs.SetupOverlayCurves();
    }
    mn.RunScenario.at(static_cast<size_t>(mn.NRuns)) = ScenarioName(m);
    obs.ResetProfiles();
    try {
        RunModel(m, obs);
    } catch (...) {
        mn.StopRun = true;
        throw;
    }
    mn.StopRun = true;
}

}  // namespace osm
