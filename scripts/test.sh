#!/usr/bin/env bash
# Builds and runs all tests. First what can be seen without building and the fuzzers for a moment;
# then the tests under AddressSanitizer with UndefinedBehaviorSanitizer and under ThreadSanitizer;
# then the demo, apps of hosts, built with what was installed and packaged, and what the documents
# say; last the tests as they are.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/lint.sh --quick

# Neither a display nor a graphics card is needed.
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software
CTEST_PARALLEL_LEVEL=$(nproc)
export CTEST_PARALLEL_LEVEL

echo "== fuzz"
scripts/fuzz.sh --short

for preset in asan tsan; do
    echo "== $preset"
    cmake --preset "$preset"
    cmake --build --preset "$preset"
    ctest --preset "$preset"
done

echo "== dev"
cmake --preset dev
cmake --build --preset dev

echo "== demo"
scripts/demo.sh --headless --out build/pictures

echo "== package"
scripts/package.sh
tests/package/run.sh build/dev build/package/packages

echo "== documents"
scripts/check-docs.py

echo "== tests"
ctest --preset dev
