// The usual grouping, threes throughout, without a branch on the number of digits.

#ifndef JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
#define JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "module/numfmt/digit_block.h"

namespace jwnls {

/// The separators among `count` digits.
constexpr int separators_of_three(int count) noexcept { return (count - 1) / 3; }

/// Writes 1 to 3 * `blocks` + 1 digits with a separator between groups of three, counted from the
/// right. Units behind the text are overwritten, with zeros where zeros follow the digits.
///   digits  3 * blocks + 4 units from the first on may be read
///   out     room for 4 * blocks + 3 units
template <int blocks = 5, typename Unit>
inline void write_groups_of_three(const Unit* digits, int count, Unit separator,
                                  Unit* out) noexcept {
  // A block of four units; the separator goes where the first was, which belongs to the group
  // before.
  using Block = std::conditional_t<sizeof(Unit) == 1, std::uint32_t, std::uint64_t>;
  const int separators = separators_of_three(count);
  const int first = count - 3 * separators;
  Block block = 0;
  std::memcpy(&block, digits, sizeof block);
  std::memcpy(out, &block, sizeof block);
  digits += first;
  out += first;
  for (int i = 0; i < blocks; ++i) {
    // As many blocks whatever the count, each overwriting what the one before wrote too much.
    const auto shown = static_cast<Block>(i < separators ? separator : 0);
    std::memcpy(&block, digits, sizeof block);
    block = static_cast<Block>(block << 8 * sizeof(Unit) | shown);
    std::memcpy(out, &block, sizeof block);
    digits += 3;
    out += 4;
  }
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
