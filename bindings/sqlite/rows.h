/* The rows of a table that is made whole when it is opened. */

#ifndef JWNLS_BINDINGS_SQLITE_ROWS_H_
#define JWNLS_BINDINGS_SQLITE_ROWS_H_

#include <sqlite3ext.h>
#include <stdbool.h>
#include <stddef.h>

typedef struct Cell {
  char* text; /* null: a number, or NULL where `number` is below 0 */
  sqlite3_int64 number;
} Cell;

/* Cells in the order of rows, as many a row as the table has visible columns. */
typedef struct Rows {
  Cell* cells;
  size_t count, room;
  bool no_memory; /* then nothing is added any more */
} Rows;

void add_text(Rows* rows, const char* text); /* a copy; null: NULL */
void add_number(Rows* rows, sqlite3_int64 number);
void clear_rows(Rows* rows);

/* Fills `rows` with what jwnls_detect(table, column, kinds, locales, schema) finds; the last three
   may be null. Gives SQLite's code, and then maybe a message of sqlite3_mprintf(). */
enum { detect_arguments = 5 };
int fill_detection(sqlite3* db, const char* const* arguments, Rows* rows, char** message);

#endif /* JWNLS_BINDINGS_SQLITE_ROWS_H_ */
