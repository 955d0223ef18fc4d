#!/usr/bin/env bash
# What reading and writing a column of PostgreSQL costs, whole queries over 1 million rows, against
# the server's own functions with lc_numeric and lc_time set:  bench/postgresql.sh [ROWS]
# Medians of five runs in turn, processor time, without parallel workers. A cluster of its own, which is gone at the
# end; needs the extension installed (scripts/bindings/postgresql).
set -euo pipefail
cd "$(dirname "$0")/.."
rows=${1:-1000000}
scripts/setup locales
. tests/bindings/postgresql_cluster.sh

locales=$(mktemp -d)
folders+=("$locales")
chmod 755 "$locales"
localedef -i de_DE -f UTF-8 "$locales/de_DE.UTF-8"
export LOCPATH="$locales:/usr/lib/locale"
start_cluster shared_buffers=512MB max_parallel_workers_per_gather=0 jit=off \
  lc_numeric=de_DE.UTF-8 lc_time=de_DE.UTF-8 autovacuum=off
export PGHOST=$cluster PGUSER=postgres PGDATABASE=postgres

psql -X -q <<SQL
create extension jwnls;
create unlogged table c as
  select n, d, to_char(n, 'FM999G999G990D00') as number, to_char(d, 'DD.MM.YYYY') as date,
    'de_DE'::text as locale
  from (select ((i * 7919::bigint % 100000000) / 100.0)::numeric(12, 2) as n, date '1990-01-01' + i % 12000 as d
        from generate_series(1, $rows) i) v;
vacuum analyze c;
SQL

queries=(
  "scan|number"
  "to_number|to_number(number, '999G999G999D99')"
  "jwnls_read_number|jwnls_read_number(number, 'de_DE')"
  "jwnls_read_float8|jwnls_read_float8(number, 'de_DE')"
  "jwnls_read_number, locale of a column|jwnls_read_number(number, locale)"
  "to_date|to_date(date, 'DD.MM.YYYY')"
  "jwnls_read_date|jwnls_read_date(date, 'de_DE')"
  "to_char of numbers|to_char(n, 'FM999G999G990D00')"
  "jwnls_write_number|jwnls_write_number(n, 'de_DE', 'decimals=2')"
  "jwnls_write_amount|jwnls_write_amount(n, 'de_DE')"
  "to_char of dates|to_char(d, 'DD. TMMonth YYYY')"
  "jwnls_write_date|jwnls_write_date(d, 'de_DE', 'style=long')"
)

script() {
  # Nanoseconds that the server's process has worked so far.
  local worked="select 'worked ' || split_part(pg_read_file('/proc/self/schedstat'), ' ', 1);"
  for _ in 1 2 3 4 5; do
    for query in "${queries[@]}"; do
      echo "\\echo QUERY ${query%%|*}"
      printf '%s\n' "$worked" "select count(${query#*|}) from c;" "$worked"
    done
  done
}

script | psql -X -q -A -t | awk -v rows="$rows" '
  /^QUERY/ { name = substr($0, 7); next }
  /^worked/ && begun { times[name] = times[name] " " ($2 - before); begun = 0; next }
  /^worked/ { before = $2; begun = 1 }
  function median(list,    n, t, i, j, swap) {
    n = split(list, t, " ")
    for (i = 1; i <= n; i++) for (j = i + 1; j <= n; j++)
      if (t[j] + 0 < t[i] + 0) { swap = t[i]; t[i] = t[j]; t[j] = swap }
    return t[int((n + 1) / 2)]
  }
  function row(name, peer) {
    printf "%-38s %6.0f ns a row", name, median(times[name]) / rows
    if (peer != "") printf "   %.2f of %s", median(times[name]) / median(times[peer]), peer
    print ""
  }
  END {
    row("scan"); row("to_number"); row("jwnls_read_number", "to_number")
    row("jwnls_read_number, locale of a column", "to_number")
    row("jwnls_read_float8", "to_number")
    row("to_date"); row("jwnls_read_date", "to_date")
    row("to_char of numbers"); row("jwnls_write_number", "to_char of numbers")
    row("jwnls_write_amount", "to_char of numbers")
    row("to_char of dates"); row("jwnls_write_date", "to_char of dates")
  }'
