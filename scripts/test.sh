#!/usr/bin/env bash
# Builds everything and runs every test through CTest.
set -euo pipefail
top="$(cd "$(dirname "$0")/.." && pwd)"
bash "$top/scripts/build.sh"
cd "$top/build"
ctest --output-on-failure -j "$(nproc)"
