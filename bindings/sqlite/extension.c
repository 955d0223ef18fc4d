/* jwnls_sqlite.so: numbers, dates and times as each locale writes them, as functions of SQLite. */

#include "bindings/sqlite/connection.h"

SQLITE_EXTENSION_INIT1

__attribute__((visibility("default"))) int sqlite3_jwnlssqlite_init(
    sqlite3* db, char** message, const sqlite3_api_routines* routines) {
  SQLITE_EXTENSION_INIT2(routines)
  (void)message;
  Connection* connection = sqlite3_malloc(sizeof *connection);
  if (connection == NULL) return SQLITE_NOMEM;
  *connection = (Connection){.holders = 0};
  const int code = register_scalar_functions(db, connection);
  return code == SQLITE_OK ? register_tables(db) : code;
}
