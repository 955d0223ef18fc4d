// The UTF-16 to 8-bit unit converter: each unit becomes one to three UTF-8 bytes by itself.

#ifndef JWNLS_MODULE_TEXT_UTF8_ENCODING_H_
#define JWNLS_MODULE_TEXT_UTF8_ENCODING_H_

#include <cstddef>

namespace jwnls {

inline constexpr std::size_t longest_utf8_unit = 3;  // bytes

/// Writes `unit` as UTF-8 and returns the bytes written; `out` has room for three. A surrogate
/// becomes a three-byte sequence of its own: units are never paired, so that every unit can be told
/// apart again and a cut text stays a prefix of the whole.
constexpr std::size_t encode_utf8_unit(char16_t unit, char* out) noexcept {
  if (unit < 0x80) {
    out[0] = static_cast<char>(unit);
    return 1;
  }
  if (unit < 0x800) {
    out[0] = static_cast<char>(0xC0 | unit >> 6);
    out[1] = static_cast<char>(0x80 | (unit & 0x3F));
    return 2;
  }
  out[0] = static_cast<char>(0xE0 | unit >> 12);
  out[1] = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
  out[2] = static_cast<char>(0x80 | (unit & 0x3F));
  return 3;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_UTF8_ENCODING_H_
