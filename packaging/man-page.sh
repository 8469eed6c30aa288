#!/bin/sh
# usage: man-page.sh FLUMO: writes flumo.1, the manual page, to standard output. The words are the program's own help.
set -eu
flumo=$1

help_of() {
    echo .nf
    "$flumo" "$@" --help | sed 's/\\/\\e/g; s/^\([.'"'"']\)/\\\&\1/; s/-/\\-/g'
    echo .fi
}

cat <<TEXT
.TH FLUMO 1 "" "$("$flumo" --version)" "User Commands"
.SH NAME
flumo \- render pictures with the Flumo effect
.SH SYNOPSIS
.B flumo
.I command
.RI [ options ]
.SH DESCRIPTION
TEXT
help_of
for command in render variations scene presets panel controls info check completion; do
    printf '.SH FLUMO %s\n' "$(echo "$command" | tr '[:lower:]' '[:upper:]')"
    help_of "$command"
done
