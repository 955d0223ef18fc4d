// What bytes are in the text of a date. Whatever is not ASCII counts as a letter.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_DATE_CHARACTERS_H_
#define JWNLS_LIBRARY_LOCALE_DATA_DATE_CHARACTERS_H_

#include <cstddef>
#include <string_view>

namespace jwnls::library {

/// Whether a char is signed is the machine's choice.
constexpr bool is_ascii(char byte) noexcept { return static_cast<unsigned char>(byte) < 0x80; }
constexpr bool is_digit(char byte) noexcept { return static_cast<unsigned char>(byte - '0') < 10; }
constexpr bool is_letter(char byte) noexcept {
  return static_cast<unsigned char>((byte | 0x20) - 'a') < 26 || !is_ascii(byte);
}
constexpr bool is_blank(char byte) noexcept {
  return byte == ' ' || static_cast<unsigned char>(byte - '\t') < 5;
}

/// Whether a text ends in a mark of few bytes, compared one by one from the last on.
constexpr bool ends_in(std::string_view text, std::string_view mark) noexcept {
  if (text.size() < mark.size()) return false;
  const char* const begin = text.data() + text.size() - mark.size();
  std::size_t at = mark.size();
  while (at > 0 && begin[at - 1] == mark[at - 1]) --at;
  return at == 0;
}

/// U+00A0 in UTF-8.
constexpr bool is_no_break_blank(std::string_view text) noexcept {
  return text.size() >= 2 && text[0] == '\xC2' && text[1] == '\xA0';
}

/// The end of the run of letters at `at`: a mark between two letters is part of it ("a. m." is two
/// runs, "segunda-feira" and "ม.ค" are one), and an apostrophe behind one.
constexpr std::size_t end_of_run(std::string_view text, std::size_t at) noexcept {
  while (at < text.size()) {
    if (is_letter(text[at])) {
      ++at;
      continue;
    }
    if (at == 0 || !is_letter(text[at - 1])) break;
    const bool inner =
        (text[at] == '.' || text[at] == '-') && at + 1 < text.size() && is_letter(text[at + 1]);
    if (!inner && text[at] != '\'') break;
    ++at;
  }
  return at;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_DATE_CHARACTERS_H_
