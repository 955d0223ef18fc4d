-- Indexes, generated columns, checks and parallel plans.
create table sales(id int, day text, amount text,
  value numeric generated always as (jwnls_read_number(amount, 'de_DE')) stored,
  check (jwnls_read_date_or_null(day, 'de_DE') is not null));
insert into sales(id, day, amount)
  select g, jwnls_write_date(date '2020-01-01' + g % 1500, 'de_DE', 'style=long'),
    jwnls_write_number(g * 1.25, 'de_DE', 'decimals=2') from generate_series(1, 200000) g;
insert into sales(id, day, amount) values (0, '30.2.2024', '1');
insert into sales(id, day, amount) values (0, '29.2.2024', '1.5');
select id, day, amount, value from sales where id in (1, 4, 4000) order by id;
create index by_day on sales(jwnls_read_date(day, 'de_DE'));
create index by_moment on sales(jwnls_read_timestamptz(day, 'de_DE', 'zone=Europe/Berlin'));
analyze sales;
explain (costs off) select count(*) from sales where jwnls_read_date(day, 'de_DE') = '2024-02-03';
select count(*), min(id) from sales where jwnls_read_date(day, 'de_DE') = '2024-02-03';
select count(*), min(id) from sales where day = '3. Februar 2024';

-- The planner takes workers for its costs, and their answer is the same.
set min_parallel_table_scan_size = 0;
set max_parallel_workers_per_gather = 2;
explain (costs off) select sum(jwnls_read_number(amount, 'de_DE')) from sales;
create function launched(query text) returns int language plpgsql as $$
declare line text;
begin
  for line in execute 'explain (analyze, costs off, timing off) ' || query loop
    if line ~ 'Workers Launched' then return substring(line from '\d+'); end if;
  end loop;
  return 0;
end $$;
select launched('select sum(jwnls_read_number(amount, ''de_DE'')) from sales') > 0 as workers;
select sum(jwnls_read_number(amount, 'de_DE')), sum(value) from sales;
select count(*) filter (where verdict <> 'proved'), min(read) from jwnls_detect('sales', 'amount', 'number', 'de_DE en_US');

-- The extension moves and goes.
create schema elsewhere;
alter extension jwnls set schema elsewhere;
select elsewhere.jwnls_read_integer('1.234', 'de_DE');
drop table sales;
drop function launched;
drop extension jwnls;
drop schema elsewhere;

-- Who owns the database, and no more, may create it.
create role owner_of_some;
grant create on database contrib_regression to owner_of_some;
create schema own authorization owner_of_some;
set role owner_of_some;
create extension jwnls schema own;
select own.jwnls_read_integer('1.234', 'de_DE');
reset role;
drop extension jwnls;
drop schema own;
revoke create on database contrib_regression from owner_of_some;
drop role owner_of_some;
