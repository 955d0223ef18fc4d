/* The functions of one value, as rows of a table, and what they do with it. */

#ifndef JWNLS_BINDINGS_SQLITE_VALUES_H_
#define JWNLS_BINDINGS_SQLITE_VALUES_H_

#include <sqlite3ext.h>

#include "bindings/sql/layout_cache.h"

/* One of the two does the work. A null result is SQLite's default. */
typedef struct Row {
  const char* name;
  int kind;
  void (*read)(sqlite3_context* context, const HeldLayout* held, jwnls_text text);
  void (*write)(sqlite3_context* context, const HeldLayout* held, sqlite3_value* value);
} Row;

/* A row without name is the last. */
extern const Row value_rows[];

/* The words that options of dates have besides the library's: HeldLayout.own_word. */
extern const char* const date_forms[];

/* Whether the value is a text, and it as UTF-8. False, with null bytes: no memory. */
bool text_of_value(sqlite3_value* value, jwnls_text* text);

#endif /* JWNLS_BINDINGS_SQLITE_VALUES_H_ */
