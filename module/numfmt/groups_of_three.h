// The usual grouping, threes throughout, without a branch on the number of digits.

#ifndef JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
#define JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "module/numfmt/digit_block.h"

namespace jwnls {

/// The lowest four bytes of a word as a block of four units, the first lowest.
template <typename Unit>
inline std::uint64_t four_units(std::uint64_t bytes) noexcept {
  if constexpr (sizeof(Unit) == 1) return bytes;
  std::uint64_t wide = bytes & 0xFFFFFFFF;
  wide = (wide | wide << 16) & 0x0000FFFF0000FFFF;
  return (wide | wide << 8) & 0x00FF00FF00FF00FF;
}

/// The separators among `count` digits.
constexpr int separators_of_three(int count) noexcept { return (count - 1) / 3; }

/// Writes 1 to 16 digits with a separator between groups of three, counted from the right.
/// Units behind the text, up to 23 in all, become zero.
///   out  room for 23 units
template <typename Unit>
inline void write_groups_of_three(DigitBlock digits, int count, Unit separator,
                                  Unit* out) noexcept {
  const int separators = separators_of_three(count);
  const int first = count - 3 * separators;
  // Six blocks of four units whatever the count, each overwriting what the one before wrote too
  // much.
  std::uint64_t block = four_units<Unit>(static_cast<std::uint64_t>(digits.bytes));
  std::memcpy(out, &block, 4 * sizeof(Unit));
  digits = digits.from(first);
  out += first;
  for (int i = 0; i < 5; ++i) {
    const std::uint64_t shown = i < separators ? static_cast<std::uint64_t>(separator) : 0;
    block = four_units<Unit>(static_cast<std::uint64_t>(digits.bytes)) << 8 * sizeof(Unit) | shown;
    std::memcpy(out, &block, 4 * sizeof(Unit));
    digits = digits.from(3);
    out += 4;
  }
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
