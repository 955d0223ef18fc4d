#include "bindings/sqlite/values.h"

#include "bindings/sqlite/iso_text.h"

SQLITE_EXTENSION_INIT3

enum { stack_room = 512 };

/* How dates are given and taken; HeldLayout.own_word. */
enum { as_iso, as_days, as_julian_day, as_unix_epoch };
const char* const date_forms[] = {"as=iso", "as=days", "as=julianday", "as=unixepoch", NULL};

bool text_of_value(sqlite3_value* value, jwnls_text* text) {
  *text = (jwnls_text){"", 0};
  if (sqlite3_value_type(value) != SQLITE_TEXT) return false;
  /* A text asked for as such is copied to be terminated; these are counted. */
  const bool utf8 =
      sqlite3_libversion_number() >= 3040000 && sqlite3_value_encoding(value) == SQLITE_UTF8;
  const void* bytes = utf8 ? sqlite3_value_blob(value) : sqlite3_value_text(value);
  text->length = (size_t)sqlite3_value_bytes(value);
  if (bytes != NULL || text->length != 0) text->bytes = bytes;
  return text->bytes != NULL;
}

/* ---- Reading --------------------------------------------------------------------------------- */

#define READ sqlite3_context *context, const HeldLayout *held, jwnls_text text

static void read_number(READ) {
  double value = 0;
  if (jwnls_read_number(held->layout, text.bytes, text.length, &value, NULL) == JWNLS_OK) {
    sqlite3_result_double(context, value);
  }
}

static void read_integer(READ) {
  int64_t value = 0;
  if (jwnls_read_integer(held->layout, text.bytes, text.length, &value, NULL) == JWNLS_OK) {
    sqlite3_result_int64(context, value);
  }
}

static void read_decimal(READ) {
  char room[stack_room];
  size_t length = 0;
  int code = jwnls_read_decimal(held->layout, text.bytes, text.length, room, sizeof room, &length,
                                NULL, NULL);
  if (code == JWNLS_OK) {
    sqlite3_result_text(context, room, (int)length, SQLITE_TRANSIENT);
  } else if (code == JWNLS_ROOM) {
    char* longer = sqlite3_malloc64(length);
    if (longer == NULL) {
      sqlite3_result_error_nomem(context);
      return;
    }
    code = jwnls_read_decimal(held->layout, text.bytes, text.length, longer, length, &length, NULL,
                              NULL);
    if (code == JWNLS_OK) {
      sqlite3_result_text(context, longer, (int)length, sqlite3_free);
    } else {
      sqlite3_free(longer);
    }
  }
}

static void read_currency(READ) {
  char currency[4];
  char room[stack_room];
  size_t length = 0;
  const int code = jwnls_read_decimal(held->layout, text.bytes, text.length, room, sizeof room,
                                      &length, currency, NULL);
  if (code == JWNLS_OK || code == JWNLS_ROOM) {
    sqlite3_result_text(context, currency, -1, SQLITE_TRANSIENT);
  }
}

static void give_moment(sqlite3_context* context, int form, int64_t microseconds, bool date) {
  char text[iso_text_room];
  switch (form) {
    case as_days:
      if (date) {
        sqlite3_result_int(context, day_of(microseconds));
      } else {
        sqlite3_result_double(context, (double)microseconds / (double)day_microseconds);
      }
      break;
    case as_julian_day:
      sqlite3_result_double(context, julian_day_of(microseconds));
      break;
    case as_unix_epoch:
      if (microseconds % 1000000 == 0) {
        sqlite3_result_int64(context, microseconds / 1000000);
      } else {
        sqlite3_result_double(context, (double)microseconds / 1e6);
      }
      break;
    default: {
      const int length =
          date ? iso_date(day_of(microseconds), text) : iso_moment(microseconds, text);
      sqlite3_result_text(context, text, length, SQLITE_TRANSIENT);
    }
  }
}

static void read_date(READ) {
  int32_t days = 0;
  if (jwnls_read_date(held->layout, text.bytes, text.length, &days, NULL) == JWNLS_OK) {
    give_moment(context, held->own_word, days * day_microseconds, true);
  }
}

static void read_datetime(READ) {
  int64_t value = 0;
  if (jwnls_read_datetime(held->layout, text.bytes, text.length, &value, NULL) == JWNLS_OK) {
    give_moment(context, held->own_word, value, false);
  }
}

static void read_time(READ) {
  int64_t value = 0;
  char iso[iso_text_room];
  if (jwnls_read_time(held->layout, text.bytes, text.length, &value, NULL) == JWNLS_OK) {
    sqlite3_result_text(context, iso, iso_time(value, iso), SQLITE_TRANSIENT);
  }
}

/* ---- Writing --------------------------------------------------------------------------------- */

/* A value as the library takes it; which member is of use says `form`. */
typedef struct Value {
  enum { of_number, of_integer, of_decimal, of_date, of_datetime, of_time } form;
  double number;
  int64_t integer; /* or days, or microseconds */
  jwnls_text decimal;
} Value;

static int write_value(const jwnls_layout* layout, const Value* value, char* out, size_t room,
                       size_t* length) {
  switch (value->form) {
    case of_number:
      return jwnls_write_number(layout, value->number, out, room, length);
    case of_integer:
      return jwnls_write_integer(layout, value->integer, out, room, length);
    case of_decimal:
      return jwnls_write_decimal(layout, value->decimal.bytes, value->decimal.length, out, room,
                                 length);
    case of_date:
      return jwnls_write_date(layout, (int32_t)value->integer, out, room, length);
    case of_datetime:
      return jwnls_write_datetime(layout, value->integer, out, room, length);
    default:
      return jwnls_write_time(layout, value->integer, out, room, length);
  }
}

static void give_written(sqlite3_context* context, const HeldLayout* held, const Value* value) {
  char room[stack_room];
  size_t length = 0;
  const int code = write_value(held->layout, value, room, sizeof room, &length);
  if (code == JWNLS_OK) {
    sqlite3_result_text(context, room, (int)length, SQLITE_TRANSIENT);
  } else if (code == JWNLS_ROOM) {
    char* longer = sqlite3_malloc64(length);
    if (longer == NULL) {
      sqlite3_result_error_nomem(context);
    } else if (write_value(held->layout, value, longer, length, &length) == JWNLS_OK) {
      sqlite3_result_text(context, longer, (int)length, sqlite3_free);
    } else {
      sqlite3_free(longer);
    }
  }
}

#define WRITE sqlite3_context *context, const HeldLayout *held, sqlite3_value *argument

static void write_number(WRITE) {
  Value value = {.form = of_number};
  switch (sqlite3_value_type(argument)) {
    case SQLITE_FLOAT:
      value.number = sqlite3_value_double(argument);
      if (jwnls_layout_kind(held->layout) == JWNLS_INTEGER) {
        value.form = of_integer;
        /* 2^63 and above have no 64 bits; a fraction is no integer. */
        if (!(value.number >= -0x1p63 && value.number < 0x1p63)) return;
        value.integer = (int64_t)value.number;
        if ((double)value.integer != value.number) return;
      }
      break;
    case SQLITE_INTEGER:
    case SQLITE_TEXT: /* an integer's digits, too: layouts of amounts write decimals exactly */
      value.form = of_decimal;
      value.decimal.bytes = (const char*)sqlite3_value_text(argument);
      value.decimal.length = (size_t)sqlite3_value_bytes(argument);
      if (value.decimal.bytes == NULL) {
        sqlite3_result_error_nomem(context);
        return;
      }
      break;
    default:
      return;
  }
  give_written(context, held, &value);
}

/* A moment in the form that "as=" says. Only then may it be a number: 2,460,000 could be a Julian
   day, days since 1970, or seconds. */
static bool moment_of(sqlite3_context* context, const HeldLayout* held, sqlite3_value* argument,
                      int64_t* microseconds) {
  const int type = sqlite3_value_type(argument);
  jwnls_text text;
  if (type == SQLITE_TEXT) {
    const bool offset = jwnls_layout_kind(held->layout) == JWNLS_INSTANT;
    return text_of_value(argument, &text) &&
           moment_of_iso(text.bytes, text.length, offset, microseconds);
  }
  if (type != SQLITE_INTEGER && type != SQLITE_FLOAT) return false;
  const double number = sqlite3_value_double(argument);
  switch (held->own_word) {
    case as_days:
      return moment_of_count(number, day_microseconds, microseconds);
    case as_julian_day:
      return moment_of_julian_day(number, microseconds);
    case as_unix_epoch:
      return moment_of_count(number, 1000000, microseconds);
    default:
      sqlite3_result_error(context,
                           "a date that is a number: say as=julianday, as=unixepoch or as=days "
                           "among the options",
                           -1);
      return false;
  }
}

static void write_date(WRITE) {
  Value value = {.form = of_date};
  if (moment_of(context, held, argument, &value.integer)) {
    value.integer = day_of(value.integer);
    give_written(context, held, &value);
  }
}

static void write_datetime(WRITE) {
  Value value = {.form = of_datetime};
  if (moment_of(context, held, argument, &value.integer)) give_written(context, held, &value);
}

static void write_time(WRITE) {
  Value value = {.form = of_time};
  jwnls_text text;
  if (text_of_value(argument, &text) && time_of_iso(text.bytes, text.length, &value.integer)) {
    give_written(context, held, &value);
  }
}

const Row value_rows[] = {
    {"jwnls_read_number", JWNLS_NUMBER, read_number, NULL},
    {"jwnls_read_decimal", JWNLS_NUMBER, read_decimal, NULL},
    {"jwnls_read_integer", JWNLS_INTEGER, read_integer, NULL},
    {"jwnls_read_amount", JWNLS_AMOUNT, read_decimal, NULL},
    {"jwnls_read_currency", JWNLS_AMOUNT, read_currency, NULL},
    {"jwnls_read_percent", JWNLS_PERCENT, read_number, NULL},
    {"jwnls_read_date", JWNLS_DATE, read_date, NULL},
    {"jwnls_read_time", JWNLS_TIME, read_time, NULL},
    {"jwnls_read_datetime", JWNLS_DATETIME, read_datetime, NULL},
    {"jwnls_read_instant", JWNLS_INSTANT, read_datetime, NULL},
    {"jwnls_read_period", JWNLS_PERIOD, read_date, NULL},
    {"jwnls_write_number", JWNLS_NUMBER, NULL, write_number},
    {"jwnls_write_integer", JWNLS_INTEGER, NULL, write_number},
    {"jwnls_write_amount", JWNLS_AMOUNT, NULL, write_number},
    {"jwnls_write_percent", JWNLS_PERCENT, NULL, write_number},
    {"jwnls_write_date", JWNLS_DATE, NULL, write_date},
    {"jwnls_write_time", JWNLS_TIME, NULL, write_time},
    {"jwnls_write_datetime", JWNLS_DATETIME, NULL, write_datetime},
    {"jwnls_write_instant", JWNLS_INSTANT, NULL, write_datetime},
    {NULL, 0, NULL, NULL},
};
