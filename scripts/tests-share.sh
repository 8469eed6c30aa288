#!/usr/bin/env bash
# Prints the share of the tests in all lines of code, and fails above the limit: code lines of C++, GLSL, Python and
# shell as cloc counts them, what lies in tests/ over everything.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
limit=30

# count PATHSPEC...: lines of code of the tracked files.
count() {
    git ls-files -- "$@" | cloc --quiet --csv --list-file=- \
        --include-lang='C++,C/C++ Header,GLSL,Python,Bourne Shell,Bourne Again Shell' |
        awk -F, '$2 == "SUM" {print $5}'
}

tests=$(count tests)
all=$(count .)
awk -v tests="$tests" -v all="$all" -v limit="$limit" 'BEGIN {
    share = 100 * tests / all
    printf "tests: %d of %d lines of code, %.1f %%; at most %d %%\n", tests, all, share, limit
    exit share > limit
}'
