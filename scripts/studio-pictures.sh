#!/usr/bin/env bash
# usage: studio-pictures.sh BUILD: takes the pictures of docs/studio.md without a display.
set -euo pipefail
build=$(cd "$1" && pwd)
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cmake --build "$build" --target Flumo studio_pictures > "$build/studio-pictures.log"
# Settings of its own: those of the user would show.
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home XDG_RUNTIME_DIR=$home
mkdir -p "$root/docs/studio"

# take NAME SCENE [OPTIONS...]
take() {
    "$build/studio_pictures" "$root/examples/$2.json" "$root/docs/studio/$1.png" "${@:3}" > /dev/null
    echo "docs/studio/$1.png"
}

take window lines-over-noise 1280x720
take light islands 1280x720 light
take timeline gradient-keyframes 1280x720 played
