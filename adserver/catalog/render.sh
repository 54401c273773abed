#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Draws pictures/ from artwork/, some of them also at twice their size.
# Needs librsvg2-bin, webp, libjpeg-turbo-progs, netpbm, fonts-lato.
set -euo pipefail
cd "$(dirname "$0")"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# draw NAME ZOOM PICTURE
draw() {
    local png=$scratch/picture.png
    rsvg-convert --zoom "$2" "artwork/$1.svg" -o "$png"
    case $1 in
        solstice-gardens-320x100 | elaionas-native)  # see-through corners
            cwebp -quiet -q 88 -alpha_q 100 "$png" -o "pictures/$3.webp" ;;
        fellside-trails-728x90 | quillfin-audio-468x60)
            cwebp -quiet -q 92 "$png" -o "pictures/$3.webp" ;;
        *-300x250 | *-native | fellside-trails-*)
            pngtopnm "$png" | cjpeg -quality 92 -sample 1x1 -optimize > "pictures/$3.jpg" ;;
        *)
            mv "$png" "pictures/$3.png" ;;
    esac
}

for drawing in artwork/*.svg; do
    name=$(basename "$drawing" .svg)
    draw "$name" 1 "$name"
done

for name in {harbour-coffee,bluebarrow-bikes}-320x60 {fellside-trails,paperlark-notes}-320x100 \
    {harbour-coffee,fellside-trails}-468x60 {bluebarrow-bikes,solstice-gardens}-300x250 \
    harbour-coffee-728x90; do
    size=${name##*-}
    draw "$name" 2 "${name%-*}-$((2 * ${size%x*}))x$((2 * ${size#*x}))"
done
