#!/usr/bin/env bash
# Builds and runs the demo. With --headless --out DIR it needs no display and writes pictures.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"

cd "$root"
log=build/release.log
mkdir -p build
if ! { cmake --preset release && cmake --build --preset release --target vexmora-demo vexmora-adserver; } >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
cd "$OLDPWD"
exec "$root/build/release/bin/vexmora-demo" "$@"
