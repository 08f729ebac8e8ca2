#!/usr/bin/env bash
# Builds the program and runs it on the default data set in data/: the desktop
# program when there is a display, otherwise a whole-model batch run that writes
# its results dump to results/default.out.
set -euo pipefail
top="$(cd "$(dirname "$0")/.." && pwd)"
bash "$top/scripts/build.sh"
if [ -n "${DISPLAY:-}" ] && [ -x "$top/build/osm" ]; then
  exec "$top/build/osm" "$@"
fi
mkdir -p "$top/results"
"$top/build/osm-batch" --folder "$top/data" --dump "$top/results/default.out" \
  --csv "$top/results/default.csv" "$@"
echo "Results written to $top/results/default.out and $top/results/default.csv"
