// What is said about the values and rows of a chunk that were refused.

#ifndef JWNLS_TOOL_TABLES_REJECT_LIST_H_
#define JWNLS_TOOL_TABLES_REJECT_LIST_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tool/tables/byte_source.h"
#include "tool/tables/chunk_reader.h"
#include "tool/tables/table_plan.h"

namespace jwnls::tool {

/// Of one thread; used again for each chunk. All are counted, and of the first ones the messages
/// are made, or of all the lines of a file of rejects. What is only counted costs nothing else.
class RejectList {
 public:
  static constexpr std::string_view file_header = "row,line,column,name,byte,text,reason\n";

  RejectList(const TablePlan& plan, const ByteSource& source) : plan_(plan), source_(source) {}

  void start(const Chunk& chunk, std::uint64_t messages_left);

  /// Whether the next one is to be described by add_value() or add_row().
  [[nodiscard]] bool describes_next() const {
    return messages_.size() < messages_left_ || !plan_.job.rejects.empty();
  }
  /// Counts one, and says so.
  bool count() {
    ++count_;
    return describes_next();
  }
  /// `row` counts from 0 in the chunk, `offset` is that of the field or row.
  void add_value(std::uint64_t row, std::size_t offset, const ConvertedColumn& column,
                 std::string_view text, std::string_view reason);
  void add_row(std::uint64_t row, std::size_t offset, std::size_t fields, std::string_view text);

  [[nodiscard]] std::uint64_t counted() const { return count_; }
  [[nodiscard]] const std::vector<std::string>& messages() const { return messages_; }
  /// The lines of a file of rejects; `rows_before` stand before the chunk.
  void append_file_lines(std::string& out, std::uint64_t rows_before) const;

 private:
  struct Line {
    std::uint64_t row;
    std::string rest;  // behind the row's number
  };
  std::uint64_t line_at(std::size_t offset);
  void add_line(std::uint64_t row, std::size_t offset, const ConvertedColumn* column,
                std::string_view text, std::string_view reason);

  const TablePlan& plan_;
  const ByteSource& source_;
  const Chunk* chunk_ = nullptr;
  std::uint64_t messages_left_ = 0;
  std::uint64_t count_ = 0;
  std::size_t known_offset_ = 0;  // whose line is known
  std::uint64_t known_line_ = 1;
  std::vector<std::string> messages_;
  std::vector<Line> lines_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_REJECT_LIST_H_
