#!/usr/bin/env bash
# What reading a column of SQLite costs, whole queries over 1 million rows in memory, against what is
# written by hand there:  bench/sqlite.sh [ROWS]
# Medians of five runs in turn, processor time. Needs build/jwnls_sqlite.so (scripts/bindings/sqlite).
set -euo pipefail
cd "$(dirname "$0")/.."
rows=${1:-1000000}

months="when 'stycznia' then '01' when 'lutego' then '02' when 'marca' then '03'
  when 'kwietnia' then '04' when 'maja' then '05' when 'czerwca' then '06' when 'lipca' then '07'
  when 'sierpnia' then '08' when 'września' then '09' when 'października' then '10'
  when 'listopada' then '11' when 'grudnia' then '12'"

queries=(
  "scan|select count(number) from texts"
  "scan|select count(date) from texts"
  "replace|select sum(cast(replace(replace(number, '.', ''), ',', '.') as real)) from texts"
  "jwnls_read_number|select sum(jwnls_read_number(number, 'de_DE')) from texts"
  "case|select count(substr(date, -4) || '-' || case substr(date, instr(date, ' ') + 1,
     length(date) - instr(date, ' ') - 5) $months end || '-' || printf('%02d', date)) from texts"
  "jwnls_read_date|select count(jwnls_read_date(date, 'pl_PL')) from texts"
  "jwnls_read_date, locale of a column|select count(jwnls_read_date(date, locale)) from texts"
)

script() {
  echo ".load build/jwnls_sqlite"
  echo "create table texts(number text, date text, locale text);
    with recursive n(i) as (select 1 union all select i + 1 from n where i < $rows)
    insert into texts select jwnls_write_number((i * 7919 % 100000000) / 100.0, 'de_DE', 'decimals=2'),
      jwnls_write_date(10000 + i % 12000, 'pl_PL', 'style=long as=days'), 'pl_PL' from n;"
  echo ".timer on"
  for _ in 1 2 3 4 5; do
    for query in "${queries[@]}"; do
      echo ".print QUERY ${query%%|*}"
      echo "${query#*|};"
    done
  done
}

script | sqlite3 :memory: | awk -v rows="$rows" '
  /^QUERY/ { name = substr($0, 7); next }
  /^Run Time/ { times[name] = times[name] " " ($6 + $8) }
  function median(list,    n, t, i, j, swap) {
    n = split(list, t, " ")
    for (i = 1; i <= n; i++) for (j = i + 1; j <= n; j++)
      if (t[j] + 0 < t[i] + 0) { swap = t[i]; t[i] = t[j]; t[j] = swap }
    return t[int((n + 1) / 2)]
  }
  function row(name, peer) {
    printf "%-36s %6.0f ns a row", name, median(times[name]) / rows * 1e9
    if (peer != "") printf "   %.2f of %s", median(times[name]) / median(times[peer]), peer
    print ""
  }
  END {
    row("scan"); row("replace"); row("jwnls_read_number", "replace")
    row("case"); row("jwnls_read_date", "case")
    row("jwnls_read_date, locale of a column", "case")
  }'
