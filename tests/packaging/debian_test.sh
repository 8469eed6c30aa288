#!/usr/bin/env bash
# usage: debian_test.sh BUILD SOURCE VERSION: makes the Debian package of a build, installs it into a root of its own,
# renders with what is installed there, and removes it again.
set -euo pipefail
build=$1 source=$2 version=$3
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "debian_test: $*" >&2 && exit 1; }
export SOURCE_DATE_EPOCH=1700000000

cmake --install "$build" --prefix "$dir/stage" --strip > "$dir/install.log"
mkdir "$dir/a" "$dir/b"
for folder in "$dir/a" "$dir/b"; do
    "$source/packaging/debian-package.sh" "$dir/stage" "$version" "$folder"
done
diff -r "$dir/a" "$dir/b" || fail "the same files gave other packages"
packages=("$dir"/a/flumo_"$version"_*.deb)
[ ! -e "$build/flumo-studio" ] || packages+=("$dir"/a/flumo-studio_"$version"_*.deb)

# Everything that it depends on is a package that this machine has.
for package in "${packages[@]}"; do dpkg-deb -f "$package" Depends | tr ',|' '\n\n'; done | sed 's/(.*//; s/ //g' | while read -r name; do
    [ "$name" != flumo ] || continue
    dpkg-query -W -f '${Status}' "$name" 2> "$dir/query.log" | grep -q 'ok installed' || fail "depends on $name, which is not here"
done

mkdir -p "$dir/root" "$dir/admin/info" "$dir/admin/updates"
touch "$dir/admin/status" "$dir/admin/available"
package() { dpkg --instdir="$dir/root" --admindir="$dir/admin" --force-not-root --force-depends --log="$dir/log" "$@" > "$dir/dpkg.log" 2>&1 || { cat "$dir/dpkg.log" >&2 && fail "dpkg $*"; }; }
package -i "${packages[0]}"
[ -z "$(find "$dir/root" -name '*studio*' -not -path '*/doc/*')" ] || fail "flumo itself brings the window"
! dpkg-deb -f "${packages[0]}" Depends | grep -q libqt6 || fail "flumo itself needs Qt"
flumo=$dir/root/usr/bin/flumo
[ "$("$flumo" --version)" = "flumo $version" ] || fail "another version"
presets=$("$flumo" presets)
[[ $presets == *$'\n'smoke\ * ]] || fail "no presets"
"$flumo" render -q --preset layers --size 64x36 -o "$dir/installed.png"
"$build/flumo" render -q --scene "$source/examples/layers.json" --size 64x36 -o "$dir/built.png"
# The files name the layers of their scenes, which lie at other places.
pixels() { ffmpeg -v error -i "$1" -f rawvideo -pix_fmt rgba -; }
cmp <(pixels "$dir/installed.png") <(pixels "$dir/built.png") || fail "another picture"
zcat "$dir/root/usr/share/man/man1/flumo.1.gz" > "$dir/manual"
grep -q "FLUMO VARIATIONS" "$dir/manual" || fail "no manual page"
for file in bash-completion/completions/flumo zsh/vendor-completions/_flumo fish/vendor_completions.d/flumo.fish \
    doc/flumo/copyright doc/flumo/examples/openjd/flumo.template.json doc/flumo/docs/rendering.md; do
    [ -s "$dir/root/usr/share/$file" ] || fail "no $file"
done
if [ ${#packages[@]} -gt 1 ]; then
    package -i "${packages[1]}"
    version_line=$(XDG_RUNTIME_DIR=$dir QT_QPA_PLATFORM=offscreen "$dir/root/usr/bin/flumo-studio" --version)
    [ "$version_line" = "flumo-studio $version" ] || fail "flumo-studio says $version_line"
    for file in applications/flumo-studio.desktop mime/packages/flumo-studio.xml icons/hicolor/256x256/apps/flumo-studio.png \
        doc/flumo-studio/copyright; do
        [ -s "$dir/root/usr/share/$file" ] || fail "no $file"
    done
    grep -q "Qt 6" "$dir/root/usr/share/doc/flumo-studio/copyright" || fail "no notice of Qt"
    package -P flumo-studio
fi
package -P flumo
[ -z "$(find "$dir/root" -type f)" ] || fail "removing it left $(find "$dir/root" -type f | head -1)"
