#!/usr/bin/env bash
# usage: debian-package.sh STAGE VERSION FILE.deb: makes a Debian package of an installation below STAGE (bin/, lib/,
# share/), whose files come to /usr. The same files and SOURCE_DATE_EPOCH give the same bytes.
set -euo pipefail
stage=$(realpath "$1") version=$2 package=$(realpath -m "$3")
: "${SOURCE_DATE_EPOCH:?is not set; ./dev package sets it to the time of the commit}"
export SOURCE_DATE_EPOCH
umask 022
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root
mkdir -p "$root/usr" "$root/DEBIAN" "$work/debian"
cp -a "$stage/." "$root/usr/"
# Debian's places and forms for what it checks.
doc=$root/usr/share/doc/flumo
cat "$doc"/LICENSE* "$doc"/third-party-notices* > "$doc/copyright"
gzip -9n "$root/usr/share/man/man1/flumo.1"
mv "$root/usr/share/zsh/site-functions" "$root/usr/share/zsh/vendor-completions"
find "$root/usr" -name '*.so' -exec chmod 644 {} +

# The libraries that both are linked with, by the packages of this machine; the driver is loaded when it runs.
echo 'Source: flumo' > "$work/debian/control"
libraries=$(cd "$work" && dpkg-shlibdeps -O -e"$root/usr/bin/flumo" -e"$root/usr/lib/flumo/Flumo.so" 2> "$work/log" |
    sed -n 's/^shlibs:Depends=//p')
[ -n "$libraries" ] || {
    cat "$work/log" >&2
    exit 1
}
cat > "$root/DEBIAN/control" <<TEXT
Package: flumo
Version: $version
Architecture: $(dpkg --print-architecture)
Maintainer: Velbrand <flumo@velbrand.example>
Section: graphics
Priority: optional
Installed-Size: $(du -sk "$root/usr" | cut -f1)
Depends: $libraries, libgl1-mesa-dri
Recommends: ffmpeg
Description: animated procedural images from a command line
 Flumo renders noise, isolines and gradients with OpenGL, the same pictures as
 the effect of this name in Adobe After Effects: single frames, sequences in
 PNG and OpenEXR, and video. It needs no display.
TEXT
(cd "$root" && find usr -type f -print0 | sort -z | xargs -0 md5sum > DEBIAN/md5sums)
find "$root" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
dpkg-deb --root-owner-group -Zxz --build "$root" "$package" > "$work/log"
