#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fuzzes what reads bytes that others wrote: every target of tests/fuzz, or the given ones, for ten
# minutes each; with --smoke for 30 seconds, with --short for 5. Two run at a time. What was found
# lies in build/fuzz/findings, what is worth starting from next time in build/fuzz/corpus.
#     scripts/fuzz.sh [--smoke | --short] [TARGET...]
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh

export seconds=600
case "${1:-}" in
    --smoke) seconds=30; shift ;;
    --short) seconds=5; shift ;;
esac
targets=("$@")
[ $# -gt 0 ] || mapfile -t targets < <(ls tests/fuzz/corpus)

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
mkdir -p build/fuzz/logs
rm -rf build/fuzz/findings

# First the whole corpus is replayed, which holds what was found earlier.
# shellcheck disable=SC2317  # xargs calls it
fuzz() {
    local target=$1
    local seeds=tests/fuzz/corpus/$target dictionary=tests/fuzz/dictionaries/$target.dict
    local grown=build/fuzz/corpus/$target findings=build/fuzz/findings/$target
    local log=build/fuzz/logs/$target.log
    mkdir -p "$grown" "$findings"
    local options=(-max_total_time="$seconds" -timeout=30 -print_final_stats=1)
    options+=(-artifact_prefix="$findings/")
    [ ! -f "$dictionary" ] || options+=(-dict="$dictionary")
    build/fuzz/bin/fuzz_"$target" "${options[@]}" "$grown" "$seeds" >"$log" 2>&1 && return
    tail -n 40 "$log" >&2
    return 1
}
export -f fuzz
status=0
printf '%s\n' "${targets[@]}" | xargs -P 2 -I{} bash -c 'fuzz {}' || status=1

echo "| date | target | executions | minutes | findings |"
echo "|---|---|---|---|---|"
for target in "${targets[@]}"; do
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "build/fuzz/logs/$target.log")
    minutes=$(awk "BEGIN { printf \"%.1f\", $seconds / 60 }")
    findings=$(find "build/fuzz/findings/$target" -type f | wc -l)
    echo "| $(date +%F) | $target | ${executions:-0} | $minutes | $findings |"
done
exit $status
