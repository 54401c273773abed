#!/usr/bin/env bash
# Builds and runs all tests: the fuzzers for a moment, then the others under AddressSanitizer with
# UndefinedBehaviorSanitizer, under ThreadSanitizer, and plain. Before that, what can be seen
# without building.
# Then apps of hosts are built with what was installed and packaged.
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

echo "== package"
scripts/package.sh build/dev >build/dev/package.log 2>&1 || {
    cat build/dev/package.log >&2
    exit 1
}
tests/package/run.sh build/dev build/dev/packages
