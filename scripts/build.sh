#!/usr/bin/env bash
# Configures (once) and builds everything into build/, incrementally.
set -euo pipefail
top="$(cd "$(dirname "$0")/.." && pwd)"
bash "$top/scripts/install-deps.sh"
if [ ! -f "$top/build/CMakeCache.txt" ]; then
  cmake -S "$top" -B "$top/build" -DCMAKE_BUILD_TYPE=Release
fi
cmake --build "$top/build" -j "$(nproc)"
