-- What the functions give.
create extension jwnls;
set timezone = 'UTC';
set datestyle = 'ISO';
select jwnls_read_number('1.234,50', 'de_DE'), jwnls_read_float8('1.234,5', 'de_DE'),
  jwnls_read_integer('1.234', 'de_DE'), jwnls_read_percent('12,5 %', 'de_DE');
select * from jwnls_read_amount('1.234,50 €', 'de_DE');
select (jwnls_read_amount(t, 'en_US', 'currency=any')).* from (values ('$5'), ('(EUR 1,234.50)'), ('')) v(t);
select jwnls_read_date('15. März 2024', 'de_DE'), jwnls_read_time('2:30 PM', 'en_US'),
  jwnls_read_timestamp('15.03.2024, 14:30:05', 'de_DE'), jwnls_read_period('Q2, 2024', 'en_US');
select jwnls_read_timestamp('2024-07-01T12:00:00Z', 'de_DE', '', 'Europe/Berlin'),
  jwnls_read_timestamptz('1.7.2024 14:00', 'de_DE', 'zone=Europe/Berlin'),
  jwnls_read_timestamptz('1.7.2024 14:00', 'de_DE', '', 'Europe/Berlin');
select jwnls_write_number(1234567.50, 'de_DE'), jwnls_write_float8(1234567.5, 'en_IN'),
  jwnls_write_integer(1234567, 'de_CH'), jwnls_write_percent(0.125, 'de_DE'),
  jwnls_write_amount(1234.5, 'de_DE'), jwnls_write_amount(1234.5, 'de_DE', 'currency=USD');
select jwnls_write_date('2024-03-15', 'pl_PL', 'style=long'), jwnls_write_time('14:30', 'en_US'),
  jwnls_write_timestamp('2024-03-15 14:30', 'de_DE'),
  jwnls_write_timestamptz('2024-07-01 12:00Z', 'de_DE', '', 'Europe/Berlin');

-- Volatility, and the rest that the planner knows.
select provolatile, proisstrict, proparallel, count(*), min(procost), max(procost)
  from pg_proc where proname like 'jwnls%' group by 1, 2, 3 order by 1, 2, 3;
select proname, pronargs from pg_proc where proname like 'jwnls%' and provolatile <> 'i'
  order by proname collate "C", pronargs;
select extrelocatable from pg_extension where extname = 'jwnls';

-- Numerics are made of digits and taken apart without the server's arithmetic: both ways must agree,
-- of values in a row, which have short heads, and of others.
create temp table decimals as
  select d, d::numeric as held from (select case when g % 3 = 0 then '-' else '' end || (g::bigint * 7919 * (10::bigint ^ (g % 8))::bigint)::text
    || case when g % 9 = 0 then '' else '.' || lpad((g * 31 % 1000)::text, 1 + g % 9, '0') end
  from generate_series(0, 20000) g
  union all select '0.' || repeat('0', n) || '12' || repeat('0', n % 5) from generate_series(0, 70) n
  union all select '7' || repeat('0', n) || '.00' from generate_series(0, 200) n
  union all select s || repeat('9', n) || '.' || repeat('0', m) || '9'
    from generate_series(1, 13) n, generate_series(0, 8) m, unnest(array['', '-', '1000']) s
  union all values ('-0.00'), ('0'), ('10000'), ('-0.0001'), ('100000000.5'), ('99999999')) all_of_them(d);
select count(*), count(*) filter (where r::text = (d::numeric)::text and numeric_send(r) = numeric_send(d::numeric)),
    count(*) filter (where w = replace(held::text, '.', ',') and w = jwnls_write_number(held + 0, 'de_DE', 'no-group'))
  from decimals, jwnls_read_number(replace(d, '.', ','), 'de_DE') r,
    jwnls_write_number(held, 'de_DE', 'no-group') w;

-- Words from columns, of parameters, and of variables that change under one plan.
select name, jwnls_read_number(t, name), jwnls_write_number(1234567.891, name, o)
  from (values ('de_DE', '1.234,5', ''), ('en_US', '1,234.5', 'decimals=2'), ('de_CH', '1’234.5', 'no-group')) v(name, t, o);
prepare p(text, text) as select jwnls_read_number($1, $2);
execute p('1.234', 'de_DE');
execute p('1.234', 'en_US');
do $$
declare l text; n numeric;
begin
  foreach l in array array['de_DE', 'en_US', 'de_DE'] loop
    n := jwnls_read_number('1.234', l);
    raise notice '% %', l, n;
  end loop;
end $$;
select k, jwnls_explain(k, 'x', 'de_DE') from (values ('date'), ('number'), ('date')) v(k);

-- Detection.
create table orders(placed text, "o""dd" varchar(20), n int);
insert into orders values ('01/02/2024', '1.234,5', 1), ('03/04/2024', '7', 2), ('n/a', null, 3);
select kind, verdict, locale, locales, texts, read, dirty, example, value from jwnls_detect('orders', 'placed');
select kind, verdict, locale, locales, read from jwnls_detect('orders', 'o"dd', 'number date', 'de_DE en_US');
