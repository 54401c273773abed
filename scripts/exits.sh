#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Exits at least 1,000 times (or as often as the first argument says) from anywhere while ads are in
# all states, and as often beside each thing that never returns, under AddressSanitizer with Qt and
# under ThreadSanitizer without.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
export QT_QPA_PLATFORM=offscreen TSAN_OPTIONS=suppressions=$PWD/tests/tsan-suppressions.txt

for preset in asan tsan; do
    fakeDevice=()
    [ "$preset" = asan ] || fakeDevice=(-DVEXMORA_SDL=OFF -DVEXMORA_CAIRO=OFF)
    cmake --preset "$preset" "${fakeDevice[@]}" >/dev/null
    cmake --build --preset "$preset" --target soak
    for place in "" "beside a call that waits" "beside a decoder" \
        "another thread beside a block that waits"; do
        echo "$preset${place:+, $place}: $("build/$preset/bin/soak" --place "$place" --exits "${1:-1000}")"
    done
done
