// Columns of dates, datetimes, instants, times and periods.

#include "include/jwnls/jwnls.h"
#include "library/columns/read_column.h"
#include "library/columns/write_column.h"

using jwnls::library::read_column;
using jwnls::library::write_column;

extern "C" {

size_t jwnls_read_dates(const jwnls_layout* layout, const jwnls_texts* texts, int32_t* days,
                        uint8_t* codes, jwnls_column_facts* facts) {
  return read_column(layout, texts, int32_t{0}, jwnls_read_date, days, codes, facts);
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
