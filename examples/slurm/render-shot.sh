#!/usr/bin/env bash
# Renders a shot on a Slurm cluster: an array of tasks, one for each chunk of its frames, and a job after them
# that makes the video.
# usage: render-shot.sh SCENE FRAMES CHUNKS FOLDER [SBATCH OPTIONS...]
#   SCENE   a scene file        FRAMES  a list such as 1-100 or 1-100x2
#   CHUNKS  number of tasks     FOLDER  takes frames/, logs/ and shot.mp4
# Every node must see SCENE and FOLDER. Further options are for the tasks: --partition=gpu --gres=gpu:1
# The environment variable FLUMO names the program, FPS the frames per second (25). Prints both job numbers.
# Called again with the same FOLDER it renders what is missing.
set -euo pipefail
[ $# -ge 4 ] || {
    sed -n '2,9s/^# //p' "$0" >&2
    exit 2
}
here=$(cd "$(dirname "$0")" && pwd)
scene=$(realpath "$1") frames=$2 chunks=$3
mkdir -p "$4/frames" "$4/logs"
folder=$(realpath "$4")
shift 4

render=$(sbatch --parsable --job-name=flumo-render --array="1-$chunks" --output="$folder/logs/chunk-%a.txt" "$@" \
    "$here/chunk.sbatch" "$scene" "$frames" "$chunks" "$folder")
render=${render%%;*}
video=$(sbatch --parsable --job-name=flumo-video --dependency="afterok:$render" --kill-on-invalid-dep=yes \
    --output="$folder/logs/video.txt" "$here/video.sbatch" "$folder")
echo "$render ${video%%;*}"
