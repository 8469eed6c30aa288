#!/usr/bin/env bash
# Measures what a frame costs, writes results as JSON into OUT and brings tables and plots of
# docs/performance.md up to date.
# usage: bench.sh BUILD OUT [--quick] [--no-peers] [--no-document] [--seconds=N] [--filter=REGEX]
#   BUILD          build folder with flumo_bench, flumo and the effect
#   --quick        standard scenes at 640x360
#   --no-peers     leaves out other generators of pictures
#   --no-document  measures only
#   --seconds=N    how long a case may repeat itself
#   --filter=REGEX only the benches whose names match, without whole processes and peers
set -euo pipefail
build=$(cd "$1" && pwd)
mkdir -p "$2"
out=$(cd "$2" && pwd)
shift 2
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

quick= peers=yes document=yes processes=yes filter=
name=frames.json
options=()
for option in "$@"; do
    case $option in
        --quick) quick=--quick name=frames-quick.json options+=(--quick) ;;
        --no-peers) peers= ;;
        --no-document) document= ;;
        --seconds=*) options+=("$option") ;;
        --filter=*) filter=${option#*=} processes= peers= ;;
        *)
            echo "bench: unknown option '$option'" >&2
            exit 2
            ;;
    esac
done

export PYTHONDONTWRITEBYTECODE=1
# measure FILTER FILE
measure() {
    "$build/flumo_bench" "${options[@]}" --benchmark_filter="$1" --benchmark_display_aggregates_only=true \
        --benchmark_out="$out/$2" --benchmark_out_format=json
}

measure "${filter:-.}" "$name"
[ -z "$processes" ] || python3 "$root/bench/processes.py" "$build" "$out/processes.json" $quick
[ -z "$processes" ] || "$build/flumo_studio_bench" --out="$out/studio.json"
[ -z "$peers" ] || python3 "$root/bench/peers.py" "$build/flumo" "$out/peers.json"
[ -z "$document" ] || python3 "$root/bench/report.py" "$out" "$root/docs/performance.md"
