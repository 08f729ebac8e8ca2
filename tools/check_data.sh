#!/bin/sh
# Regenerates the default data set into a temporary folder and compares it
# with data/ byte for byte; then runs the data sanity checks on data/.
# Exits non-zero on any difference or failed check.
set -u
here=$(cd "$(dirname "$0")" && pwd)
repo=$(dirname "$here")
data=${1:-$repo/data}
tmp=$(mktemp -d "${TMPDIR:-/tmp}/osm-data.XXXXXX")
trap 'rm -rf "$tmp"' EXIT INT TERM

python3 "$here/make_data.py" --out "$tmp/data" >/dev/null || {
    echo "check_data: the generator failed" >&2
    exit 1
}
# The scenario files come from the scenario pipeline (tools/make_scenarios.sh),
# not from the generator; the sanity checks below look at them.
skip=""
for n in $(tr -d '"\r' < "$tmp/data/diurnal_scenarios.txt"); do
    skip="$skip -x $n.sts"
done
# shellcheck disable=SC2086
if ! diff -r -q -x '*.qsvw' -x '*.hab' $skip "$tmp/data" "$data"; then
    echo "check_data: data/ differs from the generator's output; run python3 tools/make_data.py" >&2
    exit 1
fi
python3 "$here/check_data_sanity.py" "$data" || exit 1
echo "check_data: data/ matches the generator's output"
