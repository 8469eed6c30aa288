#!/usr/bin/env bash
# usage: render-looks.sh FLUMO FOLDER: renders the looks that the README describes into FOLDER.
set -euo pipefail
flumo=$1
out=$2
mkdir -p "$out"

look() {
    local name=$1
    shift
    "$flumo" render --size 960x540 -o "$out/$name.png" "$@"
    echo "$out/$name.png"
}

look default
look fluid --set Complexity=9 --set Evolution=140 --set Scale=60 \
    --gradient 'Gradient=0:#07123a,0.45:#2f6fd0,0.75:#9fe0ff,1:#ffffff'
look voronoi --set NoiseType=Voronoi --set Complexity=20 --set Evolution=60 --set Speed=100 \
    --gradient 'Gradient=0:#1b0326,0.5:#c3195d,1:#ffd36e'
look smoke --set NoiseType=Smoke --set Complexity=10 --set Scale=40 \
    --gradient 'Gradient=0:#000000,0.5:#4a3b6b,1:#ffe9d0'
look worley --set NoiseType=Worley --set Complexity=6 --set Evolution=40 --set Speed=100 \
    --gradient 'Gradient=0:#02231c,0.6:#16a085,1:#f4ffe0'
look isolines --set Complexity=6 --set Evolution=140 --set Scale=70 \
    --set LinesVisible=on --set LinesCount=14 --set LineWidth=3 \
    --gradient 'Gradient=0:#101820,1:#3a6073' --gradient 'LinesGradient=0:#f2aa4c,1:#ffffff'
look layer-gradient --set ColorizeMode='Gradient From Layer' --set Complexity=8 --set Evolution=140 \
    --set Scale=50 --layer3 "$out/voronoi.png"
look reflection --set ColorizeMode='Reflection From Layer' --set ReflectionScale=4 --set Complexity=8 \
    --set Evolution=140 --set Scale=50 --layer3 "$out/fluid.png"
