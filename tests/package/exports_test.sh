#!/usr/bin/env bash
# Compares what libjwnls exports with the list of exports.txt, and the list with jwnls.h. A line of
# the list that changes or goes is a change of the ABI.
. "$(dirname "$0")/check.sh"

list=$source/tests/package/exports.txt
"$CC" -E -P -DJWNLS_API=JWNLS_DECLARED "$source/include/jwnls/jwnls.h" | tr '\n' ' ' | tr ';' '\n' |
  grep JWNLS_DECLARED | grep -oE '\bjwnls_[a-z0-9_]+ *\(' | tr -d ' (' | sort >"$work/declared"
diff "$list" "$work/declared" || fail "jwnls.h does not declare what exports.txt lists"

nm -D --defined-only "$build/libjwnls.so.1" | awk '$2 != "A" {print $3}' | sort >"$work/exported"
sed 's/$/@@JWNLS_1/' "$list" | diff - "$work/exported" ||
  fail "libjwnls.so.1 does not export what exports.txt lists"
readelf -d "$build/libjwnls.so.1" | grep -q 'soname: \[libjwnls\.so\.1\]' || fail "wrong soname"

# The archive must not clash with anything of the program that it is linked into.
archive=$(find "$build" -path '*/library/libjwnls.a')
nm --defined-only -g "$archive" | awk 'NF == 3 && $2 !~ /[VWu]/ {print $3}' |
  { ! grep -Ev '^jwnls_|^_Z.*5jwnls'; } || fail "libjwnls.a defines names that are not its own"
