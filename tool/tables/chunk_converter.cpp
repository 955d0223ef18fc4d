#include "tool/tables/chunk_converter.h"

#include <algorithm>

namespace jwnls::tool {

const ChunkOutcome& ChunkConverter::convert(const Chunk& chunk, std::uint64_t rejects_allowed,
                                            std::uint64_t messages_left) {
  fields_.start(chunk, rejects_allowed, messages_left);
  if (plan_.job.json_lines) {
    walk(chunk, json_);
  } else {
    walk(chunk, csv_);
  }
  return fields_.outcome();
}

// A row has the header's length when the mark that its last field would have is the row's end: both
// arrays ascend, and each row's end stands in both.
template <typename Rows>
void ChunkConverter::walk(const Chunk& chunk, Rows& rows) {
  const FieldMarks& marks = chunk.marks;
  const std::uint32_t* fields = marks.fields();
  const std::size_t expected = std::max<std::size_t>(plan_.header.fields, 1);
  rows.start(chunk);
  bool is_stopped = false;
  Row row{chunk.bytes.data(), 0, 0, fields, expected, 0, true};
  std::size_t first_mark = 0;
  for (std::size_t index = 0; index < marks.row_count && !is_stopped; ++index) {
    row.marks = fields + first_mark;
    if (const std::size_t taken = rows.rows(chunk, index, row); taken > 0) {
      index += taken - 1;
      first_mark += taken * expected;
      row.number += taken;
      row.begin = marks.rows()[index] + std::size_t{1};
      continue;
    }
    row.end = marks.rows()[index];
    row.has_line_feed = row.end < chunk.size;
    row.fields = expected;
    if (row.fields > marks.field_count - first_mark || row.marks[row.fields - 1] != row.end) {
      row.fields = 1;
      while (row.marks[row.fields - 1] != row.end) ++row.fields;
    }
    first_mark += row.fields;
    if (row.fields == 1 && row.text_end() == row.begin) {
      rows.blank_row(row);
    } else {
      is_stopped = !visit(row, rows);
      ++row.number;
    }
    row.begin = row.end + 1;
  }
  const std::size_t end = is_stopped ? std::min(row.begin, chunk.size) : chunk.size;
  (void)fields_.finish(rows.finish(end), row.number, end, is_stopped);
}

template <typename Rows>
bool ChunkConverter::visit(const Row& row, Rows& rows) {
  return row.fields == plan_.header.fields ? rows.row(row) : rows.other_row(row);
}

}  // namespace jwnls::tool
