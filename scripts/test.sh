#!/usr/bin/env bash
# Builds and runs all tests: the fuzzers for a moment, then the others under AddressSanitizer with
# UndefinedBehaviorSanitizer, under ThreadSanitizer, and plain. Before that, what can be seen
# without building.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/lint.sh --quick

# Neither a display nor a graphics card is needed.
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software

echo "== fuzz"
scripts/fuzz.sh --short

for preset in asan tsan dev; do
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
    ctest --preset "$preset" -j "$(nproc)"
done
