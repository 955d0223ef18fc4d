// Columns of dates, datetimes, instants, times and periods.

#include "include/jwnls/jwnls.h"
#include "library/columns/read_column.h"
#include "library/columns/write_column.h"
#include "library/dates/usual_date.h"

using jwnls::library::has_usual_dates;
using jwnls::library::read_column;
using jwnls::library::read_usual_days;
using jwnls::library::write_column;

extern "C" {

size_t jwnls_read_dates(const jwnls_layout* layout, const jwnls_texts* texts, int32_t* days,
                        uint8_t* codes, jwnls_column_facts* facts) {
  const bool usual = has_usual_dates(*layout);
  const auto read = [usual](const jwnls_layout* by, const char* text, size_t length, int32_t* value,
                            uint8_t* found) -> int {
    if (usual && read_usual_days(*by, text, length, value, *found)) return JWNLS_OK;
    return jwnls_read_date(by, text, length, value, found);
  };
  return read_column(layout, texts, int32_t{0}, read, days, codes, facts);
}

size_t jwnls_read_datetimes(const jwnls_layout* layout, const jwnls_texts* texts,
                            int64_t* microseconds, uint8_t* codes, jwnls_column_facts* facts) {
  return read_column(layout, texts, int64_t{0}, jwnls_read_datetime, microseconds, codes, facts);
}

size_t jwnls_read_times(const jwnls_layout* layout, const jwnls_texts* texts, int64_t* microseconds,
                        uint8_t* codes, jwnls_column_facts* facts) {
  return read_column(layout, texts, int64_t{0}, jwnls_read_time, microseconds, codes, facts);
}

size_t jwnls_write_dates(const jwnls_layout* layout, const int32_t* days, size_t count,
                         const jwnls_column* column) {
  return write_column(layout, days, count, column, jwnls_write_date);
}

size_t jwnls_write_datetimes(const jwnls_layout* layout, const int64_t* microseconds, size_t count,
                             const jwnls_column* column) {
  return write_column(layout, microseconds, count, column, jwnls_write_datetime);
}

size_t jwnls_write_times(const jwnls_layout* layout, const int64_t* microseconds, size_t count,
                         const jwnls_column* column) {
  return write_column(layout, microseconds, count, column, jwnls_write_time);
}

}  // extern "C"
