#include "library/numbers/characters.h"

#include <algorithm>
#include <iterator>

namespace jwnls::library {
namespace {

// The zeros of all scripts with decimal digits, rising; the nine digits follow each.
constexpr char32_t zeros[] = {
    0x0030,  0x0660,  0x06F0,  0x07C0,  0x0966,  0x09E6,  0x0A66,  0x0AE6,  0x0B66,  0x0BE6,
    0x0C66,  0x0CE6,  0x0D66,  0x0DE6,  0x0E50,  0x0ED0,  0x0F20,  0x1040,  0x1090,  0x17E0,
    0x1810,  0x1946,  0x19D0,  0x1A80,  0x1A90,  0x1B50,  0x1BB0,  0x1C40,  0x1C50,  0xA620,
    0xA8D0,  0xA900,  0xA9D0,  0xA9F0,  0xAA50,  0xABF0,  0xFF10,  0x104A0, 0x10D30, 0x11066,
    0x110F0, 0x11136, 0x111D0, 0x112F0, 0x11450, 0x114D0, 0x11650, 0x116C0, 0x11730, 0x118E0,
    0x11950, 0x11C50, 0x11D50, 0x11DA0, 0x16A60, 0x16AC0, 0x16B50, 0x1D7CE, 0x1D7D8, 0x1D7E2,
    0x1D7EC, 0x1D7F6, 0x1E140, 0x1E2F0, 0x1E950, 0x1FBF0};

constexpr char32_t chinese_digits[] = {0x3007, 0x4E00, 0x4E8C, 0x4E09, 0x56DB,
                                       0x4E94, 0x516D, 0x4E03, 0x516B, 0x4E5D};

}  // namespace

Separator separator_beyond_ascii(char32_t c) noexcept {
  switch (c) {
    case 0xFF0E:
      return Separator::point;
    case 0xFF0C:
      return Separator::comma;
    case 0x2019:
    case 0x02BC:
    case 0xFF07:
      return Separator::apostrophe;
    case 0x00A0:
    case 0x2007:
    case 0x2009:
    case 0x202F:
      return Separator::blank;
    case 0x066C:
      return Separator::arabic_group;
    case 0x066B:
      return Separator::arabic_decimal;
    default:
      return Separator::none;
  }
}

Digit digit_beyond_ascii(char32_t c) noexcept {
  // The Chinese numerals do not stand side by side.
  if (c >= chinese_digits[0] && c <= 0x9FFF) {
    const char32_t* const end = std::end(chinese_digits);
    const char32_t* const found = std::find(std::begin(chinese_digits), end, c);
    if (found == end) return {};
    return {chinese_digits[0], static_cast<int>(found - std::begin(chinese_digits))};
  }
  const char32_t* const above = std::upper_bound(std::begin(zeros), std::end(zeros), c);
  const char32_t zero = above[-1];  // at least U'0', as c is no ASCII
  return c - zero < 10 ? Digit{zero, static_cast<int>(c - zero)} : Digit{};
}

bool is_blank_beyond_ascii(char32_t c) noexcept {
  return c == 0xA0 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F || c == 0x205F || c == 0x3000;
}

bool is_mark_beyond_ascii(char32_t c) noexcept {
  return c == 0x061C || c == 0x200B || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

char sign_beyond_ascii(char32_t c, bool triangles) noexcept {
  switch (c) {
    case 0x2012:
    case 0x2013:
    case 0x2212:
    case 0xFE63:
    case 0xFF0D:
      return '-';
    case 0xFE62:
    case 0xFF0B:
      return '+';
    case 0x25B2:
    case 0x25B3:
      return triangles ? '-' : '\0';
    default:
      return '\0';
  }
}

}  // namespace jwnls::library
