// The converted fields of consecutive rows, column by column.

#ifndef JWNLS_TOOL_TABLES_ROW_BATCH_H_
#define JWNLS_TOOL_TABLES_ROW_BATCH_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tool/tables/chunk_reader.h"
#include "tool/tables/field_converter.h"
#include "tool/tables/table_plan.h"
#include "tool/tables/value_batch.h"

namespace jwnls::tool {

/// Of one thread.
class RowBatch {
 public:
  // No cache line of it is another thread's, too.
  struct alignas(64) Column {
    std::size_t field;
    std::size_t column;  // of the plan
    const ColumnValues* converter;
    bool is_last;  // of the table: a carriage return may stand behind its text
    bool may_need_quotes;
    TextBatch texts;
    ValueBatch values;
  };

  explicit RowBatch(const TablePlan& plan);

  /// False where each value has more to tell than its text, or may be the last one.
  [[nodiscard]] bool is_usable() const { return !columns_.empty(); }

  /// Takes rows from a row's number and first mark on, as long as they have the header's length, a
  /// line end, and texts as they are usual.
  void gather(const Chunk& chunk, std::size_t row, std::size_t first_mark);
  [[nodiscard]] std::size_t rows() const { return rows_; }
  [[nodiscard]] std::size_t fields() const { return fields_; }

  /// Converts them, and has them counted that are read.
  void convert(FieldConverter& fields);

  [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
  /// The bytes that all values take at most in a row, quotes among them.
  [[nodiscard]] std::size_t most_bytes() const;

 private:
  std::size_t add_texts(Column& column, const char* bytes, const std::uint32_t* marks);
  bool add_long_or_quoted(TextBatch::Filler& texts, std::string_view field);

  const std::size_t fields_;
  const bool quotes_;
  std::vector<Column> columns_;
  std::size_t rows_ = 0;
  std::string undoubled_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_ROW_BATCH_H_
