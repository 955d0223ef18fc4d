/* Writing one value. What a locale's calendar or a layout's kind does not have is an error. */

#include <math.h>

#include "bindings/postgresql/calls.h"
#include "bindings/postgresql/numerics.h"

/* The server's headers follow. */
#include "utils/builtins.h"
#include "utils/date.h"
#include "utils/numeric.h"
#include "utils/timestamp.h"

/* Writes the argument into so much room, as the library's functions do. */
typedef int Write(const jwnls_layout* layout, Datum value, char* out, size_t room, size_t* length);

static pg_noinline int write_long_numeric(const jwnls_layout* layout, Datum value, char* out,
                                          size_t room, size_t* length) {
  char decimal[decimal_room];
  size_t digits = 0;
  const char* text = decimal_of_numeric(value, decimal, &digits);
  if (text != NULL) return jwnls_write_decimal(layout, text, digits, out, room, length);
  const Numeric number = DatumGetNumeric(value);
  if (numeric_is_nan(number)) return JWNLS_MISSING;
  text = DatumGetCString(DirectFunctionCall1(numeric_out, NumericGetDatum(number)));
  return jwnls_write_number(layout, *text == '-' ? -INFINITY : INFINITY, out, room, length);
}

static pg_attribute_always_inline int write_numeric(const jwnls_layout* layout, Datum value,
                                                    char* out, size_t room, size_t* length) {
  int64 scaled = 0;
  int32 scale = 0;
  if (likely(scaled_of_numeric(value, &scaled, &scale))) {
    return jwnls_write_scaled(layout, scaled, scale, out, room, length);
  }
  return write_long_numeric(layout, value, out, room, length);
}

static int write_float8(const jwnls_layout* layout, Datum value, char* out, size_t room,
                        size_t* length) {
  return jwnls_write_number(layout, DatumGetFloat8(value), out, room, length);
}

static int write_integer(const jwnls_layout* layout, Datum value, char* out, size_t room,
                         size_t* length) {
  return jwnls_write_integer(layout, DatumGetInt64(value), out, room, length);
}

static int write_date(const jwnls_layout* layout, Datum value, char* out, size_t room,
                      size_t* length) {
  const DateADT date = DatumGetDateADT(value);
  if (DATE_NOT_FINITE(date)) return JWNLS_RANGE;
  return jwnls_write_date(layout, date + days_1970_to_2000, out, room, length);
}

static int write_timestamp(const jwnls_layout* layout, Datum value, char* out, size_t room,
                           size_t* length) {
  const Timestamp moment = DatumGetTimestamp(value);
  if (TIMESTAMP_NOT_FINITE(moment)) return JWNLS_RANGE;
  return jwnls_write_datetime(layout, moment + microseconds_1970_to_2000, out, room, length);
}

static int write_time(const jwnls_layout* layout, Datum value, char* out, size_t room,
                      size_t* length) {
  return jwnls_write_time(layout, DatumGetTimeADT(value), out, room, length);
}

static void raise_unwritten(const jwnls_layout* layout, int code) {
  const int kind = jwnls_layout_kind(layout);
  const char* why = "the calendar has the years 1582 to 9999";
  int state = ERRCODE_DATETIME_VALUE_OUT_OF_RANGE;
  if (kind == JWNLS_TIME) why = "a day ends before 24:00";
  if (kind == JWNLS_NUMBER || kind == JWNLS_INTEGER || kind == JWNLS_AMOUNT ||
      kind == JWNLS_PERCENT) {
    why = code == JWNLS_UNREAD ? "too many digits" : jwnls_code_text(code);
    state = ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE;
  }
  ereport(ERROR, (errcode(state), errmsg("the %s is not written in %s: %s", jwnls_kind_name(kind),
                                         jwnls_layout_locale(layout), why)));
}

/* What is no text yet, or has to be converted. */
static pg_noinline Datum finish_value(FunctionCallInfo fcinfo, int kind, int code, Write* write,
                                      text* written) {
  const jwnls_layout* layout = layout_of_call(fcinfo, kind, kind == JWNLS_INSTANT, 1);
  CallSite* site = call_site(fcinfo);
  if (code == JWNLS_ROOM) {
    const size_t room = site->written;
    written = palloc(VARHDRSZ + room);
    code = write(layout, PG_GETARG_DATUM(0), VARDATA(written), room, &site->written);
  }
  if (code == JWNLS_MISSING) PG_RETURN_NULL();
  if (code != JWNLS_OK) raise_unwritten(layout, code);
  if (!site->plain) PG_RETURN_TEXT_P(server_text(VARDATA(written), site->written));
  SET_VARSIZE(written, VARHDRSZ + site->written);
  PG_RETURN_TEXT_P(written);
}

static pg_attribute_always_inline Datum write_value(FunctionCallInfo fcinfo, int kind,
                                                    Write* write) {
  enum { room = 120 };
  text* written = palloc(VARHDRSZ + room); /* first, so that little is kept across the call */
  const jwnls_layout* layout = layout_of_call(fcinfo, kind, kind == JWNLS_INSTANT, 1);
  CallSite* site = call_site(fcinfo);
  const int code = write(layout, PG_GETARG_DATUM(0), VARDATA(written), room, &site->written);
  if (unlikely(code != JWNLS_OK || !site->plain)) {
    return finish_value(fcinfo, kind, code, write, written);
  }
  SET_VARSIZE(written, VARHDRSZ + site->written);
  PG_RETURN_TEXT_P(written);
}

#define WRITER(name, kind, write)        \
  PG_FUNCTION_INFO_V1(sql_write_##name); \
  Datum sql_write_##name(PG_FUNCTION_ARGS) { return write_value(fcinfo, kind, write); }

WRITER(number, JWNLS_NUMBER, write_numeric)
WRITER(float8, JWNLS_NUMBER, write_float8)
WRITER(integer, JWNLS_INTEGER, write_integer)
WRITER(percent, JWNLS_PERCENT, write_numeric)
WRITER(amount, JWNLS_AMOUNT, write_numeric)
WRITER(date, JWNLS_DATE, write_date)
WRITER(time, JWNLS_TIME, write_time)
WRITER(timestamp, JWNLS_DATETIME, write_timestamp)
WRITER(timestamptz, JWNLS_INSTANT, write_timestamp)
