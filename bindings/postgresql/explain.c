/* Why a text is not read, and which versions answer. */

#include "bindings/postgresql/calls.h"

/* The server's headers follow. */
#include "utils/builtins.h"

/* jwnls_explain(kind, text, locale, options): NULL when it is read. */
PG_FUNCTION_INFO_V1(sql_explain);
Datum sql_explain(PG_FUNCTION_ARGS) {
  const char* name = text_to_cstring(PG_GETARG_TEXT_PP(0));
  const int kind = jwnls_kind_of_name(name);
  if (kind == 0) {
    ereport(ERROR,
            (errcode(ERRCODE_INVALID_PARAMETER_VALUE), errmsg("there is no kind of that name"),
             errhint("Kinds are number, integer, amount, percent, date, time, datetime, "
                     "instant and period.")));
  }
  /* Not kept: the kind may be another one in each row. */
  const jwnls_layout* layout = layout_of_arguments(fcinfo, kind, true, 2);
  const Input input = input_of_call(fcinfo, 1);
  jwnls_error error = {.code = JWNLS_OK};
  explain_input(layout, &input, &error);
  if (error.code == JWNLS_OK) PG_RETURN_NULL();
  PG_RETURN_TEXT_P(cstring_to_text(server_message(error.text)));
}

PG_FUNCTION_INFO_V1(sql_version);
Datum sql_version(PG_FUNCTION_ARGS) {
  char zones[64];
  size_t length = 0;
  (void)fcinfo;
  jwnls_error error = {.code = jwnls_zones_version(zones, sizeof zones, &length)};
  if (error.code != JWNLS_OK) {
    strlcpy(error.text, jwnls_code_text(error.code), sizeof error.text);
    raise_layout_error(&error);
  }
  PG_RETURN_TEXT_P(
      cstring_to_text(psprintf("%s (%s, time zones %.*s)", jwnls_version(), jwnls_data_version(),
                               length == 0 ? 7 : (int)length, length == 0 ? "unknown" : zones)));
}
