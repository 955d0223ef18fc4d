// What the characters of a number are, whatever the locale: digits of every script, separators by
// their class, blanks, marks and signs.

#ifndef JWNLS_LIBRARY_NUMBERS_CHARACTERS_H_
#define JWNLS_LIBRARY_NUMBERS_CHARACTERS_H_

#include <cstdint>
#include <string_view>

namespace jwnls::library {

/// Separators that people take for one another.
enum class Separator : std::uint8_t {
  none,
  point,           // . and its full-width form
  comma,           // , and its full-width form
  apostrophe,      // ' U+2019 U+02BC U+FF07
  blank,           // plain, no-break, thin, figure
  arabic_group,    // U+066C
  arabic_decimal,  // U+066B
  other,           // a symbol of the locale's own, such as '$'
};

[[nodiscard]] Separator separator_beyond_ascii(char32_t c) noexcept;
[[nodiscard]] inline Separator separator_of(char32_t c) noexcept {
  if (c >= 0x80) return separator_beyond_ascii(c);
  return c == U'.'    ? Separator::point
         : c == U','  ? Separator::comma
         : c == U' '  ? Separator::blank
         : c == U'\'' ? Separator::apostrophe
                      : Separator::none;
}

/// The value of a decimal digit, and the zero of its script. A character that is none has zero 0.
struct Digit {
  char32_t zero;
  int value;
};
[[nodiscard]] Digit digit_beyond_ascii(char32_t c) noexcept;
[[nodiscard]] inline Digit digit_of(char32_t c) noexcept {
  // The first digits beyond ASCII are the Arabic ones; currency signs and punctuation have none.
  if (c >= 0x660 && (c < 0x2000 || c >= 0x3000)) return digit_beyond_ascii(c);
  return c >= U'0' && c <= U'9' ? Digit{U'0', static_cast<int>(c - U'0')} : Digit{0, 0};
}

/// What may stand around a number.
[[nodiscard]] bool is_blank_beyond_ascii(char32_t c) noexcept;
[[nodiscard]] inline bool is_blank(char32_t c) noexcept {
  return c >= 0x80 ? is_blank_beyond_ascii(c) : c == U' ' || c == U'\t';
}
/// Marks of the writing direction, which may stand anywhere outside the digits.
[[nodiscard]] bool is_mark_beyond_ascii(char32_t c) noexcept;
[[nodiscard]] inline bool is_mark(char32_t c) noexcept {
  return c >= 0x80 && is_mark_beyond_ascii(c);
}

/// '-', '+', or 0 for what is no sign. U+25B3 and U+25B2 are minus signs where `triangles`.
[[nodiscard]] char sign_beyond_ascii(char32_t c, bool triangles) noexcept;
[[nodiscard]] inline char sign_of(char32_t c, bool triangles) noexcept {
  if (c >= 0x80) return sign_beyond_ascii(c, triangles);
  return c == U'-' || c == U'+' ? static_cast<char>(c) : '\0';
}

/// Behind a decimal symbol, in place of decimals: "12,- EUR".
[[nodiscard]] inline bool is_dash(char32_t c) noexcept {
  return c == U'-' || c == 0x2013 || c == 0x2014;
}

/// What a percent sign divides by, as a power of ten: 2, of per mille 3; 0 for what is none.
[[nodiscard]] inline int percent_power(char32_t c) noexcept {
  if (c == U'%' || c == 0x066A || c == 0xFF05 || c == 0xFE6A) return 2;
  return c == 0x2030 || c == 0x0609 ? 3 : 0;
}

/// The bytes beyond ASCII that any of all these characters begins with.
inline constexpr std::string_view leads_of_numbers =
    "\xC2\xCA\xD8\xD9\xDB\xDF\xE0\xE1\xE2\xE3\xE4\xE5\xEA\xEF\xF0";

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_CHARACTERS_H_
