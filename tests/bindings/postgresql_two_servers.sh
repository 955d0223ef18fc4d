#!/usr/bin/env bash
# Two servers and postgres_fdw: a filter with a function of the extension runs where the rows are.
set -euo pipefail
cd "$(dirname "$0")/../.."
. tests/bindings/postgresql_cluster.sh

start_cluster
remote=$cluster
psql -X -q -h "$remote" -U postgres -d postgres <<'SQL'
create extension jwnls;
create table sales as
  select g as id, jwnls_write_date(date '2020-01-01' + g % 1500, 'de_DE', 'style=long') as day,
    jwnls_write_number(g * 1.25, 'de_DE', 'decimals=2') as amount
  from generate_series(1, 50000) g;
create index on sales(jwnls_read_date(day, 'de_DE'));
analyze sales;
SQL

start_cluster
export PGHOST=$cluster PGUSER=postgres PGDATABASE=postgres
psql -X -q <<SQL
create extension jwnls;
create extension postgres_fdw;
create server shop foreign data wrapper postgres_fdw
  options (host '$remote', dbname 'postgres', extensions 'jwnls');
create server plain foreign data wrapper postgres_fdw options (host '$remote', dbname 'postgres');
create user mapping for postgres server shop options (user 'postgres');
create user mapping for postgres server plain options (user 'postgres');
create foreign table sales(id int, day text, amount text) server shop;
create foreign table fetched(id int, day text, amount text) server plain
  options (table_name 'sales');
create table here as select * from fetched;
SQL

fail() {
  echo "postgresql_two_servers: $*" >&2
  exit 1
}
answer() { psql -X -q -A -t -c "$1"; }
plan() { answer "explain (verbose, costs off) select count(*) from $1 where $2"; }

day="jwnls_read_date(day, 'de_DE') between '2023-03-01' and '2023-03-31'"
amount="jwnls_read_number(amount, 'de_DE') > 50000"
stable="jwnls_read_timestamptz(day || ' 12:00', 'de_DE', 'zone=UTC') > '2023-03-01'"
for filter in "$day" "$amount"; do
  shipped=$(plan sales "$filter")
  grep -q 'Remote SQL: .*WHERE .*public\.jwnls_read' <<<"$shipped" ||
    fail "the filter is not shipped: $shipped"
  ! grep -q 'Filter: ' <<<"$shipped" || fail "the filter is applied here, too: $shipped"
  grep -q 'Filter: ' <<<"$(plan fetched "$filter")" || fail "shipped without being told to"
  there=$(answer "select count(*) from sales where $filter")
  here=$(answer "select count(*) from here where $filter")
  [ "$there" = "$here" ] && [ "$there" -gt 0 ] || fail "$there rows there, $here here: $filter"
  echo "$there rows, shipped: $(grep -o 'WHERE .*' <<<"$shipped")"
done
! grep -q 'Remote SQL: .*jwnls' <<<"$(plan sales "$stable")" ||
  fail "what depends on the time-zone database is shipped"
