#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Shows very many ads in one process, a twentieth of them with faults, and counts what came of each
# and what the process holds in the end: scripts/soak.sh [--ads N] [--seed N]
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
export QT_QPA_PLATFORM=offscreen

cmake --preset release -B build/soak -DVEXMORA_TESTS=ON >/dev/null
cmake --build build/soak --target soak
build/soak/bin/soak --ads 100000 "$@"

# A tenth of them, for leaks.
cmake --preset asan >/dev/null
cmake --build --preset asan --target soak
build/asan/bin/soak --ads 10000
