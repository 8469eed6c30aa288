#!/usr/bin/env bash
# usage: windows-tests.sh [CTEST OPTIONS...]
# Runs the tests of the Windows build under Wine, with a display of its own, and compares the frames of the Windows
# module with those of the Linux module. Needs both builds: build/release and build/windows.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
work=$root/build/wine
mkdir -p "$work"

export WINEPREFIX=$work/prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
xvfb=

stop() {
    wineserver -k 2> /dev/null || true
    [ -z "$xvfb" ] || kill "$xvfb" 2> /dev/null || true
}
trap stop EXIT

start_display() {
    local file=$work/display
    : > "$file"
    exec 9> "$file"
    Xvfb -displayfd 9 -screen 0 640x480x24 -nolisten tcp > "$work/xvfb.log" 2>&1 &
    xvfb=$!
    exec 9>&-
    for _ in $(seq 100); do
        [ ! -s "$file" ] || {
            DISPLAY=:$(cat "$file")
            export DISPLAY
            return
        }
        sleep 0.1
    done
    echo "windows-tests: the virtual display did not start; see $work/xvfb.log" >&2
    exit 1
}

# A prefix is made once; the marker tells a finished one from one that was cut off.
make_prefix() {
    [ ! -e "$WINEPREFIX/.ready" ] || return 0
    rm -rf "$WINEPREFIX"
    wine wineboot -i > "$work/wineboot.log" 2>&1 || {
        cat "$work/wineboot.log" >&2
        exit 1
    }
    wineserver -w
    touch "$WINEPREFIX/.ready"
}

# With a window of its own, so that Wine's desktop has the display and stays between the tests.
keep_desktop() {
    coproc keeper { wine build/windows/tests/windows/desktop_keeper.exe 2> /dev/null; }
    local answer
    read -r -t 120 answer <&"${keeper[0]}" && [[ $answer == ready* ]] || {
        echo "windows-tests: Wine cannot make a window on the virtual display" >&2
        exit 1
    }
}

start_display
make_prefix
keep_desktop

rm -rf "$work/linux-frames"
mkdir -p "$work/linux-frames"
build/release/tests/windows/dump_scenes build/release/Flumo.so "$work/linux-frames" > /dev/null
FLUMO_LINUX_FRAMES=$work/linux-frames ctest --test-dir build/windows --output-on-failure -j 2 "$@"
