// Comparison of texts without regard to case, by Unicode's simple upper-case mapping.
//
// One unit maps to one unit: a surrogate to itself, and so does a letter whose capital takes more
// than one unit (U+00DF). Units of other scripts count as equal to ASCII letters where Unicode
// gives them the same capital (U+0131 and "i", U+017F and "s"). Pure; any thread may call them.

#ifndef JWNLS_MODULE_TEXT_SAME_TEXT_H_
#define JWNLS_MODULE_TEXT_SAME_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace jwnls {

// Generated from the Unicode character database: which page the upper nine bits of a unit have, and
// what is added to the unit of seven lower bits on each page, modulo 65,536.
extern const std::uint8_t upper_case_page_of[512];
extern const std::uint16_t upper_case_pages[][128];

/// The simple upper-case mapping of one unit; a unit without one stays as it is.
[[nodiscard]] inline char16_t simple_upper_case(char16_t unit) noexcept {
  if (unit < 0x80) [[likely]] {
    return static_cast<char16_t>(unit - (unit >= u'a' && unit <= u'z' ? 0x20 : 0));
  }
  const std::uint16_t* page = upper_case_pages[upper_case_page_of[unit >> 7]];
  return static_cast<char16_t>(unit + page[unit & 0x7F]);
}

/// True when two units are equal but for their case.
[[nodiscard]] inline bool same_unit_nocase(char16_t a, char16_t b) noexcept {
  return a == b || simple_upper_case(a) == simple_upper_case(b);
}

/// True when two texts have the same length and their units are equal but for their case.
[[nodiscard]] inline bool same_text_nocase(std::u16string_view a, std::u16string_view b) noexcept {
  if (a.size() != b.size()) return false;
  for (std::size_t at = 0; at < a.size(); ++at) {
    if (!same_unit_nocase(a[at], b[at])) return false;
  }
  return true;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_SAME_TEXT_H_
