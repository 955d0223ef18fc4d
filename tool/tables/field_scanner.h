// Finds where fields and rows of a table end: separators and line ends outside quotes.

#ifndef JWNLS_TOOL_TABLES_FIELD_SCANNER_H_
#define JWNLS_TOOL_TABLES_FIELD_SCANNER_H_

#include <cstddef>
#include <cstdint>

#include "tool/tables/growing_array.h"

namespace jwnls::tool {

/// What a scanner found, as offsets from the begin of the text, ascending.
struct FieldMarks {
  GrowingArray<std::uint32_t> fields;  // where a field ends: at a separator or a line end
  GrowingArray<std::uint32_t> rows;    // where a row ends: at a line end; in `fields`, too
  std::size_t field_count = 0;
  std::size_t row_count = 0;
  std::uint64_t line_feeds = 0;  // all of them, also in quotes

  void clear() { field_count = row_count = line_feeds = 0; }
  void reserve(std::size_t more);
  void add_field(std::uint32_t at) { fields.data()[field_count++] = at; }
  void add_row(std::uint32_t at) { rows.data()[row_count++] = at; }
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

  char separator_;
  bool quotes_;
  State state_ = State::field_begin;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_FIELD_SCANNER_H_
