#!/usr/bin/env bash
# Compares the size of every struct of the public headers, and the place and size of each of its
# members, slots of function tables among them, with layouts.txt. A line that changes or goes is a
# change of the ABI; new ones are members at the end of structs that begin with their size, and new
# structs.   layouts_test.sh WORK_FOLDER SOURCE_FOLDER
set -euo pipefail
work=$1 source=$2
mkdir -p "$work"
cd "$source"

includes=$(printf '#include "%s"\n' abi/*.h include/jwnls/jwnls.h)
{
  printf '#include <stddef.h>\n#include <stdio.h>\n%s\nint main(void) {\n' "$includes"
  "$CC" -std=c11 -I. -E -P -x c - <<<"$includes" | tr '\n\t' '  ' |
    grep -oE 'struct jw[a-z0-9_]* *\{[^}]*\}' | sort -u |
    awk '{
      struct = $2; sub(/\{.*/, "", struct)
      body = $0; sub(/^[^{]*\{/, "", body); sub(/\}$/, "", body)
      printf "printf(\"%s %%zu\\n\", sizeof(struct %s));\n", struct, struct
      count = split(body, members, ";")
      for (i = 1; i <= count; ++i) {
        member = members[i]
        if (match(member, /\(\*[a-z_0-9]+\)/)) {
          member = substr(member, RSTART + 2, RLENGTH - 3)
        }
        gsub(/\[[^]]*\]/, "", member)
        names = split(member, name, ",")
        for (n = 1; n <= names; ++n) {
          if (!match(name[n], /[A-Za-z_0-9]+ *$/)) continue
          it = substr(name[n], RSTART, RLENGTH); sub(/ +$/, "", it)
          printf "printf(\"%s.%s %%zu %%zu\\n\", offsetof(struct %s, %s), sizeof(((struct %s*)0)->%s));\n", struct, it, struct, it, struct, it
        }
      }
    }'
  echo 'return 0; }'
} >"$work/layouts.c"
"$CC" -std=c11 -I. "$work/layouts.c" -o "$work/layouts"
"$work/layouts" >"$work/layouts.txt"
diff tests/abi/layouts.txt "$work/layouts.txt" || {
  echo "the layouts differ from tests/abi/layouts.txt; those of this build: $work/layouts.txt" >&2
  exit 1
}
