/* The virtual tables. All are read only, exist without being created, and compute their rows once,
   from the values of their hidden columns: the arguments. */

#include <string.h>

#include "bindings/sqlite/connection.h"
#include "bindings/sqlite/rows.h"

SQLITE_EXTENSION_INIT3

static int fill_locales(sqlite3* db, const char* const* arguments, Rows* rows, char** message);
static int fill_zones(sqlite3* db, const char* const* arguments, Rows* rows, char** message);

typedef struct Kind {
  const char* name;
  const char* columns; /* the visible ones, then the arguments */
  int visible, arguments, required;
  bool by_name; /* reads tables by name, so nothing for views and triggers of others */
  int (*fill)(sqlite3* db, const char* const* arguments, Rows* rows, char** message);
} Kind;

static const Kind kinds[] = {
    {"jwnls_locales", "create table x(name text, english_name text, own_name text)", 3, 0, 0, false,
     fill_locales},
    {"jwnls_zones", "create table x(name text)", 1, 0, 0, false, fill_zones},
    {"jwnls_detect",
     "create table x(kind text, verdict text, locale text, options text, locales integer,"
     " texts integer, read integer, dirty integer, two_ways integer, example text, value text,"
     " 'table' hidden, 'column' hidden, kinds hidden, among hidden, 'schema' hidden)",
     11, detect_arguments, 2, true, fill_detection},
};

typedef struct Table {
  sqlite3_vtab base;
  sqlite3* db;
  const Kind* kind;
} Table;

typedef struct RowCursor {
  sqlite3_vtab_cursor base;
  Rows rows;
  size_t row;
} RowCursor;

static int connect_table(sqlite3* db, void* kind, int count, const char* const* words,
                         sqlite3_vtab** made, char** message) {
  (void)count;
  (void)words;
  (void)message;
  const int code = sqlite3_declare_vtab(db, ((const Kind*)kind)->columns);
  if (code != SQLITE_OK) return code;
  Table* table = sqlite3_malloc(sizeof *table);
  if (table == NULL) return SQLITE_NOMEM;
  *table = (Table){.db = db, .kind = kind};
  *made = &table->base;
  return sqlite3_vtab_config(db,
                             table->kind->by_name ? SQLITE_VTAB_DIRECTONLY : SQLITE_VTAB_INNOCUOUS);
}

static int disconnect_table(sqlite3_vtab* table) {
  sqlite3_free(table);
  return SQLITE_OK;
}

/* Which arguments are given, as bits of the plan's number; their values come in their order. */
static int best_index(sqlite3_vtab* base, sqlite3_index_info* info) {
  const Kind* kind = ((Table*)base)->kind;
  int constraint_of[8];
  memset(constraint_of, -1, sizeof constraint_of);
  for (int i = 0; i < info->nConstraint; ++i) {
    const int argument = info->aConstraint[i].iColumn - kind->visible;
    if (argument < 0 || info->aConstraint[i].op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
    if (!info->aConstraint[i].usable) return SQLITE_CONSTRAINT;
    constraint_of[argument] = i;
  }
  int given = 0;
  for (int argument = 0; argument < kind->arguments; ++argument) {
    if (constraint_of[argument] < 0) continue;
    info->aConstraintUsage[constraint_of[argument]].argvIndex = ++given;
    info->aConstraintUsage[constraint_of[argument]].omit = 1;
    info->idxNum |= 1 << argument;
  }
  info->estimatedCost = kind->by_name ? 1e6 : 1000;
  info->estimatedRows = 500;
  return SQLITE_OK;
}

static int open_cursor(sqlite3_vtab* table, sqlite3_vtab_cursor** made) {
  (void)table;
  RowCursor* cursor = sqlite3_malloc(sizeof *cursor);
  if (cursor == NULL) return SQLITE_NOMEM;
  *cursor = (RowCursor){.row = 0};
  *made = &cursor->base;
  return SQLITE_OK;
}

static int close_cursor(sqlite3_vtab_cursor* base) {
  clear_rows(&((RowCursor*)base)->rows);
  sqlite3_free(base);
  return SQLITE_OK;
}

static int filter(sqlite3_vtab_cursor* base, int given, const char* unused, int count,
                  sqlite3_value** values) {
  (void)unused;
  (void)count;
  RowCursor* cursor = (RowCursor*)base;
  Table* table = (Table*)base->pVtab;
  const Kind* kind = table->kind;
  const char* arguments[8] = {NULL};
  clear_rows(&cursor->rows);
  cursor->row = 0;
  for (int argument = 0; argument < kind->arguments; ++argument) {
    if ((given & 1 << argument) != 0) {
      arguments[argument] = (const char*)sqlite3_value_text(*values++);
      if (arguments[argument] == NULL) return SQLITE_OK; /* of NULL comes nothing */
    } else if (argument < kind->required) {
      sqlite3_free(base->pVtab->zErrMsg);
      base->pVtab->zErrMsg =
          sqlite3_mprintf("%s takes the names of a table and a column", kind->name);
      return SQLITE_ERROR;
    }
  }
  char* message = NULL;
  const int code = kind->fill(table->db, arguments, &cursor->rows, &message);
  if (message != NULL) {
    sqlite3_free(base->pVtab->zErrMsg);
    base->pVtab->zErrMsg = message;
  }
  return cursor->rows.no_memory ? SQLITE_NOMEM : code;
}

static int next(sqlite3_vtab_cursor* base) {
  ++((RowCursor*)base)->row;
  return SQLITE_OK;
}

static int at_end(sqlite3_vtab_cursor* base) {
  const RowCursor* cursor = (const RowCursor*)base;
  const Kind* kind = ((Table*)base->pVtab)->kind;
  return (cursor->row + 1) * (size_t)kind->visible > cursor->rows.count;
}

static int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int index) {
  const RowCursor* cursor = (const RowCursor*)base;
  const Kind* kind = ((Table*)base->pVtab)->kind;
  if (index >= kind->visible) return SQLITE_OK; /* an argument: SQLite has it */
  const Cell* cell = &cursor->rows.cells[cursor->row * (size_t)kind->visible + (size_t)index];
  if (cell->text != NULL) {
    sqlite3_result_text(context, cell->text, -1, SQLITE_TRANSIENT);
  } else if (cell->number >= 0) {
    sqlite3_result_int64(context, cell->number);
  }
  return SQLITE_OK;
}

static int row_id(sqlite3_vtab_cursor* base, sqlite3_int64* id) {
  *id = (sqlite3_int64)((RowCursor*)base)->row;
  return SQLITE_OK;
}

static const sqlite3_module module = {
    .xConnect = connect_table,
    .xDisconnect = disconnect_table,
    .xBestIndex = best_index,
    .xOpen = open_cursor,
    .xClose = close_cursor,
    .xFilter = filter,
    .xNext = next,
    .xEof = at_end,
    .xColumn = column,
    .xRowid = row_id,
};

int register_tables(sqlite3* db) {
  int code = SQLITE_OK;
  for (size_t i = 0; i < sizeof kinds / sizeof *kinds && code == SQLITE_OK; ++i) {
    code = sqlite3_create_module_v2(db, kinds[i].name, &module, (void*)&kinds[i], NULL);
  }
  return code;
}

/* ---- Rows ------------------------------------------------------------------------------------ */

static Cell* new_cell(Rows* rows) {
  if (rows->count == rows->room && !rows->no_memory) {
    const size_t room = rows->room * 2 + 64;
    Cell* larger = sqlite3_realloc64(rows->cells, room * sizeof *larger);
    if (larger == NULL) {
      rows->no_memory = true;
    } else {
      rows->cells = larger;
      rows->room = room;
    }
  }
  if (rows->no_memory) return NULL;
  rows->cells[rows->count] = (Cell){NULL, -1};
  return &rows->cells[rows->count++];
}

void add_text(Rows* rows, const char* text) {
  Cell* cell = new_cell(rows);
  if (cell == NULL || text == NULL) return;
  cell->text = sqlite3_mprintf("%s", text);
  rows->no_memory = cell->text == NULL;
}

void add_number(Rows* rows, sqlite3_int64 number) {
  Cell* cell = new_cell(rows);
  if (cell != NULL) cell->number = number;
}

void clear_rows(Rows* rows) {
  for (size_t i = 0; i < rows->count; ++i) sqlite3_free(rows->cells[i].text);
  sqlite3_free(rows->cells);
  *rows = (Rows){.count = 0};
}

static int visit_locale(void* rows, const jwnls_locale_info* locale) {
  add_text(rows, locale->name);
  add_text(rows, locale->english_name);
  add_text(rows, locale->own_name);
  return 0;
}

static int visit_zone(void* rows, const char* zone) {
  add_text(rows, zone);
  return 0;
}

static int answer(int code, const char* what, char** message) {
  if (code == JWNLS_OK) return SQLITE_OK;
  if (code == JWNLS_MEMORY) return SQLITE_NOMEM;
  *message = sqlite3_mprintf("%s: %s", what, jwnls_code_text(code));
  return SQLITE_ERROR;
}

static int fill_locales(sqlite3* db, const char* const* arguments, Rows* rows, char** message) {
  (void)db;
  (void)arguments;
  return answer(jwnls_locales(visit_locale, rows), "locales", message);
}

static int fill_zones(sqlite3* db, const char* const* arguments, Rows* rows, char** message) {
  (void)db;
  (void)arguments;
  return answer(jwnls_zones(visit_zone, rows), "time zones", message);
}
