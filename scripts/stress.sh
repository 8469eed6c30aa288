#!/usr/bin/env bash
# Draws frames of many looks on many threads, in one process after the other, and tells how many of them ended as
# they should and what the threads cost: each process is followed by one that draws the same frames on one
# thread. Then many looks in one process. Needs a build with the benches.
# usage: stress.sh BUILD OUT [--processes=N] [--threads=N] [--frames=N] [--looks=N]
#   BUILD          build folder with flumo_stress and Flumo.so
#   OUT            folder for the measurements, lines of JSON
#   --processes=N  with many threads, 20 by default, each with looks of its own
#   --threads=N    in each of them, 16 by default
#   --frames=N     of all threads of a process together, 3200 by default
#   --looks=N      different looks in the process that watches memory, 500 by default
# Exit status: 0 no process crashed and every frame was right, 1 otherwise, 2 usage.
set -euo pipefail
usage() {
    echo "usage: stress.sh BUILD OUT [--processes=N] [--threads=N] [--frames=N] [--looks=N]" >&2
    exit 2
}
[ $# -ge 2 ] || usage
build=$(cd "$1" && pwd)
mkdir -p "$2"
out=$(cd "$2" && pwd)
shift 2
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

processes=20 threads=16 frames=3200 looks=500
for option in "$@"; do
    case $option in
        --processes=*) processes=${option#*=} ;;
        --threads=*) threads=${option#*=} ;;
        --frames=*) frames=${option#*=} ;;
        --looks=*) looks=${option#*=} ;;
        *)
            echo "stress.sh: unknown option '$option'" >&2
            usage
            ;;
    esac
done

# stress FILE ARGUMENTS...: adds the process's lines, and one with its exit status.
stress() {
    local file=$1 status=0
    shift
    "$build/flumo_stress" "$@" >> "$out/$file" || status=$?
    echo "{\"status\":$status}" >> "$out/$file"
    [ "$status" -eq 0 ] || echo "stress.sh: '$*' ended with status $status" >&2
}

rm -f "$out"/{many,one,looks}.jsonl
for seed in $(seq "$processes"); do
    stress many.jsonl threads "$build/Flumo.so" --threads "$threads" --frames "$frames" --seed "$seed"
    stress one.jsonl threads "$build/Flumo.so" --threads 1 --frames "$frames" --seed "$seed"
done
stress looks.jsonl looks "$build/Flumo.so" --looks "$looks"
PYTHONDONTWRITEBYTECODE=1 python3 "$root/bench/stress_summary.py" "$out"
