/* What every function of the extension needs: its layout, its text, its errors. What these raise is
   raised with no call into the library under way. */

#ifndef JWNLS_BINDINGS_POSTGRESQL_CALLS_H_
#define JWNLS_BINDINGS_POSTGRESQL_CALLS_H_

#include "postgres.h"
/* The server's header has to be the first. */
#include "bindings/sql/layout_cache.h"
#include "fmgr.h"
#include "funcapi.h"

/* What a call site keeps, for as long as its statement: in fn_extra, with fn_mcxt. */
typedef struct CallSite {
  const jwnls_layout* constant; /* where locale, options and zone are constants of the statement */
  bool plain;                   /* texts of the server need no conversion */
  size_t written;               /* of the text just written: no variable of the stack, whose guard
                                   would be looked at in each row */
  TupleDesc row;                /* of functions that give one */
  LayoutCache cache;            /* in the process's memory; a callback of the context empties it */
  MemoryContextCallback at_reset;
} CallSite;

CallSite* new_call_site(FunctionCallInfo fcinfo);

static inline CallSite* call_site(FunctionCallInfo fcinfo) {
  CallSite* site = fcinfo->flinfo->fn_extra;
  return likely(site != NULL) ? site : new_call_site(fcinfo);
}

/* The layout of the arguments from `first` on: locale, options and maybe a zone. An unknown word is
   an error. Stays until the next call for the same call site. */
const jwnls_layout* layout_of_arguments(FunctionCallInfo fcinfo, int kind, bool zone_word,
                                        int first);

static inline const jwnls_layout* layout_of_call(FunctionCallInfo fcinfo, int kind, bool zone_word,
                                                 int first) {
  const CallSite* site = call_site(fcinfo);
  if (likely(site->constant != NULL)) return site->constant;
  return layout_of_arguments(fcinfo, kind, zone_word, first);
}

/* A text that is to be read, as UTF-8. Of what is too long to be read the beginning is fetched. */
typedef struct Input {
  jwnls_text text;
  size_t full_length; /* bytes in the database */
} Input;

Input input_of_argument(FunctionCallInfo fcinfo, int argument);

static inline Input input_of_call(FunctionCallInfo fcinfo, int argument) {
  const char* held = DatumGetPointer(PG_GETARG_DATUM(argument));
  /* As most stand in a row: short, and nowhere else. */
  if (likely(VARATT_IS_SHORT(held) && !VARATT_IS_EXTERNAL(held) && call_site(fcinfo)->plain)) {
    const size_t length = VARSIZE_SHORT(held) - VARHDRSZ_SHORT;
    return (Input){{VARDATA_SHORT(held), length}, length};
  }
  return input_of_argument(fcinfo, argument);
}

/* At least so many bytes of a text, where it has them; as UTF-8. */
jwnls_text beginning_of_text(Datum value, size_t bytes);

/* Why the text is not read, one line of UTF-8. */
void explain_input(const jwnls_layout* layout, const Input* input, jwnls_error* error);

/* In the server's encoding, or an error. Messages, which must not fail, have "?" for each byte that
   is not ASCII where that is another one than UTF-8. */
text* server_text(const char* utf8, size_t length);
const char* server_message(const char* utf8);

void raise_layout_error(const jwnls_error* error) pg_attribute_noreturn();
void raise_unread(const jwnls_layout* layout, int code, const Input* input) pg_attribute_noreturn();

/* Days and microseconds of the library count from 1970, the server's from 2000. */
enum { days_1970_to_2000 = 10957 };
static const int64 microseconds_1970_to_2000 = INT64CONST(946684800000000);

#endif /* JWNLS_BINDINGS_POSTGRESQL_CALLS_H_ */
