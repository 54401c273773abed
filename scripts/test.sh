#!/usr/bin/env bash
# Builds and runs all tests. First what can be seen without building and the fuzzers for a moment;
# then the tests under AddressSanitizer with UndefinedBehaviorSanitizer and under ThreadSanitizer;
# then the demo, and apps of hosts, built with what was installed and packaged; last the tests as
# they are.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/lint.sh --quick

# Neither a display nor a graphics card is needed.
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software

build() {
    echo "== $1"
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1"
}

echo "== fuzz"
scripts/fuzz.sh --short

for preset in asan tsan; do
    build "$preset"
    ctest --preset "$preset" -j "$(nproc)"
done

echo "== demo"
scripts/demo.sh --headless --out build/demo-pictures

build dev
echo "== package"
scripts/package.sh build/dev >build/dev/package.log 2>&1 || {
    cat build/dev/package.log >&2
    exit 1
}
tests/package/run.sh build/dev build/dev/packages
ctest --preset dev -j "$(nproc)"
