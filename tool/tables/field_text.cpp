#include "tool/tables/field_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstring>

#include "tool/tables/field_scanner.h"

namespace jwnls::tool {

std::optional<std::string_view> text_of_field(std::string_view field, std::string& undoubled) {
  if (!field.starts_with('"')) return field;
  if (field.size() < 2 || !field.ends_with('"')) return std::nullopt;
  const std::string_view inner = field.substr(1, field.size() - 2);
  std::size_t quote = inner.find('"');
  if (quote == std::string_view::npos) return inner;
  undoubled.clear();
  std::size_t begin = 0;
  for (; quote != std::string_view::npos; quote = inner.find('"', begin)) {
    if (quote + 1 == inner.size() || inner[quote + 1] != '"') return std::nullopt;
    undoubled.append(inner.substr(begin, quote + 1 - begin));
    begin = quote + 2;
  }
  return undoubled.append(inner.substr(begin));
}

std::string shown_text(std::string_view field, bool quotes) {
  std::string undoubled;
  return std::string(quotes ? text_of_field(field, undoubled).value_or(field) : field);
}

bool needs_quotes(std::string_view text, char separator) {
  return std::any_of(text.begin(), text.end(), [separator](char each) {
    return each == separator || each == '"' || each == '\n' || each == '\r';
  });
}

void append_field(std::string& out, std::string_view text, char separator) {
  if (!needs_quotes(text, separator)) {
    out.append(text);
    return;
  }
  out.push_back('"');
  for (const char each : text) out.append(each == '"' ? 2 : 1, each);
  out.push_back('"');
}

bool is_blank(std::string_view text) {
  while (!text.empty()) {
    utf8proc_int32_t character = 0;
    const auto bytes = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                        static_cast<utf8proc_ssize_t>(text.size()), &character);
    if (bytes <= 0) return false;
    if (character != '\t' && utf8proc_category(character) != UTF8PROC_CATEGORY_ZS) return false;
    text.remove_prefix(static_cast<std::size_t>(bytes));
  }
  return true;
}

std::size_t utf8_bytes(std::string_view text) {
  constexpr std::uint64_t beyond_ascii = 0x8080808080808080;
  std::size_t at = 0;
  while (at < text.size()) {
    std::uint64_t word = 0;
    if (text.size() - at >= sizeof word) {
      std::memcpy(&word, text.data() + at, sizeof word);
      if ((word & beyond_ascii) == 0) {
        at += sizeof word;
        continue;
      }
    }
    utf8proc_int32_t character = 0;
    const auto bytes =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data() + at),
                         static_cast<utf8proc_ssize_t>(text.size() - at), &character);
    if (bytes <= 0) break;
    at += static_cast<std::size_t>(bytes);
  }
  return at;
}

bool is_utf8(std::string_view text) { return utf8_bytes(text) == text.size(); }

std::optional<RowFields> first_row(std::string_view text, char separator, bool quotes,
                                   bool at_end) {
  FieldScanner scanner(separator, quotes);
  FieldMarks marks;
  constexpr std::size_t piece = 4096;
  std::size_t end = 0;
  while (end < text.size() && marks.row_count == 0) {
    const std::size_t next = std::min(text.size(), end + piece);
    scanner.scan(text.data(), end, next, marks);
    end = next;
  }
  if (marks.row_count == 0 && (!at_end || scanner.is_inside())) return std::nullopt;
  std::size_t row_end = marks.row_count > 0 ? marks.rows()[0] : text.size();
  RowFields row;
  row.size = std::min(row_end + 1, text.size());
  if (row_end < text.size() && row_end > 0 && text[row_end - 1] == '\r') --row_end;
  std::size_t begin = 0;
  for (std::size_t index = 0; index < marks.field_count && begin <= row_end; ++index) {
    const std::size_t field_end = std::min<std::size_t>(marks.fields()[index], row_end);
    row.fields.push_back(text.substr(begin, field_end - begin));
    begin = marks.fields()[index] + 1U;
    if (field_end == row_end && begin > row_end) return row;
  }
  row.fields.push_back(text.substr(begin, row_end - begin));
  return row;
}

}  // namespace jwnls::tool
