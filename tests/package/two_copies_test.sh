#!/usr/bin/env bash
# Two copies of the library in one process, which load the modules by name; then the same where
# there is no /proc and the folder of the modules is all there is.
. "$(dirname "$0")/check.sh"

root=$work/root
mkdir -p "$root/modules" "$root/tmp" "$root/usr/share/zoneinfo" "$work/a" "$work/b"
cp "$build/libjwnls.so.1" "$work/a"
cp "$build/libjwnls.so.1" "$work/b"
cp "$build"/{jwnlsloc,jwnlsldb,jwemsg}.so "$root/modules"
cp -L /usr/share/zoneinfo/UTC "$root/usr/share/zoneinfo"
copies=("$work/a/libjwnls.so.1" "$work/b/libjwnls.so.1")
quietly "$CC" -rdynamic -O1 -std=c11 -Wall -Wextra -I"$source/include" "$source/tests/package/two_copies.c" \
  -o "$work/two_copies" -ldl -lpthread

JWNLS_EXTENSION_PATH=$root/modules "$work/two_copies" "${copies[@]}"
status=0
JWNLS_EXTENSION_PATH=/modules "$work/two_copies" "${copies[@]}" "$root" || status=$?
[ -z "$(ls "$root/tmp")" ] || fail "temporary copies are left: $(ls "$root/tmp")"
exit $status
