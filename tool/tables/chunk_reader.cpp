#include "tool/tables/chunk_reader.h"

#include <algorithm>

namespace jwnls::tool {

ChunkReader::ChunkReader(ByteSource& source, FieldScanner scanner, std::size_t chunk_bytes,
                         std::uint64_t first_byte, std::uint64_t first_line)
    : source_(source),
      scanner_(scanner),
      chunk_bytes_(std::clamp<std::size_t>(chunk_bytes, 1, longest_row)),
      next_byte_(first_byte),
      next_line_(first_line) {}

bool ChunkReader::next(Chunk& chunk) {
  const std::lock_guard lock(mutex_);
  if (at_end_) return false;
  take_tail(chunk);
  try {
    while (fill(chunk)) continue;
  } catch (const Failure& failure) {
    chunk.failure = failure;
    at_end_ = true;
  }
  cut(chunk);
  return true;
}

void ChunkReader::take_tail(Chunk& chunk) {
  chunk.failure.reset();
  chunk.ticket = next_ticket_++;
  chunk.first_byte = next_byte_;
  chunk.first_line = next_line_;
  chunk.size = tail_.size();
  chunk.bytes.reserve(0, tail_.size() + chunk_bytes_ + Chunk::slack);
  tail_.copy(chunk.bytes.data(), tail_.size());
  chunk.marks.clear();
  chunk.marks.reserve(tail_fields_.size());
  for (const std::uint32_t at : tail_fields_) chunk.marks.add_field(at);
  chunk.marks.line_feeds = static_cast<std::uint64_t>(std::count(tail_.begin(), tail_.end(), '\n'));
}

// Reads once; true while the chunk wants more.
bool ChunkReader::fill(Chunk& chunk) {
  const std::size_t wanted = tail_.size() + chunk_bytes_;
  const std::size_t room = wanted > chunk.size ? wanted - chunk.size : chunk_bytes_;
  // A long row gets all the room that it may need at once; memory is taken as it is used.
  if (chunk.size + room + Chunk::slack > chunk.bytes.capacity()) {
    chunk.bytes.reserve(chunk.size, longest_row + chunk_bytes_ + room + Chunk::slack);
  }
  const std::size_t count = source_.read(chunk.bytes.data() + chunk.size, room);
  if (count == 0) {
    end_input(chunk);
    return false;
  }
  scanner_.scan(chunk.bytes.data(), chunk.size, chunk.size + count, chunk.marks);
  chunk.size += count;
  FieldMarks& marks = chunk.marks;
  const std::size_t first_row = marks.row_count > 0 ? marks.rows()[0] : chunk.size;
  if (first_row > longest_row) {
    marks.row_count = 0;
    fail_at(chunk, 0, long_row_message);
    return false;
  }
  return marks.row_count == 0 || (chunk.size < wanted && source_.is_ready());
}

// The rows end behind the last line end; what follows is kept.
void ChunkReader::cut(Chunk& chunk) {
  FieldMarks& marks = chunk.marks;
  const std::uint32_t* rows = marks.rows();
  const std::size_t end =
      marks.row_count > 0 ? std::min<std::size_t>(rows[marks.row_count - 1] + 1U, chunk.size) : 0;
  const std::uint32_t* fields = marks.fields();
  std::size_t count = marks.field_count;
  while (count > 0 && fields[count - 1] >= end && fields[count - 1] < chunk.size) --count;
  tail_fields_.clear();
  for (std::size_t index = count; index < marks.field_count; ++index) {
    tail_fields_.push_back(fields[index] - static_cast<std::uint32_t>(end));
  }
  marks.field_count = count;
  const char* bytes = chunk.bytes.data();
  tail_.assign(bytes + end, bytes + chunk.size);
  marks.line_feeds -= static_cast<std::uint64_t>(std::count(bytes + end, bytes + chunk.size, '\n'));
  chunk.size = end;
  next_byte_ += end;
  next_line_ += marks.line_feeds;
}

void ChunkReader::end_input(Chunk& chunk) {
  at_end_ = true;
  FieldMarks& marks = chunk.marks;
  const std::size_t begin = marks.row_count > 0 ? marks.rows()[marks.row_count - 1] + 1U : 0;
  if (begin == chunk.size) return;
  if (scanner_.is_inside()) {
    const char* row = chunk.bytes.data() + begin;
    fail_at(chunk, begin + scanner_.open_quote(row, chunk.size - begin), open_quote_message);
    return;
  }
  marks.reserve(1);
  marks.add_field(static_cast<std::uint32_t>(chunk.size));
  marks.add_row(static_cast<std::uint32_t>(chunk.size));
}

void ChunkReader::fail_at(Chunk& chunk, std::size_t offset, const char* what) {
  at_end_ = true;
  const char* bytes = chunk.bytes.data();
  const auto before = static_cast<std::uint64_t>(std::count(bytes, bytes + offset, '\n'));
  chunk.failure = Failure{ExitCode::io, source_.place(chunk.first_line + before) + what};
}

}  // namespace jwnls::tool
