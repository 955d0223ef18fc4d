// Trailing blanks: U+0020 only.

#ifndef JWNLS_MODULE_TEXT_TRIMMING_H_
#define JWNLS_MODULE_TEXT_TRIMMING_H_

#include <cstddef>

namespace jwnls {

/// The length of a text without its trailing blanks (U+0020 only).
template <typename Unit>
constexpr std::size_t length_without_trailing_blanks(const Unit* text,
                                                     std::size_t length) noexcept {
  while (length > 0 && text[length - 1] == Unit{' '}) --length;
  return length;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_TRIMMING_H_
