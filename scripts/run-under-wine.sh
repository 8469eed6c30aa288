#!/bin/sh
# usage: run-under-wine.sh PROGRAM [ARGUMENTS...]: one program under Wine, with its output and exit status.
# The output goes through a file: the first program to need them starts Wine's background programs, which would hold
# a pipe of the caller's open for as long as they live.
output=$(mktemp)
trap 'rm -f "$output"' EXIT
wine "$@" > "$output" 2>&1 < /dev/null
status=$?
cat "$output"
exit $status
