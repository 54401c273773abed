#!/usr/bin/env bash
# Exits at least 1,000 times (or as often as the first argument says) with ads at every stage, under
# AddressSanitizer with Qt and under ThreadSanitizer without.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
export QT_QPA_PLATFORM=offscreen

exits=${1:-1000}
exitsPerRun=20
for preset in asan tsan; do
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target leaving_tests
    "build/$preset/bin/leaving_tests" --gtest_brief=1 --gtest_throw_on_failure \
        --gtest_repeat=$(((exits + exitsPerRun - 1) / exitsPerRun)) >/dev/null
    echo "$preset: $exits exits, all of them clean"
done
