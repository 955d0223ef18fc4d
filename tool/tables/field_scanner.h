// Finds where fields and rows of a table end: separators and line ends outside quotes.

#ifndef JWNLS_TOOL_TABLES_FIELD_SCANNER_H_
#define JWNLS_TOOL_TABLES_FIELD_SCANNER_H_

#include <cstddef>
#include <cstdint>

#include "tool/tables/growing_array.h"

namespace jwnls::tool {

/// What a scanner found, as offsets from the begin of the text, ascending.
struct FieldMarks {
  std::size_t field_count = 0;
  std::size_t row_count = 0;
  std::uint64_t line_feeds = 0;  // all of them, also in quotes

  /// Where fields end: at a separator or a line end. Before the first one stands that of the row
  /// before, -1, so that every field begins one behind the end before it, modulo 2^32.
  [[nodiscard]] const std::uint32_t* fields() const { return fields_.data() + 1; }
  /// Where rows end: at a line end; these offsets are among those of the fields, too.
  [[nodiscard]] const std::uint32_t* rows() const { return rows_.data(); }

  void clear() { field_count = row_count = line_feeds = 0; }
  void reserve(std::size_t more);
  void add_field(std::uint32_t at) {
    *new_fields() = at;
    ++field_count;
  }
  void add_row(std::uint32_t at) { rows_.data()[row_count++] = at; }
  /// Where the next ones are written; reserve() made room.
  [[nodiscard]] std::uint32_t* new_fields() { return fields_.data() + 1 + field_count; }

 private:
  GrowingArray<std::uint32_t> fields_;
  GrowingArray<std::uint32_t> rows_;
};

/// Goes over a text in pieces of any size. The rules, byte by byte:
///
///   at a field's begin   a quote opens, and from there all is text up to the quote that closes
///   behind a closed one  another quote opens again (it was doubled); anything else but a separator
///                        or a line end is text up to these
///   in plain text        a quote is a character like any other
///
/// A line end is a line feed. What stands before it, a carriage return, is the reader's matter.
class FieldScanner {
 public:
  /// `separator` is neither a quote nor a line feed.
  FieldScanner(char separator, bool quotes) : separator_(separator), quotes_(quotes) {}

  /// Adds the marks of text[begin, end), which goes on where the last piece ended. 64 bytes at a
  /// time where the machine can.
  void scan(const char* text, std::size_t begin, std::size_t end, FieldMarks& marks);

  /// The same without instructions that some machines of the family lack.
  void scan_anywhere(const char* text, std::size_t begin, std::size_t end, FieldMarks& marks);

  /// The same, byte by byte.
  void scan_bytes(const char* text, std::size_t begin, std::size_t end, FieldMarks& marks);

  /// True when a quote is open.
  [[nodiscard]] bool is_inside() const { return state_ == State::quoted; }

  /// Where in text[0, end), which is a row's begin, the quote stands that is still open at its end.
  [[nodiscard]] std::size_t open_quote(const char* text, std::size_t end) const;

 private:
  enum class State : std::uint8_t { field_begin, plain, quoted, quote_closed };
  struct Carry;

  [[nodiscard]] State after(State state, char byte) const;
  void scan_block(const char* text, std::size_t base, Carry& carry, FieldMarks& marks);
  void scan_blocks(const char* text, std::size_t begin, std::size_t end, FieldMarks& marks);
  void scan_with_bits(const char* text, std::size_t begin, std::size_t end, FieldMarks& marks);

  char separator_;
  bool quotes_;
  State state_ = State::field_begin;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_FIELD_SCANNER_H_
