-- What is not read, not written, not known: an error with its code, or NULL.
set datestyle = 'ISO';
\pset null NULL
create function state_of(statement text) returns text language plpgsql as $$
declare message text; hint text;
begin
  execute statement;
  return 'no error';
exception when others then
  get stacked diagnostics message = message_text, hint = pg_exception_hint;
  return concat_ws(' | ', sqlstate, message, nullif(hint, ''));
end $$;

select q, state_of('select ' || q) from (values
  ($$jwnls_read_number('12.34', 'de_DE')$$),
  ($$jwnls_read_float8('1,5E999', 'de_DE')$$),
  ($$jwnls_read_integer('9223372036854775808', 'de_DE')$$),
  ($$jwnls_read_amount('5 $', 'de_DE')$$),
  ($$jwnls_read_date('30.2.2024', 'de_DE')$$),
  ($$jwnls_read_date('1.1.1500', 'de_DE')$$),
  ($$jwnls_read_time('25:00', 'de_DE')$$),
  ($$jwnls_read_timestamptz('31.3.2024 02:30', 'de_DE', 'zone=Europe/Berlin')$$),
  ($$jwnls_write_date('infinity', 'de_DE')$$),
  ($$jwnls_write_date('0044-03-15 BC', 'de_DE')$$),
  ($$jwnls_write_timestamp('-infinity', 'de_DE')$$),
  ($$jwnls_write_time('24:00', 'de_DE')$$),
  ($$jwnls_write_number(1e-2000, 'de_DE')$$),
  ($$jwnls_read_number('1', 'klingon')$$),
  ($$jwnls_read_number_or_null('1', 'klingon')$$),
  ($$jwnls_read_number('1', '')$$),
  ($$jwnls_read_number('1', repeat('de', 50000000))$$),
  ($$jwnls_read_number('1', 'de_DE', 'group=any')$$),
  ($$jwnls_read_number('1', 'de_DE', repeat(' groups=any', 1000))$$),
  ($$jwnls_read_number('1', E'de\nDE')$$),
  ($$jwnls_read_timestamp('1', 'de_DE', 'zone=UTC')$$),
  ($$jwnls_read_timestamp('1', 'de_DE', '', 'Mars/Olympus')$$),
  ($$jwnls_read_timestamp('1', 'de_DE', '', 'UTC proved')$$),
  ($$jwnls_explain('nummer', '1', 'de_DE')$$),
  ($$jwnls_detect('pg_class', 'relnames')$$),
  ($$jwnls_detect('pg_class', 'relpages')$$),
  ($$jwnls_detect(0, 'relname')$$),
  ($$jwnls_detect('pg_class', 'relname', 'nummer')$$),
  ($$jwnls_detect('pg_class', 'relname', '', 'klingon')$$)) v(q);

-- NULL: of NULL, of blanks, of _or_null.
select jwnls_read_number(null, 'xx'), jwnls_read_number('1', null), jwnls_read_number('1', 'de_DE', null),
  jwnls_read_number(' ', 'de_DE'), jwnls_read_date('', 'de_DE'), jwnls_read_amount('', 'de_DE');
select jwnls_read_number_or_null('12.34', 'de_DE'), jwnls_read_amount_or_null('5 $', 'de_DE'),
  jwnls_read_date_or_null('30.2.2024', 'de_DE'), jwnls_read_timestamp_or_null('x', 'de_DE', '', 'UTC'),
  jwnls_explain('number', '1,5', 'de_DE'), jwnls_write_number('NaN', 'de_DE');
select jwnls_write_number('-Infinity', 'de_DE'), jwnls_write_float8('Infinity', 'de_DE');

-- Long texts, stored in and out of line, and short ones that are compressed.
create table long(t text);
insert into long values (repeat('1', 100000000)), (repeat('1', 1025)), (repeat('1', 1024)), (repeat(' ', 100000) || '5');
alter table long alter t set storage external;
insert into long values (repeat('1', 5000)), ('7');
select length(t), jwnls_read_float8_or_null(t, 'de_DE'), jwnls_explain('number', t, 'de_DE') from long;
select length(jwnls_read_number('1E900', 'de_DE')::text), length(jwnls_write_number(1e1000, 'de_DE')),
  length(jwnls_write_number(1e1000, 'de_DE', 'no-group'));

-- 10,000 different layouts in a column leave nothing behind; nor do errors. What aligned blocks leave free beside
-- them comes and goes by megabytes, so the smallest of ten rounds counts: a layout that left 20 bytes would raise it
-- by 2.4 MB from one ten to the next.
create function resident() returns bigint language sql as
  $$ select substring(pg_read_file('/proc/self/statm') from '^\d+ (\d+)')::bigint * 4096 $$;
create function many() returns bigint language sql as $$
  select count(jwnls_read_date('1.2.24', 'de_DE', 'century=' || 1600 + i % 2000 || repeat(' ', i / 2000)))
  from generate_series(1, 10000) i $$;
create function many_errors() returns bigint language plpgsql as $$
begin
  for i in 1..2000 loop
    begin
      perform jwnls_read_date('30.2.24', 'de_DE', 'century=' || 1600 + i);
    exception when others then null;
    end;
  end loop;
  return 2000;
end $$;
select many(), many_errors();
create table rounds as select i, many() + many_errors() as done, resident() as bytes from generate_series(1, 20) i;
select sum(done), min(bytes) filter (where i > 10) - min(bytes) filter (where i <= 10) < 2000000 as nothing_left
from rounds;

-- Interrupts, in the middle of 100 million rows.
create table digits as select i::text as d from generate_series(1, 10000) i;
set statement_timeout = '300ms';
select count(jwnls_read_number(a.d || ',' || b.d, 'de_DE')) from digits a, digits b;
reset statement_timeout;

-- Nothing of the process has changed for others.
select to_char(1234567.891, '9G999G999D99'), to_char(date '2024-03-15', 'TMMonth'), to_number('1,234.5', '9,999.9'),
  0.1::float8 + 0.2::float8;

-- Databases of other encodings, and one of none.
create database jwnls_latin1 template template0 encoding 'LATIN1' locale 'C';
\c jwnls_latin1
set client_encoding = 'UTF8';
create extension jwnls;
select jwnls_read_date('15. März 2024', 'de_DE'), jwnls_read_number('1 234,5', 'fr_FR'),
  jwnls_write_date('2024-03-15', 'de_DE', 'style=long'), jwnls_explain('date', 'März', 'de_DE');
select jwnls_write_amount(5, 'de_DE');
select jwnls_read_amount('5 Ã', 'de_DE');
create database jwnls_bytes template template0 encoding 'SQL_ASCII' locale 'C';
\c jwnls_bytes
create extension jwnls;
select jwnls_read_number_or_null(E'31\xff', 'de_DE'), jwnls_read_date(E'15. M\xc3\xa4rz 2024', 'de_DE'),
  jwnls_explain('number', E'31\xff', 'de_DE');
select jwnls_read_number('1', E'de\xff');
\c contrib_regression
drop database jwnls_latin1;
drop database jwnls_bytes;
drop function state_of, many, many_errors, resident;
drop table long, rounds, digits;
