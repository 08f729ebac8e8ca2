#!/usr/bin/env bash
# Builds the program and its tests with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer (float-cast-overflow included, no recovery) into
# build-asan/, without the benchmarks, and runs every test through CTest. Any
# sanitizer report stops the program that made it, so the test fails.
set -euo pipefail
top="$(cd "$(dirname "$0")/.." && pwd)"
out="$top/build-asan"
bash "$top/scripts/install-deps.sh"
if [ ! -f "$out/CMakeCache.txt" ]; then
  CXX=clang++ cmake -S "$top" -B "$out" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOSM_SANITIZE=ON \
    -DOSM_BUILD_BENCH=OFF
fi
cmake --build "$out" -j "$(nproc)"
cd "$out"
export ASAN_OPTIONS="detect_stack_use_after_return=1:strict_string_checks=1:check_initialization_order=1"
export UBSAN_OPTIONS="print_stacktrace=1"
# Sanitized code runs several times slower: the forms' longest test functions
# (a 100-year run) outlast Qt Test's 300 s watchdog on a busy machine.
export QTEST_FUNCTION_TIMEOUT=1800000
ctest --output-on-failure -j "$(nproc)"
