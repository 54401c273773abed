#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."

usage() {
    cat <<'EOF'
Usage: scripts/test.sh

Builds everything and runs all tests, as CI does, and installs packages that are
missing. It needs neither a display nor a network. The steps, in this order:

  lint       form, spelling, shell scripts, pages about the API
  fuzz       every fuzzer for 5 seconds
  asan       tests under AddressSanitizer and UndefinedBehaviorSanitizer
  tsan       tests under ThreadSanitizer, without Qt
  build      the debug build
  demo       the demo's scenario; its pictures are in build/pictures
  package    apps that use the installed library and the Debian packages
  documents  the code and the commands of the documents
  tests      tests of the debug build

It ends at the first step that fails, and prints how long each step took.
EOF
}

case "${1:-}" in
    "") ;;
    --help) usage; exit ;;
    *) usage >&2; exit 2 ;;
esac

export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software
# One more than there are cores, because some tests wait for most of their time.
CTEST_PARALLEL_LEVEL=$(($(nproc) + 1))
export CTEST_PARALLEL_LEVEL
summary=$(mktemp)
# shellcheck source=scripts/steps.sh
. scripts/steps.sh

# shellcheck disable=SC2317  # the trap calls it
report() {
    print_times
    sed -n '/tests passed/,$p' "$summary"
    rm "$summary"
    print_failed_step
}
trap report EXIT

sanitized() {
    cmake --preset "$1"
    cmake --build --preset "$1"
    ctest --preset "$1"
}

build() {
    cmake --preset dev
    cmake --build --preset dev
}

demos() {
    scripts/demo.sh --headless --out build/pictures
    scripts/demo.sh --game --headless --out build/pictures
    tests/sdl/play-in-window.sh build/release
}

package() {
    scripts/package.sh
    tests/package/run.sh build/dev build/package/packages
}

tests() {
    ctest --preset dev | tee "$summary"
}

step lint scripts/lint.sh --quick
step fuzz scripts/fuzz.sh --short
step asan sanitized asan
step tsan sanitized tsan
step build build
step demo demos
step package package
step documents scripts/check-docs.py
step tests tests
