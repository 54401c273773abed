#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Measures the library and records what it found in docs/. With --check it compares instead, and
# fails where the library takes a tenth more instructions than recorded; --quick only prints. With
# --game first it measures games on SDL instead.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh

build=$PWD/build/bench
mkdir -p "$build"
(
    cmake --preset release -B "$build" -DBUILD_SHARED_LIBS=OFF -DVEXMORA_BENCHMARKS=ON \
        -DVEXMORA_DEMO=OFF -DVEXMORA_EXAMPLES=OFF -DVEXMORA_INSTALL=OFF -DVEXMORA_TESTS=OFF &&
        cmake --build "$build"
) >"$build/build.log" 2>&1 || {
    cat "$build/build.log" >&2
    exit 1
}
bench=benchmarks/run.py
if [ "${1:-}" = --game ]; then
    bench=benchmarks/game/game.py
    shift
fi
exec python3 -B "$bench" --build "$build" "$@"
