#include "tool/terminal_text.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <utf8proc.h>

#include <algorithm>

namespace jwnls::tool {
namespace {

constexpr std::string_view first_strong_isolate = "\u2068";
constexpr std::string_view pop_isolate = "\u2069";

// Calls `visit` with each character; a malformed byte counts as U+FFFD.
template <typename Visit>
void for_each_character(std::string_view text, Visit visit) {
  while (!text.empty()) {
    utf8proc_int32_t character = 0;
    const auto read = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                       static_cast<utf8proc_ssize_t>(text.size()), &character);
    visit(read > 0 ? character : 0xFFFD);
    text.remove_prefix(read > 0 ? static_cast<std::size_t>(read) : 1);
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
  for_each_character(text, [&cells](utf8proc_int32_t character) {
    cells += static_cast<std::size_t>(std::max(character_width(character), 0));
  });
  return cells;
}

std::string isolated(std::string_view text) {
  bool right_to_left = false;
  for_each_character(text, [&right_to_left](utf8proc_int32_t character) {
    right_to_left = right_to_left || is_right_to_left(character);
  });
  if (!right_to_left) return std::string(text);
  std::string out;
  return out.append(first_strong_isolate).append(text).append(pop_isolate);
}

std::size_t terminal_columns() {
  winsize size{};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace jwnls::tool
