#!/usr/bin/env bash
# Builds and runs all tests: plain, under AddressSanitizer with UndefinedBehaviorSanitizer, and
# under ThreadSanitizer. Before that, what can be seen without building.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/lint.sh --quick

# Neither a display nor a graphics card is needed.
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software

for preset in asan tsan dev; do
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
    ctest --preset "$preset" -j "$(nproc)"
done
