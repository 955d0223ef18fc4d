/* The functions of one value. Reading: NULL for what is not read, and for what is no text; an
   unknown locale or option is an error. */

#include "bindings/sqlite/connection.h"
#include "bindings/sqlite/values.h"

SQLITE_EXTENSION_INIT3

typedef struct Function {
  Connection* connection;
  const Row* row;
  unsigned misses; /* calls in a row that found no layout kept with the statement */
} Function;

static void give_error(sqlite3_context* context, const jwnls_error* error) {
  if (error->code == JWNLS_MEMORY) {
    sqlite3_result_error_nomem(context);
  } else {
    sqlite3_result_error(context, error->text, -1);
  }
}

/* The layout of locale, options and zone from `first` on. Null when one of them is null or no text,
   or when an error was given. */
static HeldLayout* find_layout(sqlite3_context* context, Connection* connection, int kind,
                               bool zone_word, int count, sqlite3_value** first) {
  LayoutWords words = {.kind = kind, .zone_word = zone_word, .options = {"", 0}};
  if (kind == JWNLS_DATE || kind == JWNLS_DATETIME || kind == JWNLS_INSTANT ||
      kind == JWNLS_PERIOD) {
    words.own_words = date_forms;
  }
  static const char* const names[] = {"locale", "options", "zone"};
  jwnls_text* const texts[] = {&words.locale, &words.options, &words.zone};
  for (int i = 0; i < count && i < 3; ++i) {
    if (sqlite3_value_type(first[i]) == SQLITE_NULL) return NULL;
    if (!text_of_value(first[i], texts[i])) {
      char message[48];
      sqlite3_snprintf(sizeof message, message, "the %s is no text", names[i]);
      sqlite3_result_error(context, message, -1);
      return NULL;
    }
  }
  jwnls_error error;
  HeldLayout* held = layout_cache_find(&connection->cache, &words, &error);
  if (held == NULL) give_error(context, &error);
  return held;
}

/* Where all words are constants, SQLite keeps the layout with the statement. It does not say
   beforehand whether they are, and keeping costs as much as reading: after some calls that found
   nothing kept, only some try again. */
static HeldLayout* layout_of_call(sqlite3_context* context, Function* function, int count,
                                  sqlite3_value** values) {
  HeldLayout* held = sqlite3_get_auxdata(context, 1);
  if (held != NULL && (count < 3 || sqlite3_get_auxdata(context, 2) == held) &&
      (count < 4 || sqlite3_get_auxdata(context, 3) == held)) {
    function->misses = 0;
    return held;
  }
  const int kind = function->row->kind;
  held = find_layout(context, function->connection, kind, kind == JWNLS_INSTANT, count - 1,
                     values + 1);
  if (held == NULL) return NULL;
  if (function->misses < 8 || function->misses % 64 == 0) {
    for (int i = 1; i < count; ++i) {
      sqlite3_set_auxdata(context, i, layout_hold(held), layout_release);
    }
  }
  ++function->misses;
  return held;
}

static void call_function(sqlite3_context* context, int count, sqlite3_value** values) {
  Function* function = sqlite3_user_data(context);
  /* Also where there is nothing to read: unknown words are an error in any row. */
  const HeldLayout* held = layout_of_call(context, function, count, values);
  if (held == NULL) return;
  if (function->row->write != NULL) {
    function->row->write(context, held, values[0]);
    return;
  }
  jwnls_text text;
  if (text_of_value(values[0], &text)) {
    function->row->read(context, held, text);
  } else if (text.bytes == NULL) {
    sqlite3_result_error_nomem(context);
  }
}

/* jwnls_explain(kind, text, locale [, options]) */
static void call_explain(sqlite3_context* context, int count, sqlite3_value** values) {
  const Function* function = sqlite3_user_data(context);
  for (int i = 0; i < 2; ++i) {
    if (sqlite3_value_type(values[i]) == SQLITE_NULL) return;
  }
  const char* name = (const char*)sqlite3_value_text(values[0]);
  const int kind = name == NULL ? 0 : jwnls_kind_of_name(name);
  if (kind == 0) {
    sqlite3_result_error(context,
                         "no such kind; there are number, integer, amount, percent, date, "
                         "time, datetime, instant and period",
                         -1);
    return;
  }
  const HeldLayout* held =
      find_layout(context, function->connection, kind, true, count - 2, values + 2);
  if (held == NULL) return;
  jwnls_text text;
  jwnls_error error;
  if (!text_of_value(values[1], &text)) {
    sqlite3_result_text(context,
                        "a number or a blob, not a text: the column's type may have "
                        "converted it",
                        -1, SQLITE_STATIC);
  } else if (jwnls_explain(held->layout, text.bytes, text.length, &error) != JWNLS_OK) {
    sqlite3_result_text(context, error.text, -1, SQLITE_TRANSIENT);
  }
}

static void call_version(sqlite3_context* context, int count, sqlite3_value** values) {
  (void)count;
  (void)values;
  char zones[64];
  size_t length = 0;
  const int code = jwnls_zones_version(zones, sizeof zones, &length);
  if (code == JWNLS_MEMORY) {
    sqlite3_result_error_nomem(context);
    return;
  }
  if (code != JWNLS_OK) {
    sqlite3_result_error(context, jwnls_code_text(code), -1);
    return;
  }
  char* text = sqlite3_mprintf("%s (%s, time zones %.*s)", jwnls_version(), jwnls_data_version(),
                               length == 0 ? 7 : (int)length, length == 0 ? "unknown" : zones);
  if (text == NULL) {
    sqlite3_result_error_nomem(context);
  } else {
    sqlite3_result_text(context, text, -1, sqlite3_free);
  }
}

static void let_go(void* registered) {
  Function* function = registered;
  if (--function->connection->holders == 0) {
    layout_cache_clear(&function->connection->cache);
    sqlite3_free(function->connection);
  }
  sqlite3_free(function);
}

typedef void Call(sqlite3_context* context, int count, sqlite3_value** values);

static int add(sqlite3* db, Connection* connection, const char* name, int arguments, int flags,
               const Row* row, Call* call) {
  Function* function = sqlite3_malloc(sizeof *function);
  if (function == NULL) return SQLITE_NOMEM;
  *function = (Function){connection, row, 0};
  ++connection->holders;
  return sqlite3_create_function_v2(db, name, arguments, SQLITE_UTF8 | SQLITE_INNOCUOUS | flags,
                                    function, call, NULL, NULL, let_go);
}

int register_scalar_functions(sqlite3* db, Connection* connection) {
  ++connection->holders; /* until all are there */
  int code = SQLITE_OK;
  for (const Row* row = value_rows; row->name != NULL && code == SQLITE_OK; ++row) {
    /* What follows the time-zone database may change under an index, so all that takes a zone is
       not deterministic: instants, and the datetimes of four arguments. */
    const int flags = row->kind == JWNLS_INSTANT ? 0 : SQLITE_DETERMINISTIC;
    code = add(db, connection, row->name, 2, flags, row, call_function);
    if (code == SQLITE_OK) {
      code = add(db, connection, row->name, 3, flags, row, call_function);
    }
    if (code == SQLITE_OK && (row->kind == JWNLS_DATETIME || row->kind == JWNLS_INSTANT)) {
      code = add(db, connection, row->name, 4, 0, row, call_function);
    }
  }
  for (int count = 3; count <= 4 && code == SQLITE_OK; ++count) {
    code = add(db, connection, "jwnls_explain", count, 0, NULL, call_explain);
  }
  if (code == SQLITE_OK) {
    code = add(db, connection, "jwnls_version", 0, 0, NULL, call_version);
  }
  if (--connection->holders == 0) sqlite3_free(connection);
  return code;
}
