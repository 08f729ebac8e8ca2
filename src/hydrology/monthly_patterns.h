#pragma once
// The monthly pattern editor's arithmetic: the sediment ratings of the two
// tributaries, and the making of the dam's monthly volumes and the tributaries'
// flows and sediment from the record or from a pattern of twelve months.
#include <array>
#include <string>
#include <vector>

namespace osm {

struct Model;

// How a series is made.
enum SeqKind : int { SeqRecord = 1, SeqPattern = 2, SeqRepeatYear = 3 };

// Sediment ratings of a month's flow q (cfs): sand, or else the fine class.
double Quennased(double q, bool sand);
double TSRsed(double q, int month, bool sand);

// A series' twelve monthly values, index 1..12 (0 unused).
using MonthPattern = std::array<double, 13>;

// The record's values of two-digit year `year` for series i (1 the dam, from the
// sheet and trace in force; 2.. the tributary of TribReach(i - 1), from the
// tributary sheet as read).
MonthPattern GetRepYrData(Model& m, int series, int year);

// The planning traces of riverware.xls ("RunList$": "Nruns", "RunType"): the
// trace's number (its field is "Run" and the number) and its spike size in kcfs.
struct TraceInfo {
    int run = 0;
    int spikeKcfs = 0;
};
std::vector<TraceInfo> ReadRunList(const std::string& workbook);
// A pattern of twelve months as a series' record of every year: the dam's seasonal
// pattern is RelSeason(0), tributary i's RelSeason(i - 1).
MonthPattern SeasonalPattern(const Model& m, int series);

// Loads the dam's record from a sheet (and trace field) of riverware.xls; a
// planning trace also sets the spike size of the trace in force and the field
// of its spike flags.
void LoadReleaseTrace(Model& m, const std::string& sheet, const std::string& field);

// The dam's monthly volumes by kind: the record again (scaled to the pattern in
// years at most MaxRelSeasonAdjust when RelativeSeasonal is on), or the pattern
// in every year of the record.
void ApplyDamSequence(Model& m, int kind, const MonthPattern& pattern);
// Tributary i's flow in its reach by kind: the record as read, or the pattern in
// every month; a pattern of kind 2 brings the sediment of the tributary's rating.
// The running sum TribFlow is rebuilt.
void ApplyTribSequence(Model& m, int series, int kind, const MonthPattern& pattern);

}  // namespace osm
