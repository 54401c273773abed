#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds and runs the demo, with --game the game instead. With --headless --out DIR it needs no
# display and writes pictures.
set -euo pipefail
root=$(CDPATH='' cd "$(dirname "$0")/.." && pwd)
demo=vexmora-demo
if [ "${1:-}" = --game ]; then
    demo=vexmora-game
    shift
fi
"$root/scripts/setup.sh" build

build=$root/build/release
mkdir -p "$build"
[ -x "$build/bin/$demo" ] || echo "Building the demo for the first time takes a few minutes." >&2
echo "Building (log: $build/build.log)" >&2
(
    cd "$root"
    cmake --preset release && cmake --build --preset release --target "$demo" vexmora-adserver
) >"$build/build.log" 2>&1 || {
    cat "$build/build.log" >&2
    exit 1
}
echo "Running $build/bin/$demo" >&2
exec "$build/bin/$demo" "$@"
