// Text in columns of a terminal: how wide it is, and how it keeps its place among other columns.

#ifndef JWNLS_TOOL_TERMINAL_TEXT_H_
#define JWNLS_TOOL_TERMINAL_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace jwnls::tool {

/// The cells that UTF-8 text takes: 2 for wide characters (Chinese, Japanese, Korean), 0 for
/// combining and format characters, 1 for the rest.
[[nodiscard]] std::size_t cell_width(std::string_view text);

/// The text between U+2068 and U+2069 when it holds right-to-left letters, so that a terminal that
/// orders text by direction leaves the columns beside it where they are; other text as it is. The
/// marks take no cell.
[[nodiscard]] std::string isolated(std::string_view text);

/// The text in at least `cells` cells, with blanks in front or behind.
[[nodiscard]] std::string padded(std::string_view text, std::size_t cells, bool left);

/// The text with "\x1B" and "\u202E" in place of what a terminal would obey: control characters,
/// marks of the writing direction, line separators, bytes that are no UTF-8.
[[nodiscard]] std::string escaped(std::string_view text);

/// The text between single quotes; more than 80 bytes are cut, with "..." behind them.
[[nodiscard]] std::string in_quotes(std::string_view text);

/// The columns of the terminal that standard output is; 0 when it is none, or does not say.
[[nodiscard]] std::size_t terminal_columns();

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TERMINAL_TEXT_H_
