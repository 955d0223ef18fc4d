// UTF-16 texts as the 8-bit services take and give them.

#ifndef JWNLS_TESTS_SUPPORT_ENCODED_H_
#define JWNLS_TESTS_SUPPORT_ENCODED_H_

#include <string>
#include <string_view>

namespace jwnls::test {

/// UTF-16 as UTF-8, each unit by itself.
inline std::string encoded(std::u16string_view text) {
  std::string bytes;
  for (const unsigned unit : text) {
    if (unit >= 0x800) bytes += static_cast<char>(0xE0 | unit >> 12);
    if (unit >= 0x80) {
      bytes += static_cast<char>(unit < 0x800 ? 0xC0 | unit >> 6 : 0x80 | (unit >> 6 & 0x3F));
    }
    bytes += static_cast<char>(unit < 0x80 ? unit : 0x80 | (unit & 0x3F));
  }
  return bytes;
}

/// The text in units of a kind: as it is, or encoded.
template <typename Unit>
std::basic_string<Unit> text_in(std::u16string_view text) {
  if constexpr (sizeof(Unit) == 2) {
    return std::u16string(text);
  } else {
    return encoded(text);
  }
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_ENCODED_H_
