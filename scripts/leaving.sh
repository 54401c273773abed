#!/usr/bin/env bash
# Exits at least 1,000 times (or as often as the first argument says) with ads at every stage, under
# AddressSanitizer with Qt and under ThreadSanitizer without.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
export QT_QPA_PLATFORM=offscreen

exits=${1:-1000}
exitsPerRun=20
log=$(mktemp)
trap 'rm -f "$log"' EXIT
for preset in asan tsan; do
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target leaving_tests
    repeat=$(((exits + exitsPerRun - 1) / exitsPerRun))
    "build/$preset/bin/leaving_tests" --gtest_brief=1 --gtest_repeat=$repeat >"$log" 2>&1 ||
        { cat "$log"; exit 1; }
    echo "$preset: $((repeat * exitsPerRun)) exits, all of them clean"
done
