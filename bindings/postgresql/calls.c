#include "bindings/postgresql/calls.h"

#include <string.h>

#include "access/detoast.h"
#include "mb/pg_wchar.h"
#include "nodes/primnodes.h"
#include "utils/builtins.h"
#include "utils/memutils.h"

PG_MODULE_MAGIC;

/* The library refuses longer texts unread. */
enum { longest_text = 1024, longest_words = 4096 };

static void empty_cache(void* site) { layout_cache_clear(&((CallSite*)site)->cache); }

/* Whether texts need no conversion. Of a server that knows no encoding bytes are taken as UTF-8,
   and what is none is not read. */
static bool is_utf8(void) {
  return GetDatabaseEncoding() == PG_UTF8 || GetDatabaseEncoding() == PG_SQL_ASCII;
}

CallSite* new_call_site(FunctionCallInfo fcinfo) {
  FmgrInfo* function = fcinfo->flinfo;
  CallSite* site = MemoryContextAllocZero(function->fn_mcxt, sizeof *site);
  site->plain = is_utf8();
  site->at_reset.func = empty_cache;
  site->at_reset.arg = site;
  MemoryContextRegisterResetCallback(function->fn_mcxt, &site->at_reset);
  function->fn_extra = site;
  return site;
}

static bool is_ascii(jwnls_text text) {
  size_t i = 0;
  while (i < text.length && !IS_HIGHBIT_SET(text.bytes[i])) ++i;
  return i == text.length;
}

static bool is_stored_apart(const struct varlena* value) {
  return VARATT_IS_EXTERNAL(value) || VARATT_IS_COMPRESSED(value);
}

static size_t length_of(Datum value) {
  const struct varlena* held = (const struct varlena*)DatumGetPointer(value);
  return is_stored_apart(held) ? toast_raw_datum_size(value) - VARHDRSZ : VARSIZE_ANY_EXHDR(held);
}

jwnls_text beginning_of_text(Datum value, size_t bytes) {
  struct varlena* held = (struct varlena*)DatumGetPointer(value);
  if (is_stored_apart(held)) held = pg_detoast_datum_slice(held, 0, (int32)bytes);
  jwnls_text text = {VARDATA_ANY(held), VARSIZE_ANY_EXHDR(held)};
  if (text.length > bytes) text.length = bytes;
  if (is_utf8() || is_ascii(text)) return text;
  /* Whole characters of the server's. */
  text.length = (size_t)pg_mbcliplen(text.bytes, (int)text.length, (int)text.length);
  text.bytes = pg_server_to_any(text.bytes, (int)text.length, PG_UTF8);
  text.length = strlen(text.bytes);
  return text;
}

Input input_of_argument(FunctionCallInfo fcinfo, int argument) {
  const Datum value = PG_GETARG_DATUM(argument);
  return (Input){beginning_of_text(value, longest_text + 1), length_of(value)};
}

/* Constants as they stand in the statement; parameters may change from call to call. */
static bool are_constants(FunctionCallInfo fcinfo, int first) {
  const Node* call = fcinfo->flinfo->fn_expr;
  if (call == NULL || !IsA(call, FuncExpr)) return false;
  const List* arguments = ((const FuncExpr*)call)->args;
  for (int i = first; i < list_length(arguments); ++i) {
    if (!IsA(list_nth(arguments, i), Const)) return false;
  }
  return list_length(arguments) == PG_NARGS();
}

const jwnls_layout* layout_of_arguments(FunctionCallInfo fcinfo, int kind, bool zone_word,
                                        int first) {
  CallSite* site = call_site(fcinfo);
  LayoutWords words = {.kind = kind, .zone_word = zone_word};
  words.locale = beginning_of_text(PG_GETARG_DATUM(first), longest_words);
  words.options = beginning_of_text(PG_GETARG_DATUM(first + 1), longest_words);
  if (PG_NARGS() > first + 2) {
    words.zone = beginning_of_text(PG_GETARG_DATUM(first + 2), longest_words);
  }
  jwnls_error error;
  const HeldLayout* held = layout_cache_find(&site->cache, &words, &error);
  if (held == NULL) raise_layout_error(&error);
  if (are_constants(fcinfo, first)) site->constant = held->layout; /* no other comes to the cache */
  return held->layout;
}

text* server_text(const char* utf8, size_t length) {
  if (is_utf8()) return cstring_to_text_with_len(utf8, (int)length);
  const char* converted = pg_any_to_server(utf8, (int)length, PG_UTF8);
  return converted == utf8 ? cstring_to_text_with_len(utf8, (int)length)
                           : cstring_to_text(converted);
}

const char* server_message(const char* utf8) {
  if (is_utf8()) return utf8;
  char* message = pstrdup(utf8);
  for (char* at = message; *at != 0; ++at) {
    if (IS_HIGHBIT_SET(*at)) *at = '?';
  }
  return message;
}

void raise_layout_error(const jwnls_error* error) {
  int code = ERRCODE_INVALID_PARAMETER_VALUE;
  if (error->code == JWNLS_MEMORY) code = ERRCODE_OUT_OF_MEMORY;
  if (error->code == JWNLS_LOAD) code = ERRCODE_SYSTEM_ERROR;
  ereport(ERROR, (errcode(code), errmsg("%s", server_message(error->text))));
  pg_unreachable();
}

void explain_input(const jwnls_layout* layout, const Input* input, jwnls_error* error) {
  if (input->full_length <= longest_text) {
    jwnls_explain(layout, input->text.bytes, input->text.length, error);
  } else {
    error->code = JWNLS_UNREAD;
    snprintf(error->text, sizeof error->text,
             "a text of %zu bytes: none is read that has more than %d", input->full_length,
             longest_text);
  }
}

void raise_unread(const jwnls_layout* layout, int code, const Input* input) {
  const int kind = jwnls_layout_kind(layout);
  const bool dates = kind == JWNLS_DATE || kind == JWNLS_DATETIME || kind == JWNLS_INSTANT ||
                     kind == JWNLS_TIME || kind == JWNLS_PERIOD;
  int state = dates ? ERRCODE_INVALID_DATETIME_FORMAT : ERRCODE_INVALID_TEXT_REPRESENTATION;
  if (code == JWNLS_RANGE) {
    state = dates ? ERRCODE_DATETIME_FIELD_OVERFLOW : ERRCODE_NUMERIC_VALUE_OUT_OF_RANGE;
  }
  jwnls_error error;
  explain_input(layout, input, &error);
  /* What the locale writes instead ends the explanation. */
  char* hint = NULL;
  for (char* at = strstr(error.text, " writes "); at != NULL; at = strstr(at + 1, " writes ")) {
    hint = at;
  }
  char* end = error.text;
  for (char* at = end; hint != NULL && (at = strstr(at, "; ")) != NULL && at < hint; ++at) end = at;
  if (end == error.text) hint = NULL;
  if (hint != NULL) *end = 0;
  ereport(ERROR, (errcode(state), errmsg("%s", server_message(error.text)),
                  hint == NULL ? 0
                               : errhint("The locale %s writes %s.", jwnls_layout_locale(layout),
                                         server_message(hint + strlen(" writes ")))));
  pg_unreachable();
}
