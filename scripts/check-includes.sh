#!/usr/bin/env bash
# Includes run one way: each room may include itself and the rooms named after it, nothing else of ours.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# room: rooms it may include (effect_api is open to all but itself has no neighbours)
rules='
effect_api:
effect/identity:effect_api
effect/suites:effect_api
effect/licence:effect_api
effect/gradient:effect_api effect/suites
effect/params:effect_api effect/identity effect/suites effect/gradient
effect/shaders:
effect/gpu:effect_api effect/identity effect/shaders
effect/render:effect_api effect/identity effect/suites effect/licence effect/gradient effect/params effect/gpu
effect/entry:effect_api effect/identity effect/suites effect/licence effect/gradient effect/params effect/gpu effect/render
host:effect_api
cli:effect_api host effect/params/control_table.h
'
failed=0
while IFS=: read -r room allowed; do
    [ -n "$room" ] && [ -d "$room" ] || continue
    while IFS=: read -r file line text; do
        [ -n "$file" ] || continue
        included=$(sed -E 's/.*"([^"]+)".*/\1/' <<< "$text")
        ok=
        for place in "$room" $allowed; do
            [[ $included == "$place" || $included == "$place"/* ]] && ok=yes
        done
        # Generated headers and headers beside the file have no folder in their name.
        [[ $included == */* ]] || ok=yes
        [ -n "$ok" ] || {
            echo "$file:$line: $room may not include $included"
            failed=1
        }
    done < <(grep -rnE '^#include "' --include='*.h' --include='*.cpp' "$room" || true)
done <<< "$rules"
exit $failed
