/* jwnls_detect(table, column): which kind a column is, and which locales read it. The table is read
   by a cursor, with the rights of who asks. */

#include "bindings/postgresql/calls.h"
#include "bindings/sql/verdicts.h"

/* The server's headers follow. */
#include "catalog/pg_type.h"
#include "executor/spi.h"
#include "miscadmin.h"
#include "utils/builtins.h"
#include "utils/lsyscache.h"
#include "utils/memutils.h"
#include "utils/tuplestore.h"

enum { rows_at_once = 10000, longest_text = 1025, result_columns = 11 };

/* The column's texts in UTF-8, one behind the other. */
typedef struct Texts {
  char* bytes;
  int64_t* offsets; /* count + 1 */
  size_t count, room_bytes, room;
} Texts;

static void add_value(Texts* texts, const char* bytes, size_t length) {
  if (texts->count + 2 > texts->room) {
    texts->room *= 2;
    texts->offsets = repalloc_huge(texts->offsets, texts->room * sizeof *texts->offsets);
  }
  const size_t used = (size_t)texts->offsets[texts->count];
  if (texts->room_bytes - used < length) {
    texts->room_bytes = texts->room_bytes * 2 + length;
    texts->bytes = repalloc_huge(texts->bytes, texts->room_bytes);
  }
  if (length != 0) memcpy(texts->bytes + used, bytes, length);
  texts->offsets[++texts->count] = (int64_t)(used + length);
}

static Texts no_texts(void) {
  Texts texts = {.room_bytes = 4096, .room = 1024};
  texts.bytes = palloc(texts.room_bytes);
  texts.offsets = palloc(texts.room * sizeof *texts.offsets);
  texts.offsets[0] = 0;
  return texts;
}

/* The column by its names, quoted: so that the query reads this one whatever the search path. */
static char* query_of(Oid table, const char* column) {
  const AttrNumber number = get_attnum(table, column);
  char* name = get_rel_name(table);
  if (name == NULL) {
    ereport(ERROR, (errcode(ERRCODE_UNDEFINED_TABLE), errmsg("there is no table %u", table)));
  }
  if (number == InvalidAttrNumber) {
    ereport(ERROR, (errcode(ERRCODE_UNDEFINED_COLUMN),
                    errmsg("table \"%s\" has no column \"%s\"", name, column)));
  }
  const Oid type = get_atttype(table, number);
  char category = 0;
  bool preferred = false;
  get_type_category_preferred(getBaseType(type), &category, &preferred);
  if (category != TYPCATEGORY_STRING) {
    ereport(ERROR,
            (errcode(ERRCODE_DATATYPE_MISMATCH),
             errmsg("column \"%s\" is of type %s, not of texts", column, format_type_be(type))));
  }
  return psprintf("select %s::pg_catalog.text from %s", quote_identifier(column),
                  quote_qualified_identifier(get_namespace_name(get_rel_namespace(table)), name));
}

static Texts texts_of_column(Oid table, const char* column) {
  const MemoryContext kept = CurrentMemoryContext;
  char* query = query_of(table, column);
  Texts texts = no_texts();
  SPI_connect();
  SPIPlanPtr plan = SPI_prepare(query, 0, NULL);
  if (plan == NULL) elog(ERROR, "cannot prepare: %s", query);
  Portal portal = SPI_cursor_open(NULL, plan, NULL, NULL, true);
  do {
    SPI_cursor_fetch(portal, true, rows_at_once);
    for (uint64 i = 0; i < SPI_processed; ++i) {
      CHECK_FOR_INTERRUPTS();
      bool null = false;
      const Datum value = SPI_getbinval(SPI_tuptable->vals[i], SPI_tuptable->tupdesc, 1, &null);
      jwnls_text text = {NULL, 0};
      if (!null) text = beginning_of_text(value, longest_text);
      const MemoryContext spi = MemoryContextSwitchTo(kept);
      add_value(&texts, text.bytes, text.length);
      MemoryContextSwitchTo(spi);
    }
    SPI_freetuptable(SPI_tuptable);
  } while (SPI_processed == rows_at_once);
  SPI_cursor_close(portal);
  SPI_finish();
  return texts;
}

typedef struct Answer {
  ReturnSetInfo* result;
  const Texts* texts;
  jwnls_detection* detection;
} Answer;

static void put_text(Datum* values, bool* nulls, int column, const char* text, size_t length) {
  nulls[column] = text == NULL;
  if (text != NULL) values[column] = PointerGetDatum(server_text(text, length));
}

static void add_reading(const Answer* answer, const jwnls_detected_kind* found, int kind,
                        size_t index) {
  jwnls_detected_reading reading = {.size = sizeof reading};
  const bool some = jwnls_detected_reading_of(answer->detection, kind, index, &reading) == JWNLS_OK;
  const char* const texts[4] = {
      kind == 0 ? NULL : jwnls_kind_name(kind), verdicts[found->verdict],
      some ? jwnls_detected_locale(answer->detection, kind, index, 0) : NULL,
      some ? reading.options : NULL};
  const size_t numbers[5] = {some ? reading.locales : 0, found->values, some ? reading.read : 0,
                             found->dirty, some ? reading.two_ways : 0};
  Datum values[result_columns];
  bool nulls[result_columns] = {false};
  for (int i = 0; i < 4; ++i) {
    put_text(values, nulls, i, texts[i], texts[i] == NULL ? 0 : strlen(texts[i]));
  }
  for (int i = 0; i < 5; ++i) values[4 + i] = Int64GetDatum((int64)numbers[i]);
  const size_t example = example_of(found);
  nulls[9] = example >= answer->texts->count;
  if (!nulls[9]) {
    const int64_t* offsets = answer->texts->offsets + example;
    put_text(values, nulls, 9, answer->texts->bytes + offsets[0],
             (size_t)(offsets[1] - offsets[0]));
  }
  const bool value = some && *reading.value != 0;
  put_text(values, nulls, 10, value ? reading.value : NULL, value ? strlen(reading.value) : 0);
  tuplestore_putvalues(answer->result->setResult, answer->result->setDesc, values, nulls);
}

static void add_kind(const Answer* answer, int kind) {
  jwnls_detected_kind found = {.size = sizeof found};
  if (jwnls_detected_kind_of(answer->detection, kind, &found) != JWNLS_OK) return;
  size_t index = 0;
  do {
    add_reading(answer, &found, kind, index);
  } while (++index < found.readings);
}

PG_FUNCTION_INFO_V1(sql_detect);
Datum sql_detect(PG_FUNCTION_ARGS) {
  const char* kinds = text_to_cstring(PG_GETARG_TEXT_PP(2));
  const char* locales = text_to_cstring(PG_GETARG_TEXT_PP(3));
  const Texts texts = texts_of_column(PG_GETARG_OID(0), NameStr(*PG_GETARG_NAME(1)));
  InitMaterializedSRF(fcinfo, 0);
  Answer answer = {(ReturnSetInfo*)fcinfo->resultinfo, &texts, NULL};
  const jwnls_texts column = {.size = sizeof column,
                              .count = texts.count,
                              .bytes = texts.bytes,
                              .large_offsets = texts.offsets};
  jwnls_error error;
  if (jwnls_detect(&column, kinds, locales, &answer.detection, &error) != JWNLS_OK) {
    raise_layout_error(&error);
  }
  PG_TRY();
  {
    const bool asked = *kinds != 0;
    const int best = jwnls_detection_kind(answer.detection);
    if (!asked && best == 0) {
      const jwnls_detected_kind nothing = {.verdict = JWNLS_NONE, .values = texts.count};
      add_reading(&answer, &nothing, 0, 0);
    } else {
      for (int kind = asked ? JWNLS_NUMBER : best; kind <= (asked ? JWNLS_PERIOD : best); ++kind) {
        add_kind(&answer, kind);
      }
    }
  }
  PG_FINALLY();
  { jwnls_detection_close(answer.detection); }
  PG_END_TRY();
  return (Datum)0;
}
