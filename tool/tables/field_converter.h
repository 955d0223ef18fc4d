// Converts fields of a chunk, counts what becomes of them and describes those that are refused.

#ifndef JWNLS_TOOL_TABLES_FIELD_CONVERTER_H_
#define JWNLS_TOOL_TABLES_FIELD_CONVERTER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/tables/chunk_outcome.h"
#include "tool/tables/chunk_reader.h"
#include "tool/tables/reject_list.h"
#include "tool/tables/report_collector.h"
#include "tool/tables/table_plan.h"

namespace jwnls::tool {

/// A row of a chunk.
struct Row {
  const char* bytes;  // of the chunk
  std::size_t begin;
  std::size_t end;             // where its line end stands
  const std::uint32_t* marks;  // where each field ends; before them the end of the row before
  std::size_t fields;
  std::uint64_t number;  // in the chunk, from 0

  /// Where the last field ends: a carriage return before the line feed is not part of it. The end
  /// of an input without a line feed stands where `end` is, and no carriage return belongs to it.
  [[nodiscard]] std::size_t text_end() const {
    return end > begin && bytes[end - 1] == '\r' && has_line_feed ? end - 1 : end;
  }
  [[nodiscard]] std::size_t field_begin(std::size_t field) const {
    return marks[static_cast<std::ptrdiff_t>(field) - 1] + std::uint32_t{1};
  }
  [[nodiscard]] std::string_view field(std::size_t index) const {
    const std::size_t at = field_begin(index);
    return {bytes + at, (index + 1 < fields ? marks[index] : text_end()) - at};
  }
  [[nodiscard]] std::string_view text() const { return {bytes + begin, text_end() - begin}; }

  bool has_line_feed;
};

class FieldConverter {
 public:
  FieldConverter(const TablePlan& plan, const ByteSource& source);

  /// `rejects_allowed`: the one that is more stops the run.
  void start(const Chunk& chunk, std::uint64_t rejects_allowed, std::uint64_t messages_left);

  /// Converts a column's field, which is `field`, into `out`, which has ColumnValues::room. The
  /// value is the converter's own, until the next one.
  FieldValue& convert(const Row& row, std::size_t column, std::string_view field, char* out) {
    Column& hot = columns_[column];
    text_ = field;
    if (quotes_ && field.starts_with('"')) {
      if (!unquote(row, column)) return value_ = {};
      field = text_;
    }
    hot.values->convert_into(field, out, value_);
    if (value_.outcome == FieldOutcome::read) {
      const unsigned facts = value_.facts & (JWNLS_TWO_WAYS | JWNLS_DECIDES);
      if (++hot.read[facts] == 1 && (facts & JWNLS_TWO_WAYS) != 0) keep_two_ways(column, field);
      if (report_) report_->add_read(column, field, {out, value_.length}, value_);
    } else {
      count_not_read(row, column, value_.outcome);
    }
    return value_;
  }

  /// Counts what was read of a column's fields in one call.
  void count_read(std::size_t column, const TextBatch& texts, const ValueBatch& values) {
    ColumnCounts& counts = columns_[column].batches;
    if (values.two_ways > 0 && counts.two_ways == 0) {
      keep_two_ways(column, texts.text(values.first_two_ways));
    }
    counts.read += values.read;
    counts.two_ways += values.two_ways;
    counts.deciding += values.deciding;
  }
  /// Counts one of the others, and describes it where it is refused; text() is then that of the
  /// field.
  void count_unread(const Row& row, std::size_t column, std::string_view field, bool is_missing);
  /// Whether refused ones are no more than counted from here on, for which count_refused() is
  /// enough.
  [[nodiscard]] bool only_counts() const { return !report_ && !rejects_.describes_next(); }
  void count_refused(std::size_t column) {
    ++columns_[column].refused;
    (void)rejects_.count();
  }

  /// What convert() read cannot be written after all: it is refused.
  void take_back(const Row& row, std::size_t column, const FieldValue& value);

  /// Counts a row of another length.
  void refuse_row(const Row& row);
  void count_malformed() { ++outcome_.malformed; }

  /// The text between the quotes that convert() last converted.
  [[nodiscard]] std::string_view text() const { return text_; }

  [[nodiscard]] bool is_stopped() const { return rejects_.counted() > rejects_allowed_; }
  /// The counts of columns and of refused rows since start(); the rows end at an offset.
  const ChunkOutcome& finish(std::string_view text, std::uint64_t rows, std::size_t end,
                             bool is_stopped);
  [[nodiscard]] const ChunkOutcome& outcome() const { return outcome_; }
  [[nodiscard]] const RejectList& rejects() const { return rejects_; }
  /// Null where no report is asked for.
  [[nodiscard]] const ReportCollector* report() const { return report_ ? &*report_ : nullptr; }

 private:
  // What each field needs, together. It changes with each of them: no cache line of it is another
  // thread's, or holds what all threads read.
  struct alignas(64) Column {
    const ColumnValues* values;
    std::uint64_t missing;
    std::uint64_t refused;
    std::array<std::uint64_t, 4> read;  // for each combination of their facts
    ColumnCounts batches;               // what was read in one call
  };

  bool unquote(const Row& row, std::size_t column);
  void count_not_read(const Row& row, std::size_t column, FieldOutcome outcome);
  void refuse(const Row& row, std::size_t column, const char* cause);
  void keep_two_ways(std::size_t column, std::string_view text);

  const TablePlan& plan_;
  const bool quotes_;
  std::vector<Column> columns_;
  RejectList rejects_;
  std::optional<ReportCollector> report_;
  ChunkOutcome outcome_;
  std::uint64_t rejects_allowed_ = 0;
  std::string undoubled_;
  std::string_view text_;
  FieldValue value_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_FIELD_CONVERTER_H_
