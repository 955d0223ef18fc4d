#!/usr/bin/env bash
# What reading and writing a column of PostgreSQL costs, whole queries over 1 million rows, against
# the server's own functions with lc_numeric, lc_monetary and lc_time set:
#   bench/postgresql.sh [ROWS [RUNS]]
# Medians of 11 runs in turn, processor time, without parallel workers. A format has the digits that
# the type of its column has. A cluster of its own, which is gone at the end; needs the extension
# installed (scripts/bindings/postgresql).
set -euo pipefail
cd "$(dirname "$0")/.."
rows=${1:-1000000}
runs=${2:-11}
scripts/setup locales
. tests/bindings/postgresql_cluster.sh

locales=$(mktemp -d)
folders+=("$locales")
chmod 755 "$locales"
localedef -i de_DE -f UTF-8 "$locales/de_DE.UTF-8"
export LOCPATH="$locales:/usr/lib/locale"
start_cluster shared_buffers=512MB max_parallel_workers_per_gather=0 jit=off \
  lc_numeric=de_DE.UTF-8 lc_monetary=de_DE.UTF-8 lc_time=de_DE.UTF-8 autovacuum=off
export PGHOST=$cluster PGUSER=postgres PGDATABASE=postgres

psql -X -q <<SQL
create extension jwnls;
create unlogged table amounts as
  select n, n::float8 as f, (n * 100)::bigint as i, d
  from (select ((i * 7919::bigint % 100000000) / 100.0)::numeric(12, 2) as n,
          date '1990-01-01' + i % 12000 as d
        from generate_series(1, $rows) i) v;
create unlogged table texts as
  select to_char(n, 'FM9G999G999G990D00') as number, to_char(d, 'DD.MM.YYYY') as date,
    'de_DE'::text as locale
  from amounts;
vacuum analyze amounts;
vacuum analyze texts;
SQL

# Name, table, expression, and whose time it is compared with.
queries=(
  "scan of texts|texts|number|"
  "to_number|texts|to_number(number, '9G999G999G999D99')|"
  "jwnls_read_number|texts|jwnls_read_number(number, 'de_DE')|to_number"
  "jwnls_read_number, locale of a column|texts|jwnls_read_number(number, locale)|to_number"
  "jwnls_read_float8|texts|jwnls_read_float8(number, 'de_DE')|to_number"
  "to_date|texts|to_date(date, 'DD.MM.YYYY')|"
  "jwnls_read_date|texts|jwnls_read_date(date, 'de_DE')|to_date"
  "scan of numbers|amounts|n|"
  "to_char of numeric|amounts|to_char(n, 'FM9G999G999G990D00')|"
  "jwnls_write_number|amounts|jwnls_write_number(n, 'de_DE', 'decimals=2')|to_char of numeric"
  "to_char of numeric, currency|amounts|to_char(n, 'FM9G999G999G990D00 L')|"
  "jwnls_write_amount|amounts|jwnls_write_amount(n, 'de_DE')|to_char of numeric, currency"
  "to_char of float8|amounts|to_char(f, 'FM9G999G999G990D00')|"
  "jwnls_write_float8|amounts|jwnls_write_float8(f, 'de_DE', 'decimals=2')|to_char of float8"
  "to_char of bigint|amounts|to_char(i, 'FM9G999G999G990')|"
  "jwnls_write_integer|amounts|jwnls_write_integer(i, 'de_DE')|to_char of bigint"
  "to_char of dates|amounts|to_char(d, 'DD. TMMonth YYYY')|"
  "jwnls_write_date|amounts|jwnls_write_date(d, 'de_DE', 'style=long')|to_char of dates"
)

script() {
  # Nanoseconds that the server's process has worked so far.
  local worked="select 'worked ' || split_part(pg_read_file('/proc/self/schedstat'), ' ', 1);"
  local name table expression peer
  for ((run = 0; run < runs; ++run)); do
    for query in "${queries[@]}"; do
      IFS='|' read -r name table expression peer <<<"$query"
      echo "\\echo QUERY $name|$peer"
      printf '%s\n' "$worked" "select count($expression) from $table;" "$worked"
    done
  done
}

script | psql -X -q -A -t | awk -F '|' -v rows="$rows" '
  /^QUERY/ {
    name = substr($1, 7)
    if (!(name in peers)) order[++count] = name
    peers[name] = $2
    next
  }
  { split($0, words, " ") }
  /^worked/ && begun { times[name] = times[name] " " (words[2] - before); begun = 0; next }
  /^worked/ { before = words[2]; begun = 1 }
  function median(list,    n, t, i, j, swap) {
    n = split(list, t, " ")
    for (i = 1; i <= n; i++) for (j = i + 1; j <= n; j++)
      if (t[j] + 0 < t[i] + 0) { swap = t[i]; t[i] = t[j]; t[j] = swap }
    return t[int((n + 1) / 2)]
  }
  END {
    for (i = 1; i <= count; i++) {
      name = order[i]
      peer = peers[name]
      printf "%-38s %6.0f ns a row", name, median(times[name]) / rows
      if (peer != "") printf "   %.3f of %s", median(times[name]) / median(times[peer]), peer
      print ""
    }
  }'
