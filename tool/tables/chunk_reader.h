// The first turnstile: threads take chunks of whole rows from the input, one after the other.

#ifndef JWNLS_TOOL_TABLES_CHUNK_READER_H_
#define JWNLS_TOOL_TABLES_CHUNK_READER_H_

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tool/exit_code.h"
#include "tool/tables/byte_source.h"
#include "tool/tables/field_scanner.h"
#include "tool/tables/growing_array.h"

namespace jwnls::tool {

constexpr const char* open_quote_message = "a quote is opened here and not closed";
constexpr const char* long_row_message = "the row is longer than 16 MiB";

/// Whole rows and where their fields end. One for each thread, used again and again.
struct Chunk {
  /// Bytes behind the text that may be read, whatever they are.
  static constexpr std::size_t slack = 64;

  GrowingArray<char> bytes;
  std::size_t size = 0;  // of the rows
  FieldMarks marks;  // the last row of an input that ends without a line end has a mark at `size`
  std::uint64_t ticket = 0;
  std::uint64_t first_byte = 0;    // of the input, from 0
  std::uint64_t first_line = 1;    // of the input, from 1
  std::optional<Failure> failure;  // what ends the input behind these rows
};

class ChunkReader {
 public:
  static constexpr std::size_t longest_row = 16 * 1024 * 1024;

  /// The source stands at the begin of a row: the byte and the line that are given.
  ChunkReader(ByteSource& source, FieldScanner scanner, std::size_t chunk_bytes,
              std::uint64_t first_byte, std::uint64_t first_line);

  /// Fills the chunk with the next rows, and gives it its ticket; false behind the last one. Waits
  /// for input only while not a single row is there. Any thread.
  bool next(Chunk& chunk);

 private:
  void take_tail(Chunk& chunk);
  bool fill(Chunk& chunk);
  void cut(Chunk& chunk);
  void end_input(Chunk& chunk);
  void fail_at(Chunk& chunk, std::size_t offset, const char* what);

  std::mutex mutex_;
  ByteSource& source_;
  FieldScanner scanner_;
  std::size_t chunk_bytes_;
  std::uint64_t next_byte_;
  std::uint64_t next_line_;
  std::uint64_t next_ticket_ = 0;
  bool at_end_ = false;
  // The begin of a row that was read with the rows before it, and scanned.
  std::string tail_;
  std::vector<std::uint32_t> tail_fields_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_CHUNK_READER_H_
