#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Plays the game in a real window, on a display of its own that has a mouse: clicks the banner, and
# closes the interstitial that comes after the first level, a minute later.
# usage: play-in-window.sh BUILD_FOLDER
set -euo pipefail
if [ -z "${VEXMORA_GAME_DISPLAY:-}" ]; then
    VEXMORA_GAME_DISPLAY=1 exec xvfb-run -a -s "-screen 0 800x800x24" "$0" "$1"
fi

work=$(mktemp -d)
log=$work/log
# shellcheck disable=SC2016  # the opener expands it
printf '#!/bin/sh\necho "opened $1" >>"%s"\n' "$log" >"$work/xdg-open"
chmod +x "$work/xdg-open"
SDL_VIDEODRIVER=x11 PATH=$work:$PATH "$1/bin/vexmora-game" --autoplay >>"$log" &
game=$!
trap 'kill "$game"; wait "$game" || true; rm -rf "$work"' EXIT

# Waits until the game says so; meanwhile it does, again and again, what else is given.
wait_for() {
    local said=$1
    shift
    for _ in $(seq 600); do
        if grep -qF "$said" "$log"; then
            echo "$said"
            return
        fi
        "${@:-true}"
        sleep 0.5
    done
    cat "$log" >&2
    echo "not said: $said" >&2
    exit 1
}

click() {
    xdotool mousemove --window "$window" "$1" "$2" click 1
}

wait_for "didReceiveAd banner"
window=$(xdotool search --sync --name Brickfall | head -n 1)
wait_for "willLeaveApplication banner" click 180 600
wait_for "opened http"
wait_for "willShowScreen interstitial"
wait_for "willDismissScreen interstitial" click 330 30
wait_for "didDismissScreen interstitial"
