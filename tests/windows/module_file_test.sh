#!/bin/sh
# usage: module_file_test.sh MODULE OBJDUMP
# Exports, imports and resources of the finished module, as other tools than the system's loader read them.
set -eu
module=$1
objdump=$2
failed=0

expect() {
    if [ "$2" != "$3" ]; then
        printf '%s: expected\n%s\nbut found\n%s\n' "$1" "$2" "$3" >&2
        failed=1
    fi
}

headers=$("$objdump" -p "$module")
expect imports "GDI32.dll
KERNEL32.dll
msvcrt.dll
OPENGL32.dll
USER32.dll" "$(printf '%s\n' "$headers" | sed -n 's/^\tDLL Name: //p' | LC_ALL=C sort -f)"
expect exports "EffectMain
PluginDataEntryFunction" "$(printf '%s\n' "$headers" | sed -n '/Ordinal\/Name Pointer/,/^$/s/^\t\[ *[0-9]*\] //p')"
expect resources "--type='PIPL' --name=16000 --language=1033 size=282" \
    "$(wrestool -l "$module" | sed 's/\[offset=[^ ]* /[/; s/[][]//g; s/ *$//')"
# flumo check --resource tells what differs.
expect "sum of the property list" 86f84e3fe12c5438df9e8503d75adb551bbd7ca75198ff2ec5c1e607ff63c4ca \
    "$(wrestool -x --raw --type=PIPL --name=16000 "$module" | sha256sum | cut -d' ' -f1)"
exit $failed
