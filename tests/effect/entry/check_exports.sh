#!/bin/sh
# usage: check_exports.sh MODULE
# Fails, naming both lists, when the module exports anything but its two entry points.
set -eu
wanted='EffectMain
PluginDataEntryFunction'
found=$(nm --dynamic --defined-only --format=posix "$1" | cut -d' ' -f1 | sort)
[ "$found" = "$wanted" ] || {
    printf 'exported:\n%s\nwanted:\n%s\n' "$found" "$wanted"
    exit 1
}
