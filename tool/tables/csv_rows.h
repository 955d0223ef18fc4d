// Writes rows as they stand, with other bytes where fields are converted.

#ifndef JWNLS_TOOL_TABLES_CSV_ROWS_H_
#define JWNLS_TOOL_TABLES_CSV_ROWS_H_

#include <cstddef>
#include <string_view>
#include <vector>

#include "tool/tables/field_converter.h"
#include "tool/tables/growing_array.h"

namespace jwnls::tool {

class CsvRows {
 public:
  CsvRows(const TablePlan& plan, FieldConverter& fields)
      : plan_(plan), fields_(fields), values_(plan.columns.size()) {}

  void start(const Chunk& chunk);
  /// A row of the header's length; false when nothing from it on is wanted.
  bool row(const Row& row);
  /// A row of another length.
  bool other_row(const Row& row);
  /// Blank lines are handed through.
  void blank_row(const Row&) {}
  /// Up to `end` of the chunk; valid until the next start().
  std::string_view finish(std::size_t end);

 private:
  bool convert_in_place(const Row& row);
  bool add_columns(const Row& row);
  bool is_taken_as_missing(const FieldValue& value) const {
    return value.outcome == FieldOutcome::missing || plan_.job.invalid == Invalid::empty;
  }
  bool end_row(const Row& row, bool refused);
  void copy_up_to(std::size_t end);
  void append(std::string_view text);
  void write_value(std::size_t length);

  const TablePlan& plan_;
  FieldConverter& fields_;
  const char* bytes_ = nullptr;
  std::size_t copied_ = 0;  // bytes of the chunk up to here are written, or left out
  GrowingArray<char> out_;
  std::size_t size_ = 0;
  std::size_t row_size_ = 0;        // of the output where the row begins, and
  std::size_t row_copied_ = 0;      // of the chunk what was copied then
  std::vector<FieldValue> values_;  // of the row's columns, for those that add their currency
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_CSV_ROWS_H_
