#!/usr/bin/env bash
# static-checks.sh BUILD [--deep]: clang-tidy (.clang-tidy) and cppcheck over the product's sources, with the compile
# commands of the build folder. --deep adds clang's analyzer to clang-tidy's checks.
set -euo pipefail
build=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")/.."
checks=()
[ "${2:-}" != --deep ] || checks=('-checks=clang-analyzer-*,-clang-analyzer-optin.performance.Padding')
log=$(mktemp)
trap 'rm -f "$log"' EXIT

run-clang-tidy -p "$build" -quiet -j "$(nproc)" "${checks[@]}" "^$PWD/(effect|host|judge|base|scene|media|job|cli|frei0r|studio)/" > "$log" 2>&1 || {
    # Without colours, commands and counts.
    sed -E 's/\x1b\[[0-9;]*m//g' "$log" | grep -vE '^(clang-tidy|[0-9]+ warnings? generated|Suppressed|$)' >&2
    exit 1
}

# cppcheck 2.10 follows neither string views nor braces that call a constructor: its lifetimes are often none.
cppcheck -j "$(nproc)" --quiet --std=c++20 --language=c++ --enable=warning,performance,portability --inline-suppr --library=qt \
    --suppress=danglingTemporaryLifetime --suppress=returnDanglingLifetime --suppress=invalidLifetime --error-exitcode=1 -I . \
    --template='{file}:{line}: {severity} {id}: {message}' effect host judge base scene media job cli frei0r studio bench
