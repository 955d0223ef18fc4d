/* Reads and writes values of one locale through the C interface.

     values [LOCALE]          the locale is de_DE where none is named */
#include <jwnls/jwnls.h>
#include <stdio.h>
#include <string.h>

static jwnls_layout* open_layout(const char* locale, int kind, const char* options) {
  jwnls_layout* layout;
  jwnls_error error;
  if (jwnls_open(locale, kind, options, &layout, &error) != JWNLS_OK) {
    fprintf(stderr, "values: %s\n", error.text);
  }
  return layout; /* null when it could not be opened */
}

static void read_number(const jwnls_layout* numbers, const char* text) {
  double value;
  uint8_t facts;
  if (jwnls_read_number(numbers, text, strlen(text), &value, &facts) == JWNLS_OK) {
    printf("%s is %.15g%s\n", text, value, facts & JWNLS_TWO_WAYS ? ", or something else" : "");
  } else {
    jwnls_error error;
    jwnls_explain(numbers, text, strlen(text), &error);
    printf("%s\n", error.text);
  }
}

static void write_date(const jwnls_layout* dates, int32_t days) {
  char text[100];
  size_t length;
  int code = jwnls_write_date(dates, days, text, sizeof text, &length);
  if (code == JWNLS_OK) {
    printf("%.*s\n", (int)length, text);
  } else {
    printf("day %ld: %s\n", (long)days, jwnls_code_text(code));
  }
}

int main(int argument_count, char** arguments) {
  const char* locale = argument_count > 1 ? arguments[1] : "de_DE";
  jwnls_layout* numbers = open_layout(locale, JWNLS_NUMBER, NULL);
  jwnls_layout* dates = open_layout(locale, JWNLS_DATE, "style=long");
  if (numbers && dates) {
    read_number(numbers, "1.234.567,89");
    read_number(numbers, "1.234");
    read_number(numbers, "12.34");
    write_date(dates, 19797); /* days from 1970-01-01: 15 March 2024 */
    write_date(dates, 99999999);
  }
  jwnls_close(dates);
  jwnls_close(numbers);
  return numbers && dates ? 0 : 1;
}
