// Columns of numbers, integers and exact decimals.

#include "abi/missing_value.h"
#include "include/jwnls/jwnls.h"
#include "library/columns/read_column.h"
#include "library/columns/write_column.h"

using jwnls::library::FactsCounter;
using jwnls::library::read_column;
using jwnls::library::Texts;
using jwnls::library::write_column;
using jwnls::library::write_texts;

extern "C" {

size_t jwnls_read_numbers(const jwnls_layout* layout, const jwnls_texts* texts, double* values,
                          uint8_t* codes, jwnls_column_facts* facts) {
  return read_column(layout, texts, jwnls::missing_value(), jwnls_read_number, values, codes,
                     facts);
}

size_t jwnls_read_integers(const jwnls_layout* layout, const jwnls_texts* texts, int64_t* values,
                           uint8_t* codes, jwnls_column_facts* facts) {
  return read_column(layout, texts, int64_t{0}, jwnls_read_integer, values, codes, facts);
}

size_t jwnls_write_numbers(const jwnls_layout* layout, const double* values, size_t count,
                           const jwnls_column* column) {
  return write_column(layout, values, count, column, jwnls_write_number);
}

size_t jwnls_write_integers(const jwnls_layout* layout, const int64_t* values, size_t count,
                            const jwnls_column* column) {
  return write_column(layout, values, count, column, jwnls_write_integer);
}

size_t jwnls_read_decimals(const jwnls_layout* layout, const jwnls_texts* texts,
                           const jwnls_column* column, jwnls_column_facts* facts) {
  const Texts input(*texts);
  FactsCounter counter;
  const auto read = [&](size_t i, char* out, size_t room, size_t* length) {
    const jwnls_text text = input.at(i);
    int code = JWNLS_MISSING;
    uint8_t found = 0;
    if (text.bytes != nullptr) {
      code =
          jwnls_read_decimal(layout, text.bytes, text.length, out, room, length, nullptr, &found);
    }
    if (code != JWNLS_ROOM) counter.count(i, code, found);
    return code;
  };
  const size_t done = write_texts(input.count(), *column, read);
  counter.add_to(facts);
  return done;
}

size_t jwnls_write_decimals(const jwnls_layout* layout, const jwnls_texts* decimals,
                            const jwnls_column* column) {
  const Texts input(*decimals);
  return write_texts(
      input.count(), *column, [&](size_t i, char* out, size_t room, size_t* length) -> int {
        const jwnls_text text = input.at(i);
        if (text.bytes == nullptr) return JWNLS_MISSING;
        return jwnls_write_decimal(layout, text.bytes, text.length, out, room, length);
      });
}

}  // extern "C"
