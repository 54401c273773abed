# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# For scripts that run in steps: sourced by them.
times=()
current=

# Runs a command as the step of that name.
step() {
    current=$1
    local start=$SECONDS
    echo "== $1"
    "${@:2}"
    times+=("$1 $((SECONDS - start))")
    current=
}

print_times() {
    local time
    echo
    for time in "${times[@]}"; do
        printf '%-10s %4d s\n' "${time% *}" "${time#* }"
    done
    printf '%-10s %4d s\n' total "$SECONDS"
}

print_failed_step() {
    [ -z "$current" ] || echo "failed: $current" >&2
}
