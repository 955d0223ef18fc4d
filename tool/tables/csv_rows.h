// Writes rows as they stand, with other bytes where fields are converted.

#ifndef JWNLS_TOOL_TABLES_CSV_ROWS_H_
#define JWNLS_TOOL_TABLES_CSV_ROWS_H_

#include <cstddef>
#include <string_view>
#include <vector>

#include "tool/tables/block_masks.h"
#include "tool/tables/field_converter.h"
#include "tool/tables/growing_array.h"
#include "tool/tables/row_batch.h"

namespace jwnls::tool {

class CsvRows {
 public:
  CsvRows(const TablePlan& plan, FieldConverter& fields)
      : plan_(plan),
        fields_(fields),
        specials_(plan.header.separator, plan.job.quotes ? '"' : '\n', '\n', '\r'),
        keeps_values_(!plan.currencies.empty()),
        values_(plan.columns.size()),
        batch_(plan) {
    for (const std::size_t column : plan.in_place) {
      const ConvertedColumn& asked = plan.columns[column];
      in_place_.push_back(
          {asked.field, column, asked.values->may_need_quotes(plan.header.separator)});
    }
  }

  void start(const Chunk& chunk);
  /// A row of the header's length; false when nothing from it on is wanted.
  bool row(const Row& row);
  /// Rows of the header's length from this one on, as many as are converted together; gives how
  /// many, which may be none.
  std::size_t rows(const Chunk& chunk, std::size_t index, Row row);
  /// A row of another length.
  bool other_row(const Row& row);
  /// Blank lines are handed through.
  void blank_row(const Row&) {}
  /// Up to `end` of the chunk; valid until the next start().
  std::string_view finish(std::size_t end);

 private:
  struct InPlace {
    std::size_t field;
    std::size_t column;
    bool may_need_quotes;
  };

  // How far the output goes, and up to where the chunk is in it.
  struct Written {
    char* end;
    const char* copied;
  };

  bool write_read(const std::uint32_t* marks, std::size_t index, Written& written) const;
  bool write_batched(const Row& row, std::size_t index);
  bool convert_in_place(const Row& row);
  bool add_columns(const Row& row);
  void add_currencies();
  bool keep_or_empty(const Row& row, std::size_t column, std::string_view field, FieldValue& value);
  bool end_row(const Row& row, bool all_read);
  bool is_taken_as_missing(const FieldValue& value) const {
    return value.outcome == FieldOutcome::missing || plan_.job.invalid == Invalid::empty;
  }

  void copy_up_to(const char* end);
  void append(std::string_view text);
  bool write_value(std::size_t length, bool may_need_quotes);
  bool write_in_quotes(std::size_t length);

  const TablePlan& plan_;
  FieldConverter& fields_;
  const AnyOfFour specials_;  // with one of these a value stands in quotes
  std::vector<InPlace> in_place_;
  const bool keeps_values_;
  const char* bytes_ = nullptr;
  const char* copied_ = nullptr;  // the chunk up to here is written, or left out
  GrowingArray<char> out_;
  std::size_t size_ = 0;
  std::size_t row_size_ = 0;          // of the output where the row begins, and
  const char* row_copied_ = nullptr;  // of the chunk what was copied then
  std::vector<FieldValue> values_;    // of the row's columns, for those that add their currency
  RowBatch batch_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_CSV_ROWS_H_
