// Text joining and blank trimming.

#ifndef JWNLS_MODULE_TEXT_JOINING_H_
#define JWNLS_MODULE_TEXT_JOINING_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace jwnls {

inline constexpr char16_t no_separator = 0xFFFF;

/// Joins `pieces` into `out`, with one `separator` between two of them unless it is no_separator.
///   capacity  units of `out`; what is left over is filled with blanks. A negative capacity c means
///             -c-1 units followed by a zero unit, and no blanks.
/// Returns the joined length in units. Each piece is cut to the room that is left.
std::size_t join_texts(std::span<const std::u16string_view> pieces, char16_t separator,
                       char16_t* out, std::int64_t capacity) noexcept;

/// The length of a text without its trailing blanks (U+0020 only).
template <typename Unit>
constexpr std::size_t length_without_trailing_blanks(const Unit* text,
                                                     std::size_t length) noexcept {
  while (length > 0 && text[length - 1] == Unit{' '}) --length;
  return length;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_JOINING_H_
