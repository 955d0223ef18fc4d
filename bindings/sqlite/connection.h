/* What the functions of one connection share, and what the parts of the extension register. */

#ifndef JWNLS_BINDINGS_SQLITE_CONNECTION_H_
#define JWNLS_BINDINGS_SQLITE_CONNECTION_H_

#include <sqlite3ext.h>

#include "bindings/sql/layout_cache.h"

/* SQLite lets one thread at a time into a connection. */
typedef struct Connection {
  LayoutCache cache;
  unsigned holders; /* registered functions */
} Connection;

/* Each gives SQLite's code. */
int register_scalar_functions(sqlite3* db, Connection* connection);
int register_tables(sqlite3* db);

#endif /* JWNLS_BINDINGS_SQLITE_CONNECTION_H_ */
