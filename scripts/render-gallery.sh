#!/usr/bin/env bash
# usage: render-gallery.sh FLUMO: renders every scene of examples/ into docs/gallery/, small.
# Scenes that move give three of their frames.
set -euo pipefail
flumo=$1
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
declare -A frames=([loop]=0,32,64 [gradient-keyframes]=0,24,48)

for scene in "$root"/examples/*.json; do
    name=$(basename "$scene" .json)
    "$flumo" render --scene "$scene" --size 400x225 --frames "${frames[$name]:-0}" \
        -o "$root/docs/gallery/$name${frames[$name]:+.##}.png"
    echo "docs/gallery/$name"
done
