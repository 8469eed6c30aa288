#!/usr/bin/env bash
# Writes dist/Flumo-<version>-windows-x64.zip from the build build/windows, and dist/flumo-<version>-linux-x64.tar.gz
# and the Debian packages flumo and flumo-studio from build/release. The same commit gives the same bytes: all times are the commit's.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
umask 022
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

pack() {
    local preset=$1 pattern=$2 work=build/$1/package
    rm -rf "$work"
    cpack --config "build/$preset/CPackConfig.cmake" -B "$work" > "build/$preset/package.log" || {
        cat "build/$preset/package.log" >&2
        exit 1
    }
    mkdir -p dist
    mv "$work"/$pattern dist/
    find "$work" -maxdepth 1 -name '*.deb' -exec mv {} dist/ \;
    rm -rf "$work"
}

pack windows 'Flumo-*.zip'
pack release 'flumo-*.tar.gz'
(cd dist && sha256sum Flumo-*-windows-x64.zip flumo-*-linux-x64.tar.gz flumo_*_amd64.deb flumo-studio_*_amd64.deb)
