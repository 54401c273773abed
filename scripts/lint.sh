#!/usr/bin/env bash
# Checks the style of the C++ code: formatting, then clang-tidy with the warnings of a clang build.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh

command -v clang-format >/dev/null && command -v clang-tidy >/dev/null || {
    echo "lint.sh needs clang-format and clang-tidy" >&2
    exit 2
}
git ls-files -- '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
cmake --preset tidy >/dev/null
cmake --build --preset tidy
