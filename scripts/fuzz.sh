#!/usr/bin/env bash
# Builds the libFuzzer harnesses of tests/fuzz (clang, AddressSanitizer and
# UndefinedBehaviorSanitizer) into build-fuzz/ and runs each in turn for SECONDS
# (default 60), one at a time. The corpora grow in build-fuzz/corpus/<harness>,
# seeded from the default data set; crashing inputs go to build-fuzz/findings/.
#
#   scripts/fuzz.sh [SECONDS] [--keep-going] [HARNESS...]
#
# Without --keep-going a harness stops at its first finding and the script fails
# at the end if any harness found something. With it, each harness runs its whole
# time and every finding is saved (libFuzzer's fork mode, one job).
set -euo pipefail
top="$(cd "$(dirname "$0")/.." && pwd)"
out="$top/build-fuzz"
seconds=60
keep_going=0
only=()
for a in "$@"; do
  case "$a" in
    --keep-going) keep_going=1 ;;
    [0-9]*) seconds="$a" ;;
    *) only+=("fuzz_$a") ;;
  esac
done

if [ ! -f "$out/CMakeCache.txt" ]; then
  CXX=clang++ cmake -S "$top" -B "$out" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOSM_FUZZ=ON \
    -DOSM_BUILD_GUI=OFF -DOSM_BUILD_TESTS=OFF -DOSM_BUILD_BENCH=OFF
fi
cmake --build "$out" -j "$(nproc)" --target osm_fuzz

# The seeds of each harness: files of the default data set.
d="$top/data"
seeds() {
  case "$1" in
    fuzz_phy) echo "$d/default.phy" ;;
    fuzz_trb) echo "$d/default.trb" ;;
    fuzz_exp) echo "$d/default.exp" ;;
    fuzz_sts) echo "$d/noaction.sts" ;;
    fuzz_rec) echo "$d/default.rec" ;;
    fuzz_grs) echo "$d/default.grs" ;;
    fuzz_bhp) echo "$d/default.bhp" ;;
    fuzz_fis) echo "$d/default.fis" ;;
    fuzz_reaches) echo "$d/Reaches.csv" ;;
    fuzz_graphleg) echo "$d/graphleg.txt" ;;
    fuzz_sheet) echo "$d"/physical.xls/{Economic,Eddy_Storage,Fans,OSDEqTemp,TribAttributes}.csv \
                     "$d/riverware.xls/Historical.csv" ;;
  esac
}

mkdir -p "$out/findings" "$out/tmp"
failed=()
for harness in "$out"/fuzz/fuzz_*; do
  name="$(basename "$harness")"
  if [ ${#only[@]} -gt 0 ] && [[ ! " ${only[*]} " =~ " $name " ]]; then continue; fi
  corpus="$out/corpus/$name"
  if [ ! -d "$corpus" ]; then
    mkdir -p "$corpus"
    for s in $(seeds "$name"); do cp "$s" "$corpus/"; done
    if [ "$name" = fuzz_textfile ]; then
      # The first byte picks the mode: even for commas, odd for blanks.
      { printf 'A'; cat "$d/Reaches.csv"; } > "$corpus/reaches"
      { printf 'B'; cat "$d/default.trb"; } > "$corpus/trb"
      { printf 'D'; cat "$d/default.rec"; } > "$corpus/rec"
    fi
  fi
  options=(-max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -print_final_stats=1
           -artifact_prefix="$out/findings/$name-")
  [ "$keep_going" -eq 1 ] && options+=(-fork=1 -ignore_crashes=1 -ignore_ooms=1 -ignore_timeouts=1)
  echo "== $name: $seconds s"
  status=0
  OSM_FUZZ_TMP="$out/tmp" "$harness" "${options[@]}" "$corpus" > "$out/$name.log" 2>&1 || status=$?
  grep -E '^(FINDING|SUMMARY|==[0-9]+==ERROR|stat::number_of_executed_units|Done [0-9]+ runs)' \
    "$out/$name.log" || true
  [ "$status" -eq 0 ] || failed+=("$name")
done

if [ ${#failed[@]} -gt 0 ]; then
  echo "findings in: ${failed[*]} (inputs in $out/findings, logs in $out/<harness>.log)"
  exit 1
fi
