#!/usr/bin/env bash
# Adds the project to another one, under Ninja and Make. With a last argument "build" it is built
# and run too, which takes minutes.
. "$(dirname "$0")/check.sh"

for generator in Ninja "Unix Makefiles"; do
  folder="$work/${generator// /_}"
  quietly cmake -G "$generator" -S "$source/tests/package/subproject" -B "$folder" \
    -DJWNLS="$source" -DJWNLS_GENERATORS="$build" -DCMAKE_C_COMPILER="$CC" \
    -DCMAKE_CXX_COMPILER="$CXX"
  if [ "${4:-}" = build ]; then
    quietly cmake --build "$folder" --parallel "$(nproc)"
    shows values.c "$folder/values"
  fi
done
