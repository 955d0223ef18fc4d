\echo Use "CREATE EXTENSION jwnls" to load this file. \quit

-- A text as one locale writes it, and a value. Every function takes the locale and then the option
-- words of a layout. Functions named _or_null give NULL where the others raise an error: for texts
-- that are not read. What follows the time-zone database is stable, the rest immutable.
-- Costs are in operators of numbers.

CREATE FUNCTION jwnls_read_number(input text, locale text, options text DEFAULT '')
RETURNS numeric AS 'MODULE_PATHNAME', 'sql_read_number'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 8;

CREATE FUNCTION jwnls_read_number_or_null(input text, locale text, options text DEFAULT '')
RETURNS numeric AS 'MODULE_PATHNAME', 'sql_read_number_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 8;

CREATE FUNCTION jwnls_read_float8(input text, locale text, options text DEFAULT '')
RETURNS double precision AS 'MODULE_PATHNAME', 'sql_read_float8'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 4;

CREATE FUNCTION jwnls_read_float8_or_null(input text, locale text, options text DEFAULT '')
RETURNS double precision AS 'MODULE_PATHNAME', 'sql_read_float8_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 4;

CREATE FUNCTION jwnls_read_integer(input text, locale text, options text DEFAULT '')
RETURNS bigint AS 'MODULE_PATHNAME', 'sql_read_integer'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 4;

CREATE FUNCTION jwnls_read_integer_or_null(input text, locale text, options text DEFAULT '')
RETURNS bigint AS 'MODULE_PATHNAME', 'sql_read_integer_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 4;

CREATE FUNCTION jwnls_read_percent(input text, locale text, options text DEFAULT '')
RETURNS numeric AS 'MODULE_PATHNAME', 'sql_read_percent'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 8;

CREATE FUNCTION jwnls_read_percent_or_null(input text, locale text, options text DEFAULT '')
RETURNS numeric AS 'MODULE_PATHNAME', 'sql_read_percent_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 8;

CREATE FUNCTION jwnls_read_amount(input text, locale text, options text DEFAULT '', OUT amount numeric, OUT currency text)
RETURNS record AS 'MODULE_PATHNAME', 'sql_read_amount'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 15;

CREATE FUNCTION jwnls_read_amount_or_null(input text, locale text, options text DEFAULT '', OUT amount numeric, OUT currency text)
RETURNS record AS 'MODULE_PATHNAME', 'sql_read_amount_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 15;

CREATE FUNCTION jwnls_read_date(input text, locale text, options text DEFAULT '')
RETURNS date AS 'MODULE_PATHNAME', 'sql_read_date'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 6;

CREATE FUNCTION jwnls_read_date_or_null(input text, locale text, options text DEFAULT '')
RETURNS date AS 'MODULE_PATHNAME', 'sql_read_date_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 6;

CREATE FUNCTION jwnls_read_period(input text, locale text, options text DEFAULT '')
RETURNS date AS 'MODULE_PATHNAME', 'sql_read_period'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 10;

CREATE FUNCTION jwnls_read_period_or_null(input text, locale text, options text DEFAULT '')
RETURNS date AS 'MODULE_PATHNAME', 'sql_read_period_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 10;

CREATE FUNCTION jwnls_read_time(input text, locale text, options text DEFAULT '')
RETURNS time AS 'MODULE_PATHNAME', 'sql_read_time'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 6;

CREATE FUNCTION jwnls_read_time_or_null(input text, locale text, options text DEFAULT '')
RETURNS time AS 'MODULE_PATHNAME', 'sql_read_time_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 6;

CREATE FUNCTION jwnls_read_timestamp(input text, locale text, options text DEFAULT '')
RETURNS timestamp AS 'MODULE_PATHNAME', 'sql_read_timestamp'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 10;

CREATE FUNCTION jwnls_read_timestamp(input text, locale text, options text, zone text)
RETURNS timestamp AS 'MODULE_PATHNAME', 'sql_read_timestamp'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 13;

CREATE FUNCTION jwnls_read_timestamp_or_null(input text, locale text, options text DEFAULT '')
RETURNS timestamp AS 'MODULE_PATHNAME', 'sql_read_timestamp_or_null'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 10;

CREATE FUNCTION jwnls_read_timestamp_or_null(input text, locale text, options text, zone text)
RETURNS timestamp AS 'MODULE_PATHNAME', 'sql_read_timestamp_or_null'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 13;

CREATE FUNCTION jwnls_read_timestamptz(input text, locale text, options text DEFAULT '')
RETURNS timestamptz AS 'MODULE_PATHNAME', 'sql_read_timestamptz'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 13;

CREATE FUNCTION jwnls_read_timestamptz(input text, locale text, options text, zone text)
RETURNS timestamptz AS 'MODULE_PATHNAME', 'sql_read_timestamptz'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 16;

CREATE FUNCTION jwnls_read_timestamptz_or_null(input text, locale text, options text DEFAULT '')
RETURNS timestamptz AS 'MODULE_PATHNAME', 'sql_read_timestamptz_or_null'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 13;

CREATE FUNCTION jwnls_read_timestamptz_or_null(input text, locale text, options text, zone text)
RETURNS timestamptz AS 'MODULE_PATHNAME', 'sql_read_timestamptz_or_null'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 16;

CREATE FUNCTION jwnls_write_number(value numeric, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_number'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 15;

CREATE FUNCTION jwnls_write_float8(value double precision, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_float8'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 10;

CREATE FUNCTION jwnls_write_integer(value bigint, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_integer'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 5;

CREATE FUNCTION jwnls_write_percent(value numeric, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_percent'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 15;

CREATE FUNCTION jwnls_write_amount(value numeric, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_amount'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 15;

CREATE FUNCTION jwnls_write_date(value date, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_date'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 6;

CREATE FUNCTION jwnls_write_time(value time, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_time'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 6;

CREATE FUNCTION jwnls_write_timestamp(value timestamp, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_timestamp'
LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 10;

CREATE FUNCTION jwnls_write_timestamp(value timestamp, locale text, options text, zone text)
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_timestamp'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 13;

CREATE FUNCTION jwnls_write_timestamptz(value timestamptz, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_timestamptz'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 13;

CREATE FUNCTION jwnls_write_timestamptz(value timestamptz, locale text, options text, zone text)
RETURNS text AS 'MODULE_PATHNAME', 'sql_write_timestamptz'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 16;

-- Why a text is not read; NULL when it is. Takes zone= for datetimes, too.
CREATE FUNCTION jwnls_explain(kind text, input text, locale text, options text DEFAULT '')
RETURNS text AS 'MODULE_PATHNAME', 'sql_explain'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 200;

CREATE FUNCTION jwnls_version()
RETURNS text AS 'MODULE_PATHNAME', 'sql_version'
LANGUAGE C STABLE STRICT PARALLEL SAFE COST 100;

-- Which kind a column of texts is, and which locales read it: a row for each reading.
CREATE FUNCTION jwnls_detect(tbl regclass, col name, kinds text DEFAULT '', among text DEFAULT '',
  OUT kind text, OUT verdict text, OUT locale text, OUT options text, OUT locales bigint,
  OUT texts bigint, OUT read bigint, OUT dirty bigint, OUT two_ways bigint, OUT example text,
  OUT value text)
RETURNS SETOF record AS 'MODULE_PATHNAME', 'sql_detect'
LANGUAGE C VOLATILE STRICT PARALLEL RESTRICTED COST 1000000 ROWS 5;
