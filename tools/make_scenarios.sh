#!/bin/sh
# Makes the scenario files of the default data set with the scenario pipeline:
# for each scenario of data/diurnal_scenarios.txt, osm-batch process-hydro runs
# the hydropower scheduler and the flow router on the flow limits of
# data/hydro/scenarios/NAME.flow and writes NAME.sts. The pipeline works in a
# temporary copy of the folder, so data/ receives only the scenario files.
#
# usage: tools/make_scenarios.sh BUILD-DIR [DATA-DIR]
#   BUILD-DIR holds osm-batch, ospsw95b and USFlow (a CMake build folder).
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=${1:?usage: make_scenarios.sh BUILD-DIR [DATA-DIR]}
data=${2:-$(dirname "$here")/data}
batch="$build/osm-batch"
[ -x "$batch" ] || { echo "make_scenarios: no osm-batch in $build" >&2; exit 1; }
tmp=$(mktemp -d "${TMPDIR:-/tmp}/osm-scenarios.XXXXXX")
trap 'rm -rf "$tmp"' EXIT INT TERM
mkdir -p "$tmp/hydro"
cp "$data/Reaches.csv" "$tmp/"
cp "$data/hydro/caddqd.In" "$data/hydro/ospsw95b.dat" "$tmp/hydro/"
for n in $(tr -d '"\r' < "$data/diurnal_scenarios.txt"); do
    "$batch" --folder "$tmp" process-hydro --from "$data/hydro/scenarios/$n.flow" --out "$n.sts"
    cp "$tmp/$n.sts" "$data/$n.sts"
done
echo "make_scenarios: wrote the scenario files into $data"
