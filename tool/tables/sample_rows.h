// The rows at a table's begin, for what its values decide.

#ifndef JWNLS_TOOL_TABLES_SAMPLE_ROWS_H_
#define JWNLS_TOOL_TABLES_SAMPLE_ROWS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "tool/tables/byte_source.h"
#include "tool/tables/field_scanner.h"
#include "tool/tables/table_head.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

/// The whole rows in the first job.sample_bytes behind the header, but blank lines and, unless they
/// are converted, rows of another length. The source keeps them to be read.
class SampleRows : public TableSample {
 public:
  /// Waits until there are so many, or the end. Throws Failure{io}.
  SampleRows(ByteSource& source, const TableJob& job, const TableHead& head);

  [[nodiscard]] std::vector<std::string> texts(std::size_t field) const override;
  [[nodiscard]] const std::vector<std::uint64_t>& lines() const override { return lines_; }

 private:
  struct RowMarks {
    std::size_t begin;
    std::size_t end;
    std::size_t first_mark;
    std::size_t fields;
  };

  std::string text_;
  bool quotes_;
  FieldMarks marks_;
  std::vector<RowMarks> rows_;
  std::vector<std::uint64_t> lines_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_SAMPLE_ROWS_H_
