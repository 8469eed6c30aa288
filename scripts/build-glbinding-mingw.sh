#!/bin/sh
# Builds glbinding as a static library for Windows from Debian's source package, once, and installs it into PREFIX.
# usage: build-glbinding-mingw.sh WORKDIR PREFIX     (both absolute; needs no root and leaves apt's set-up alone)
set -eu
if [ $# -ne 2 ]; then
    echo "usage: $0 WORKDIR PREFIX" >&2
    exit 2
fi
work=$1
prefix=$2
version=2.1.1-2
here=$(cd "$(dirname "$0")" && pwd)
done_mark=$prefix/.glbinding-$version
[ -e "$done_mark" ] && exit 0

rm -rf "$work"
mkdir -p "$work/parts" "$work/lists/partial" "$work/src" "$prefix"

# Source entries are derived from the machine's own binary entries, in a private apt configuration.
for entry in /etc/apt/sources.list.d/*.sources; do
    [ -e "$entry" ] && sed 's/^Types: .*/Types: deb-src/' "$entry" > "$work/parts/$(basename "$entry")"
done
for entry in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -s "$entry" ] && sed -n 's/^deb /deb-src /p' "$entry" > "$work/parts/from-$(basename "$entry")"
done
set -- -o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$work/parts" -o "Dir::State::Lists=$work/lists"
[ "$(id -u)" -eq 0 ] && set -- "$@" -o APT::Sandbox::User=root
apt-get "$@" update -qq
(cd "$work/src" && apt-get "$@" source -qq --only-source "glbinding=$version")

cmake -S "$work/src/glbinding-${version%-*}" -B "$work/build" -G Ninja -Wno-dev \
    -DCMAKE_TOOLCHAIN_FILE="$here/../cmake/mingw.cmake" \
    -DCMAKE_BUILD_TYPE=None "-DCMAKE_CXX_FLAGS=-O1 -w -ffunction-sections -fdata-sections -ffile-prefix-map=$work=." \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF \
    -DOPTION_BUILD_TESTS=OFF -DOPTION_BUILD_GPU_TESTS=OFF -DOPTION_BUILD_EXAMPLES=OFF -DOPTION_BUILD_DOCS=OFF
cmake --build "$work/build" --target install
cp "$work/src/glbinding-${version%-*}/debian/copyright" "$prefix/copyright"
rm -rf "$work"
touch "$done_mark"
