#!/usr/bin/env bash
# Runs the contestants in turn, each time in fresh processes, and prints for each the least and the
# median time of the first locale and of every further one, and of a whole process that opens the
# first, loading and all, beside one that does nothing; in microseconds.
#   bench/first_open/compare.sh [RUNS]       of the programs that `scripts/build bench` made
set -euo pipefail
cd "$(dirname "$0")/../../build-bench"

runs=${1:-60}
contestants=(jwnls_first_open jwnls_first_open_shared icu_first_open)
# Copies, as an installation makes them: of a file that the linker has just written, the system maps
# less at a time.
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
cp libjwnls.so.1 "${contestants[@]}" "$folder"
export LD_LIBRARY_PATH=$folder
for ((run = 0; run < runs; ++run)); do
  for contestant in "${contestants[@]}"; do
    "$folder/$contestant" >>"$folder/$contestant.times"
  done
done
# Microseconds of a process.
process() {
  local start=${EPOCHREALTIME/./}
  "$@"
  echo $((${EPOCHREALTIME/./} - start))
}
for ((run = 0; run < runs; ++run)); do
  for contestant in "${contestants[@]}"; do
    process "$folder/$contestant" first >>"$folder/$contestant.process"
  done
  process /bin/true >>"$folder/nothing.process"
done

# least_and_median FILE COLUMN
least_and_median() {
  cut -d ' ' -f "$2" "$1" | sort -g | awk '{ t[NR] = $1 } END { print t[1], t[int((NR + 1) / 2)] }'
}
printf '%-24s %9s %9s %9s %9s %9s %9s\n' "$runs runs, us" first median further median process median
for contestant in "${contestants[@]}"; do
  # shellcheck disable=SC2046,SC2183  # two numbers each
  printf '%-24s %9.1f %9.1f %9.1f %9.1f %9.0f %9.0f\n' "$contestant" \
    $(least_and_median "$folder/$contestant.times" 1) $(least_and_median "$folder/$contestant.times" 2) \
    $(least_and_median "$folder/$contestant.process" 1)
done
# shellcheck disable=SC2046,SC2183  # two numbers
printf '%-24s %9s %9s %9s %9s %9.0f %9.0f\n' nothing - - - - \
  $(least_and_median "$folder/nothing.process" 1)
