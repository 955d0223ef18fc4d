// What a report tells of a table, found chunk by chunk and put together in the order of the input:
// it does not depend on the number of threads.

#ifndef JWNLS_TOOL_TABLES_REPORT_COLLECTOR_H_
#define JWNLS_TOOL_TABLES_REPORT_COLLECTOR_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/reports/date_form.h"
#include "tool/reports/table_report.h"
#include "tool/reports/unread_texts.h"
#include "tool/reports/value_totals.h"
#include "tool/tables/chunk_outcome.h"
#include "tool/tables/chunk_reader.h"
#include "tool/tables/table_plan.h"

namespace jwnls::tool {

/// Of one thread: the values of a chunk. It holds no more texts than the chunk does.
class ReportCollector {
 public:
  explicit ReportCollector(const TablePlan& plan);

  void start(const Chunk& chunk);
  /// The chunk's rows are known up to an offset, and nothing behind it is wanted.
  void finish(std::size_t end_of_rows);
  /// A field's text that was read, what it became, and what is known of it.
  void add_read(std::size_t column, std::string_view text, std::string_view written,
                const FieldValue& value);
  /// One that was refused, at that offset of the chunk; `cause`: null where its layout refuses it.
  void add_refused(std::size_t column, std::string_view text, std::size_t offset,
                   const char* cause);

 private:
  friend class ReportBuilder;
  struct Column {
    ValueTotals totals;
    UnreadTexts texts;
    std::optional<bool> month_first;  // none: forms are not told
    DateForms forms = DateForms(std::numeric_limits<std::size_t>::max());
  };
  [[nodiscard]] bool is_taken_back(std::string_view written) const;
  [[nodiscard]] bool is_in_chunk(std::string_view text) const;

  const TablePlan& plan_;
  const Chunk* chunk_ = nullptr;
  std::vector<Column> columns_;
  std::size_t well_formed_ = 0;  // bytes of the chunk that are UTF-8
  bool is_well_formed_ = true;   // all are
  std::uint64_t both_ends_ = 0;  // line ends that are CR LF
  std::uint64_t line_feeds_ = 0;
  std::vector<char> room_;
};

/// Of the whole run: at most a thousand texts a column.
class ReportBuilder {
 public:
  explicit ReportBuilder(const TablePlan& plan);

  /// To be called in the order of the input.
  void add(const Chunk& chunk, const ReportCollector& found, const ChunkOutcome& outcome);

  /// `ended`: why the run ended before the end of its input; empty where it did not.
  [[nodiscard]] TableReport report(const std::string& input, const std::string& ended) const;

 private:
  static constexpr std::size_t forms_told = 20;
  struct Column {
    ValueTotals totals;
    UnreadTexts texts;
    DateForms forms = DateForms(forms_told);
    std::uint64_t untold = 0;
    ColumnCounts counts = {};
  };
  void add_text(const Chunk& chunk, std::size_t column, const UnreadText& text);
  void add_input(const Chunk& chunk, const ReportCollector& found);
  [[nodiscard]] ReportedColumn reported(std::size_t column) const;

  const TablePlan& plan_;
  std::uint64_t rows_ = 0;
  std::uint64_t ragged_ = 0;
  ReportedInput written_;
  std::vector<Column> columns_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_REPORT_COLLECTOR_H_
