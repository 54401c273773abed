#!/usr/bin/env bash
# Draws pictures/ from artwork/.
# Needs librsvg2-bin, webp, libjpeg-turbo-progs, netpbm, fonts-lato.
set -euo pipefail
cd "$(dirname "$0")"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

for drawing in artwork/*.svg; do
    name=$(basename "$drawing" .svg)
    png=$scratch/$name.png
    rsvg-convert "$drawing" -o "$png"
    case $name in
        solstice-gardens-320x100 | elaionas-native)  # see-through corners
            cwebp -quiet -q 88 -alpha_q 100 "$png" -o "pictures/$name.webp" ;;
        fellside-trails-728x90 | quillfin-audio-468x60)
            cwebp -quiet -q 92 "$png" -o "pictures/$name.webp" ;;
        *-300x250 | *-native | fellside-trails-*)
            pngtopnm "$png" | cjpeg -quality 92 -sample 1x1 -optimize > "pictures/$name.jpg" ;;
        *)
            mv "$png" "pictures/$name.png" ;;
    esac
done
