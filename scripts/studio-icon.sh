#!/usr/bin/env bash
# usage: studio-icon.sh FLUMO: renders the icon of flumo-studio, packaging/studio/icon.json through a round mask, into
# packaging/studio/icons/. What it writes is kept in the repository, so that a build needs no driver.
set -euo pipefail
flumo=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/../packaging/studio"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
side=512
cp icon.json "$work/"
# The effect cuts where the mask's alpha is low: a disc with a margin of one sixteenth.
ffmpeg -v error -f lavfi -i "color=white:size=${side}x$side" -frames:v 1 -vf \
    "format=rgba,geq=r=255:g=255:b=255:a='if(lte(hypot(X-255.5,Y-255.5),224),255,0)'" "$work/icon-mask.png"
"$flumo" render -q --scene "$work/icon.json" --depth 8 -o "$work/icon.png"
mkdir -p icons
for size in 48 128 256; do
    ffmpeg -v error -y -i "$work/icon.png" -vf "scale=$size:$size:flags=area" -bitexact "icons/$size.png"
done
