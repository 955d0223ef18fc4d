// The text of a field: what stands between its quotes, and quotes for texts that need them.

#ifndef JWNLS_TOOL_TABLES_FIELD_TEXT_H_
#define JWNLS_TOOL_TABLES_FIELD_TEXT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jwnls::tool {

/// The text of a field as it stands in a table: without the quotes around it, inner ones undoubled,
/// for which `undoubled` is used. None where something stands behind the closing quote.
std::optional<std::string_view> text_of_field(std::string_view field, std::string& undoubled);

/// The same for what is shown: a field with something behind its closing quote as it stands.
[[nodiscard]] std::string shown_text(std::string_view field, bool quotes);

/// Whether a text of a table with this separator stands in quotes.
[[nodiscard]] bool needs_quotes(std::string_view text, char separator);

/// Adds the text, in quotes where it needs them.
void append_field(std::string& out, std::string_view text, char separator);

/// True for a text of nothing but blanks, tabs and the blanks of Unicode.
[[nodiscard]] bool is_blank(std::string_view text);

/// The bytes of a text up to the first that is not UTF-8, or all of them.
[[nodiscard]] std::size_t utf8_bytes(std::string_view text);

/// True for UTF-8, without surrogates and overlong forms.
[[nodiscard]] bool is_utf8(std::string_view text);

/// The fields of the row that `text` begins with.
struct RowFields {
  std::vector<std::string_view> fields;  // with their quotes; the last without a carriage return
  std::size_t size = 0;                  // of the row with its line end
};

/// None where the row does not end in `text`; `at_end` tells that nothing follows `text`.
std::optional<RowFields> first_row(std::string_view text, char separator, bool quotes, bool at_end);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_FIELD_TEXT_H_
