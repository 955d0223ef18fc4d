#include "tool/terminal_text.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <utf8proc.h>

#include <algorithm>
#include <cstdio>

namespace jwnls::tool {
namespace {

constexpr std::string_view first_strong_isolate = "\u2068";
constexpr std::string_view pop_isolate = "\u2069";

// Calls `visit` with each character and its bytes; a malformed byte counts as U+FFFD.
template <typename Visit>
void for_each_character(std::string_view text, Visit visit) {
  while (!text.empty()) {
    utf8proc_int32_t character = 0;
    const auto read = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                       static_cast<utf8proc_ssize_t>(text.size()), &character);
    const std::size_t bytes = read > 0 ? static_cast<std::size_t>(read) : 1;
    visit(read > 0 ? character : 0xFFFD, text.substr(0, bytes));
    text.remove_prefix(bytes);
  }
}

// A line feed is obeyed too: messages are one line.
bool is_obeyed(utf8proc_int32_t character) {
  switch (utf8proc_category(character)) {
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
      return true;
    default:
      return false;
  }
}

int character_width(utf8proc_int32_t character) {
  // Vowel signs that stand beside their letter (Devanagari, Tamil, ...) take a cell in terminals;
  // the library counts every mark as none.
  if (utf8proc_category(character) == UTF8PROC_CATEGORY_MC) return 1;
  return utf8proc_charwidth(character);
}

bool is_right_to_left(utf8proc_int32_t character) {
  const auto direction = utf8proc_get_property(character)->bidi_class;
  return direction == UTF8PROC_BIDI_CLASS_R || direction == UTF8PROC_BIDI_CLASS_AL;
}

}  // namespace

std::size_t cell_width(std::string_view text) {
  std::size_t cells = 0;
  for_each_character(text, [&cells](utf8proc_int32_t character, std::string_view) {
    cells += static_cast<std::size_t>(std::max(character_width(character), 0));
  });
  return cells;
}

std::string isolated(std::string_view text) {
  bool right_to_left = false;
  for_each_character(text, [&right_to_left](utf8proc_int32_t character, std::string_view) {
    right_to_left = right_to_left || is_right_to_left(character);
  });
  if (!right_to_left) return std::string(text);
  std::string out;
  return out.append(first_strong_isolate).append(text).append(pop_isolate);
}

std::string padded(std::string_view text, std::size_t cells, bool left) {
  std::string out(text);
  const std::size_t taken = cell_width(text);
  if (taken < cells) out.insert(left ? out.size() : 0, cells - taken, ' ');
  return out;
}

std::string escaped(std::string_view text) {
  std::string out;
  for_each_character(text, [&out](utf8proc_int32_t character, std::string_view bytes) {
    const bool malformed = character == 0xFFFD && bytes.size() == 1;
    if (!malformed && !is_obeyed(character)) {
      out.append(bytes);
      return;
    }
    const bool is_byte = malformed || character < 0x80;
    const auto value =
        malformed ? static_cast<unsigned char>(bytes.front()) : static_cast<unsigned>(character);
    char code[12];
    (void)std::snprintf(code, sizeof code, is_byte ? "\\x%02X" : "\\u%04X", value);
    out.append(code);
  });
  return out;
}

std::string in_quotes(std::string_view text) {
  constexpr std::size_t most = 80;
  std::size_t end = std::min(text.size(), most);
  while (end > 0 && end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
    --end;
  }
  std::string out = "'";
  return out.append(text.substr(0, end)).append(end < text.size() ? "...'" : "'");
}

std::size_t terminal_columns() {
  winsize size{};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace jwnls::tool
