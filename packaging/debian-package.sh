#!/usr/bin/env bash
# usage: debian-package.sh STAGE VERSION FOLDER: makes Debian packages of an installation below STAGE (bin/, lib/,
# share/), whose files come to /usr: FOLDER/flumo_VERSION_ARCHITECTURE.deb, and where the installation has the window
# flumo-studio_VERSION_ARCHITECTURE.deb, so that a machine without a display needs no Qt. The same files and
# SOURCE_DATE_EPOCH give the same bytes.
set -euo pipefail
stage=$(realpath "$1") version=$2 folder=$(realpath "$3")
: "${SOURCE_DATE_EPOCH:?is not set; ./dev package sets it to the time of the commit}"
export SOURCE_DATE_EPOCH
umask 022
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
architecture=$(dpkg --print-architecture)
mkdir -p "$work/debian"
echo 'Source: flumo' > "$work/debian/control"

# libraries FILE...: the packages of this machine that the files are linked with; the driver is loaded when they run.
libraries() {
    local found
    found=$(cd "$work" && dpkg-shlibdeps -O "${@/#/-e}" 2> "$work/log" | sed -n 's/^shlibs:Depends=//p')
    [ -n "$found" ] || {
        cat "$work/log" >&2
        exit 1
    }
    echo "$found"
}

# build NAME ROOT, with the fields of its own on standard input.
build() {
    local name=$1 root=$2
    mkdir -p "$root/DEBIAN"
    {
        cat <<TEXT
Package: $name
Version: $version
Architecture: $architecture
Maintainer: Velbrand <flumo@velbrand.example>
Section: graphics
Priority: optional
Installed-Size: $(du -sk "$root/usr" | cut -f1)
TEXT
        cat
    } > "$root/DEBIAN/control"
    (cd "$root" && find usr -type f -print0 | sort -z | xargs -0 md5sum > DEBIAN/md5sums)
    find "$root" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
    dpkg-deb --root-owner-group -Zxz --build "$root" "$folder/${name}_${version}_$architecture.deb" > "$work/log"
}

root=$work/flumo
mkdir -p "$root/usr"
cp -a "$stage/." "$root/usr/"
# Debian's places and forms for what it checks.
doc=$root/usr/share/doc/flumo
cat "$doc"/LICENSE* "$doc"/third-party-notices* > "$doc/copyright"
gzip -9n "$root/usr/share/man/man1/flumo.1"
mv "$root/usr/share/zsh/site-functions" "$root/usr/share/zsh/vendor-completions"
find "$root/usr" -name '*.so' -exec chmod 644 {} +

studio=$work/flumo-studio
if [ -e "$root/usr/bin/flumo-studio" ]; then
    mkdir -p "$studio/usr/bin" "$studio/usr/share/doc/flumo-studio"
    mv "$root/usr/bin/flumo-studio" "$studio/usr/bin/"
    for part in applications icons mime; do
        mv "$root/usr/share/$part" "$studio/usr/share/"
    done
    cp "$doc/copyright" "$studio/usr/share/doc/flumo-studio/"
fi

# The program, the module and the plug-ins for video editors.
mapfile -t binaries < <(find "$root/usr/bin" "$root/usr/lib" -type f \( -path '*/bin/*' -o -name '*.so' \) | sort)
build flumo "$root" <<TEXT
Depends: $(libraries "${binaries[@]}"), libgl1-mesa-dri
Recommends: ffmpeg
Suggests: flumo-studio
Description: animated procedural images from a command line
 Flumo renders noise, isolines and gradients with OpenGL, the same pictures as
 the effect of this name in Adobe After Effects: single frames, sequences in
 PNG and OpenEXR, and video. It needs no display.
TEXT
[ ! -d "$studio" ] || build flumo-studio "$studio" <<TEXT
Depends: flumo (= $version), $(libraries "$studio/usr/bin/flumo-studio"), qt6-qpa-plugins
Description: window in which looks of Flumo are made
 Shows a look of Flumo live while its controls, gradients and keyframes are
 edited, keeps looks in folders, and exports stills, sequences and video.
TEXT
