// Converts fields of a chunk, counts what becomes of them and describes those that are refused.

#ifndef JWNLS_TOOL_TABLES_FIELD_CONVERTER_H_
#define JWNLS_TOOL_TABLES_FIELD_CONVERTER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tool/tables/chunk_outcome.h"
#include "tool/tables/chunk_reader.h"
#include "tool/tables/reject_list.h"
#include "tool/tables/table_plan.h"

namespace jwnls::tool {

/// A row of a chunk.
struct Row {
  const char* bytes;  // of the chunk
  std::size_t begin;
  std::size_t end;             // where its line end stands
  const std::uint32_t* marks;  // where each field ends; the last one's is `end`
  std::size_t fields;
  std::uint64_t number;  // in the chunk, from 0

  /// Where the last field ends: a carriage return before the line feed is not part of it. The end
  /// of an input without a line feed stands where `end` is, and no carriage return belongs to it.
  [[nodiscard]] std::size_t text_end() const {
    return end > begin && bytes[end - 1] == '\r' && has_line_feed ? end - 1 : end;
  }
  [[nodiscard]] std::size_t field_begin(std::size_t field) const {
    return field == 0 ? begin : marks[field - 1] + std::size_t{1};
  }
  [[nodiscard]] std::size_t field_end(std::size_t field) const {
    return field + 1 < fields ? marks[field] : text_end();
  }
  [[nodiscard]] std::string_view field(std::size_t index) const {
    const std::size_t at = field_begin(index);
    return {bytes + at, field_end(index) - at};
  }
  [[nodiscard]] std::string_view text() const { return {bytes + begin, text_end() - begin}; }

  bool has_line_feed;
};

class FieldConverter {
 public:
  FieldConverter(const TablePlan& plan, const ByteSource& source);

  /// `rejects_allowed`: the one that is more stops the run.
  void start(const Chunk& chunk, std::uint64_t rejects_allowed, std::uint64_t messages_left);

  /// Converts a column's field into `out`, which has ColumnValues::room.
  FieldValue convert(const Row& row, std::size_t column, char* out);

  /// Counts a row of another length.
  void refuse_row(const Row& row);

  /// The text between the quotes that convert() last converted.
  [[nodiscard]] std::string_view text() const { return text_; }

  /// True for a text that a table has in quotes.
  [[nodiscard]] bool needs_quotes(const char* text, std::size_t size) const {
    bool needs = false;
    for (std::size_t at = 0; at < size; ++at) {
      needs |= is_special_[static_cast<unsigned char>(text[at])];
    }
    return needs;
  }

  [[nodiscard]] bool is_stopped() const { return rejects_.counted() > rejects_allowed_; }
  [[nodiscard]] ChunkOutcome& outcome() { return outcome_; }
  [[nodiscard]] const RejectList& rejects() const { return rejects_; }

 private:
  void refuse(const Row& row, std::size_t column, const char* cause);

  const TablePlan& plan_;
  bool quotes_;
  std::array<bool, 256> is_special_{};
  RejectList rejects_;
  ChunkOutcome outcome_;
  std::uint64_t rejects_allowed_ = 0;
  std::string undoubled_;
  std::string_view text_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_FIELD_CONVERTER_H_
