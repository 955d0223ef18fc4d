/* jwnls_detect(table, column): which kind a column is, and which locales read it. */

#include <limits.h>
#include <string.h>

#include "bindings/sql/verdicts.h"
#include "bindings/sqlite/connection.h"
#include "bindings/sqlite/rows.h"

SQLITE_EXTENSION_INIT3

/* The column's texts, one behind the other. */
typedef struct Texts {
  char* bytes;
  int64_t* offsets; /* count + 1 */
  size_t count, room_bytes, room;
} Texts;

static bool add_value(Texts* texts, const char* bytes, size_t length) {
  if (texts->count + 2 > texts->room) {
    const size_t room = texts->room * 2 + 1024;
    int64_t* larger = sqlite3_realloc64(texts->offsets, room * sizeof *larger);
    if (larger == NULL) return false;
    texts->offsets = larger;
    texts->room = room;
    if (texts->count == 0) texts->offsets[0] = 0;
  }
  const size_t used = (size_t)texts->offsets[texts->count];
  if (texts->room_bytes - used < length) {
    const size_t room = texts->room_bytes * 2 + length + 4096;
    char* larger = sqlite3_realloc64(texts->bytes, room);
    if (larger == NULL) return false;
    texts->bytes = larger;
    texts->room_bytes = room;
  }
  if (length != 0 && texts->bytes != NULL) memcpy(texts->bytes + used, bytes, length);
  texts->offsets[++texts->count] = (int64_t)(used + length);
  return true;
}

/* Texts that are too long to be read need not be kept whole to be told as such. */
enum { longest_text = 1025 };

static int read_column(sqlite3* db, const char* const* arguments, Texts* texts, char** message) {
  const char* schema = arguments[4];
  /* Qualified: a column that is not there would else be a text of that name. */
  char* query = schema != NULL && *schema != 0
                    ? sqlite3_mprintf("select t.\"%w\" from \"%w\".\"%w\" t", arguments[1], schema,
                                      arguments[0])
                    : sqlite3_mprintf("select t.\"%w\" from \"%w\" t", arguments[1], arguments[0]);
  if (query == NULL) return SQLITE_NOMEM;
  sqlite3_stmt* statement = NULL;
  int code = sqlite3_prepare_v2(db, query, -1, &statement, NULL);
  sqlite3_free(query);
  while (code == SQLITE_OK && (code = sqlite3_step(statement)) == SQLITE_ROW) {
    const bool text = sqlite3_column_type(statement, 0) == SQLITE_TEXT;
    const char* bytes = text ? (const char*)sqlite3_column_text(statement, 0) : NULL;
    const size_t length = bytes == NULL ? 0 : (size_t)sqlite3_column_bytes(statement, 0);
    code = add_value(texts, bytes, length < longest_text ? length : longest_text) ? SQLITE_OK
                                                                                  : SQLITE_NOMEM;
  }
  if (code != SQLITE_DONE && code != SQLITE_NOMEM)
    *message = sqlite3_mprintf("%s", sqlite3_errmsg(db));
  sqlite3_finalize(statement);
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

/* A text of the column, by its number; null where there is none. */
static void add_example(Rows* rows, const Texts* texts, size_t index) {
  if (index >= texts->count) {
    add_text(rows, NULL);
    return;
  }
  const size_t length = (size_t)(texts->offsets[index + 1] - texts->offsets[index]);
  char* text = sqlite3_mprintf("%.*s", (int)length, texts->bytes + texts->offsets[index]);
  add_text(rows, text);
  sqlite3_free(text);
}

static void add_reading(Rows* rows, const Texts* texts, const jwnls_detection* detection,
                        const jwnls_detected_kind* found, int kind, size_t index) {
  jwnls_detected_reading reading = {.size = sizeof reading};
  const bool some = jwnls_detected_reading_of(detection, kind, index, &reading) == JWNLS_OK;
  add_text(rows, kind == 0 ? NULL : jwnls_kind_name(kind));
  add_text(rows, verdicts[found->verdict]);
  add_text(rows, some ? jwnls_detected_locale(detection, kind, index, 0) : NULL);
  add_text(rows, some ? reading.options : NULL);
  add_number(rows, some ? (sqlite3_int64)reading.locales : 0);
  add_number(rows, (sqlite3_int64)found->values);
  add_number(rows, some ? (sqlite3_int64)reading.read : 0);
  add_number(rows, (sqlite3_int64)found->dirty);
  add_number(rows, some ? (sqlite3_int64)reading.two_ways : 0);
  add_example(rows, texts, example_of(found));
  add_text(rows, some && *reading.value != 0 ? reading.value : NULL);
}

static void add_kind(Rows* rows, const Texts* texts, const jwnls_detection* detection, int kind) {
  jwnls_detected_kind found = {.size = sizeof found};
  if (jwnls_detected_kind_of(detection, kind, &found) != JWNLS_OK) return;
  size_t index = 0;
  do {
    add_reading(rows, texts, detection, &found, kind, index);
  } while (++index < found.readings);
}

int fill_detection(sqlite3* db, const char* const* arguments, Rows* rows, char** message) {
  Texts texts = {.count = 0};
  int code = read_column(db, arguments, &texts, message);
  int64_t none = 0;
  const jwnls_texts column = {.size = sizeof column,
                              .count = texts.count,
                              .bytes = texts.bytes == NULL ? "" : texts.bytes,
                              .large_offsets = texts.count == 0 ? &none : texts.offsets};
  jwnls_detection* detection = NULL;
  jwnls_error error;
  if (code == SQLITE_OK && jwnls_detect(&column, arguments[2], arguments[3], &detection, &error)) {
    code = error.code == JWNLS_MEMORY ? SQLITE_NOMEM : SQLITE_ERROR;
    *message = sqlite3_mprintf("%s", error.text);
  }
  if (detection != NULL) {
    const bool asked = arguments[2] != NULL && *arguments[2] != 0;
    const int best = jwnls_detection_kind(detection);
    if (!asked && best == 0) {
      const jwnls_detected_kind nothing = {.verdict = JWNLS_NONE, .values = texts.count};
      add_reading(rows, &texts, detection, &nothing, 0, 0);
    } else {
      for (int kind = asked ? JWNLS_NUMBER : best; kind <= (asked ? JWNLS_PERIOD : best); ++kind) {
        add_kind(rows, &texts, detection, kind);
      }
    }
    jwnls_detection_close(detection);
  }
  sqlite3_free(texts.bytes);
  sqlite3_free(texts.offsets);
  return code;
}
