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
"$source/packaging/debian-package.sh" "$dir/stage" "$version" "$dir/a.deb"
"$source/packaging/debian-package.sh" "$dir/stage" "$version" "$dir/b.deb"
cmp "$dir/a.deb" "$dir/b.deb" || fail "the same files gave another package"

# Everything that it depends on is a package that this machine has.
dpkg-deb -f "$dir/a.deb" Depends | tr ',|' '\n\n' | sed 's/(.*//; s/ //g' | while read -r name; do
    dpkg-query -W -f '${Status}' "$name" 2> "$dir/query.log" | grep -q 'ok installed' || fail "depends on $name, which is not here"
done

mkdir -p "$dir/root" "$dir/admin/info" "$dir/admin/updates"
touch "$dir/admin/status" "$dir/admin/available"
package() { dpkg --instdir="$dir/root" --admindir="$dir/admin" --force-not-root --force-depends --log="$dir/log" "$@" > "$dir/dpkg.log" 2>&1 || { cat "$dir/dpkg.log" >&2 && fail "dpkg $*"; }; }
package -i "$dir/a.deb"
flumo=$dir/root/usr/bin/flumo
[ "$("$flumo" --version)" = "flumo $version" ] || fail "another version"
presets=$("$flumo" presets)
[[ $presets == *$'\n'smoke\ * ]] || fail "no presets"
"$flumo" render -q --preset layers --size 64x36 -o "$dir/installed.png"
"$build/flumo" render -q --scene "$source/examples/layers.json" --size 64x36 -o "$dir/built.png"
cmp "$dir/installed.png" "$dir/built.png" || fail "another picture"
zcat "$dir/root/usr/share/man/man1/flumo.1.gz" > "$dir/manual"
grep -q "FLUMO VARIATIONS" "$dir/manual" || fail "no manual page"
for file in bash-completion/completions/flumo zsh/vendor-completions/_flumo fish/vendor_completions.d/flumo.fish \
    doc/flumo/copyright doc/flumo/examples/openjd/flumo.template.json doc/flumo/docs/rendering.md; do
    [ -s "$dir/root/usr/share/$file" ] || fail "no $file"
done
package -P flumo
[ -z "$(find "$dir/root" -type f)" ] || fail "removing it left $(find "$dir/root" -type f | head -1)"
