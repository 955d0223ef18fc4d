/* Reading a value of one text. What is not read is an error, of functions named _or_null NULL; a
   blank text is NULL. */

#include "bindings/postgresql/calls.h"
#include "bindings/postgresql/numerics.h"

/* The server's headers follow. */
#include "access/htup_details.h"
#include "utils/builtins.h"
#include "utils/date.h"
#include "utils/timestamp.h"

static pg_attribute_always_inline int read_decimal(const jwnls_layout* layout, jwnls_text text,
                                                   Datum* value, char currency[4]) {
  char room[512];
  char* decimal = room;
  size_t length = 0;
  int code = jwnls_read_decimal(layout, text.bytes, text.length, decimal,
                                sizeof room - decimal_margin, &length, currency, NULL);
  if (unlikely(code == JWNLS_ROOM)) {
    const size_t needed = length;
    decimal = palloc(needed + decimal_margin);
    code = jwnls_read_decimal(layout, text.bytes, text.length, decimal, needed, &length, currency,
                              NULL);
  }
  if (code == JWNLS_OK) {
    decimal[length] = 0;
    *value = numeric_of_decimal(decimal, length);
  }
  return code;
}

static pg_attribute_always_inline int read_numeric(const jwnls_layout* layout, jwnls_text text,
                                                   Datum* value) {
  return read_decimal(layout, text, value, NULL);
}

static int read_float8(const jwnls_layout* layout, jwnls_text text, Datum* value) {
  double number = 0;
  const int code = jwnls_read_number(layout, text.bytes, text.length, &number, NULL);
  *value = Float8GetDatum(number);
  return code;
}

static int read_integer(const jwnls_layout* layout, jwnls_text text, Datum* value) {
  int64_t number = 0;
  const int code = jwnls_read_integer(layout, text.bytes, text.length, &number, NULL);
  *value = Int64GetDatum(number);
  return code;
}

static int read_date(const jwnls_layout* layout, jwnls_text text, Datum* value) {
  int32_t days = 0;
  const int code = jwnls_read_date(layout, text.bytes, text.length, &days, NULL);
  *value = DateADTGetDatum(days - days_1970_to_2000);
  return code;
}

/* Of datetimes the clock's time, of instants UTC: so both are counted by the server. */
static int read_timestamp(const jwnls_layout* layout, jwnls_text text, Datum* value) {
  int64_t microseconds = 0;
  const int code = jwnls_read_datetime(layout, text.bytes, text.length, &microseconds, NULL);
  *value = TimestampGetDatum(microseconds - microseconds_1970_to_2000);
  return code;
}

static int read_time(const jwnls_layout* layout, jwnls_text text, Datum* value) {
  int64_t microseconds = 0;
  const int code = jwnls_read_time(layout, text.bytes, text.length, &microseconds, NULL);
  *value = TimeADTGetDatum(microseconds);
  return code;
}

typedef int Read(const jwnls_layout* layout, jwnls_text text, Datum* value);

static pg_attribute_always_inline Datum read_value(FunctionCallInfo fcinfo, int kind, Read* read,
                                                   bool raise) {
  const jwnls_layout* layout = layout_of_call(fcinfo, kind, kind == JWNLS_INSTANT, 1);
  const Input input = input_of_call(fcinfo, 0);
  Datum value = 0;
  const int code = read(layout, input.text, &value);
  if (code == JWNLS_OK) return value;
  if (raise && code != JWNLS_MISSING) raise_unread(layout, code, &input);
  PG_RETURN_NULL();
}

static Datum read_amount(FunctionCallInfo fcinfo, bool raise) {
  const jwnls_layout* layout = layout_of_call(fcinfo, JWNLS_AMOUNT, false, 1);
  CallSite* site = call_site(fcinfo);
  if (site->row == NULL) {
    const MemoryContext before = MemoryContextSwitchTo(fcinfo->flinfo->fn_mcxt);
    TupleDesc row;
    if (get_call_result_type(fcinfo, NULL, &row) != TYPEFUNC_COMPOSITE) {
      ereport(ERROR, (errcode(ERRCODE_FEATURE_NOT_SUPPORTED),
                      errmsg("an amount is a row of amount and currency")));
    }
    site->row = BlessTupleDesc(row);
    MemoryContextSwitchTo(before);
  }
  const Input input = input_of_call(fcinfo, 0);
  Datum values[2];
  const bool nulls[2] = {false, false};
  char currency[4] = "";
  const int code = read_decimal(layout, input.text, &values[0], currency);
  if (code != JWNLS_OK) {
    if (raise && code != JWNLS_MISSING) raise_unread(layout, code, &input);
    PG_RETURN_NULL();
  }
  values[1] = CStringGetTextDatum(currency);
  PG_RETURN_DATUM(HeapTupleGetDatum(heap_form_tuple(site->row, values, (bool*)nulls)));
}

/* The functions of the extension's script: one that raises, one that gives NULL. */
#define READER(name, call)                                       \
  PG_FUNCTION_INFO_V1(sql_read_##name);                          \
  Datum sql_read_##name(PG_FUNCTION_ARGS) { return call(true); } \
  PG_FUNCTION_INFO_V1(sql_read_##name##_or_null);                \
  Datum sql_read_##name##_or_null(PG_FUNCTION_ARGS) { return call(false); }

#define NUMBER(raise) read_value(fcinfo, JWNLS_NUMBER, read_numeric, raise)
#define FLOAT8(raise) read_value(fcinfo, JWNLS_NUMBER, read_float8, raise)
#define INTEGER(raise) read_value(fcinfo, JWNLS_INTEGER, read_integer, raise)
#define PERCENT(raise) read_value(fcinfo, JWNLS_PERCENT, read_numeric, raise)
#define DATE(raise) read_value(fcinfo, JWNLS_DATE, read_date, raise)
#define PERIOD(raise) read_value(fcinfo, JWNLS_PERIOD, read_date, raise)
#define TIME(raise) read_value(fcinfo, JWNLS_TIME, read_time, raise)
#define TIMESTAMP(raise) read_value(fcinfo, JWNLS_DATETIME, read_timestamp, raise)
#define TIMESTAMPTZ(raise) read_value(fcinfo, JWNLS_INSTANT, read_timestamp, raise)
#define AMOUNT(raise) read_amount(fcinfo, raise)

READER(number, NUMBER)
READER(float8, FLOAT8)
READER(integer, INTEGER)
READER(percent, PERCENT)
READER(amount, AMOUNT)
READER(date, DATE)
READER(period, PERIOD)
READER(time, TIME)
READER(timestamp, TIMESTAMP)
READER(timestamptz, TIMESTAMPTZ)
