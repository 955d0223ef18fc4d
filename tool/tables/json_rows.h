// Writes rows as JSON objects, one a line.

#ifndef JWNLS_TOOL_TABLES_JSON_ROWS_H_
#define JWNLS_TOOL_TABLES_JSON_ROWS_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tool/json_text.h"
#include "tool/tables/field_converter.h"

namespace jwnls::tool {

/// Converted columns are numbers where their values are; missing values are null; the rest are
/// strings. Rows of another length have their fields as strings, those beyond the header under
/// their number. Blank lines are left out.
class JsonRows {
 public:
  JsonRows(const TablePlan& plan, FieldConverter& fields);

  void start(const Chunk&) { out_.clear(); }
  /// None are converted together.
  std::size_t rows(const Chunk&, std::size_t, const Row&) { return 0; }
  bool row(const Row& row) { return write(row, false); }
  bool other_row(const Row& row);
  void blank_row(const Row&) {}
  std::string_view finish(std::size_t) const { return out_; }

 private:
  bool write(const Row& row, bool is_other);
  bool add_converted(const Row& row, std::size_t column);
  void add_columns(const Row& row, bool& all_read);
  void add_string(std::string_view text);

  const TablePlan& plan_;
  FieldConverter& fields_;
  std::vector<std::string> keys_;        // "name": of each field, and the comma before it
  std::vector<std::string> added_keys_;  // of added columns, then of currencies
  std::vector<std::size_t> column_of_;   // of each field: its column, or none
  std::vector<FieldValue> values_;
  std::array<char, ColumnValues::room> value_{};
  std::string undoubled_;
  std::string out_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_JSON_ROWS_H_
