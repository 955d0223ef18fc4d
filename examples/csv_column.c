/* Adds up a column of a CSV file without quotes, whose numbers a locale writes, through the column
   calls.

     csv_column FILE COLUMN [LOCALE]        columns count from 1; fields are separated by ";" */
#include <jwnls/jwnls.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { batch = 1024, longest_line = 4096 };

/* The field of a line, from 1. */
static jwnls_text field_of(const char* line, long column) {
  jwnls_text field = {line, 0};
  while (--column > 0 && field.bytes) {
    field.bytes = strchr(field.bytes, ';');
    if (field.bytes) ++field.bytes;
  }
  if (field.bytes) field.length = strcspn(field.bytes, ";\r\n");
  return field;
}

static double sum_of(const jwnls_layout* layout, const jwnls_text* texts, size_t count,
                     jwnls_column_facts* facts) {
  double values[batch], sum = 0;
  uint8_t codes[batch];
  jwnls_texts column = {.size = sizeof column, .count = count, .texts = texts};
  jwnls_read_numbers(layout, &column, values, codes, facts);
  for (size_t i = 0; i < count; ++i) sum += codes[i] == JWNLS_OK ? values[i] : 0;
  return sum;
}

int main(int argument_count, char** arguments) {
  static char lines[batch][longest_line];
  static jwnls_text texts[batch];
  jwnls_layout* layout;
  jwnls_error error;
  jwnls_column_facts facts = {.size = sizeof facts};
  double sum = 0;
  size_t count = 0;
  FILE* file = argument_count > 2 ? fopen(arguments[1], "r") : NULL;
  if (!file) {
    fprintf(stderr, "csv_column: FILE COLUMN [LOCALE], with a file that can be read\n");
    return 2;
  }
  if (jwnls_open(argument_count > 3 ? arguments[3] : "de_DE", JWNLS_NUMBER, NULL, &layout,
                 &error) != JWNLS_OK) {
    fprintf(stderr, "csv_column: %s\n", error.text);
    return 2;
  }
  while (fgets(lines[count], longest_line, file)) {
    texts[count] = field_of(lines[count], atol(arguments[2]));
    if (++count < batch) continue;
    sum += sum_of(layout, texts, count, &facts);
    count = 0;
  }
  sum += sum_of(layout, texts, count, &facts);
  printf("%.2f: %zu read, %zu not read, %zu missing, %zu that could mean something else\n", sum,
         facts.read, facts.refused, facts.missing, facts.two_ways);
  fclose(file);
  jwnls_close(layout);
  return facts.refused == 0 ? 0 : 1;
}
