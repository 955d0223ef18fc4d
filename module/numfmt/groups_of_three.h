// The usual grouping, threes throughout, without a branch on the number of digits.

#ifndef JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
#define JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace jwnls {

inline constexpr std::size_t most_in_groups_of_three = 20;  // digits

/// Four ASCII bytes as a block of four units, the first lowest.
template <typename Unit>
inline std::uint64_t four_units(const char* bytes) noexcept {
  std::uint32_t four = 0;
  std::memcpy(&four, bytes, sizeof four);
  if constexpr (sizeof(Unit) == 1) return four;
  std::uint64_t wide = four;
  wide = (wide | wide << 16) & 0x0000FFFF0000FFFF;
  return (wide | wide << 8) & 0x00FF00FF00FF00FF;
}

/// Writes 1 to most_in_groups_of_three ASCII digits with a separator between groups of three,
/// counted from the right, and returns the units written.
///   digits  24 bytes from the first digit on may be read
///   out     room for 32 units
template <typename Unit>
inline std::size_t write_groups_of_three(const char* digits, std::size_t count, Unit separator,
                                         Unit* out) noexcept {
  const std::size_t separators = (count - 1) / 3;
  const std::size_t first = count - 3 * separators;
  // Seven blocks of four units whatever the count, each overwriting what the one before wrote too
  // much.
  std::uint64_t block = four_units<Unit>(digits);
  std::memcpy(out, &block, 4 * sizeof(Unit));
  const char* from = digits + first;
  Unit* to = out + first;
  for (int i = 0; i < 6; ++i) {
    block = four_units<Unit>(from) << 8 * sizeof(Unit) | static_cast<std::uint64_t>(separator);
    std::memcpy(to, &block, 4 * sizeof(Unit));
    from += 3;
    to += 4;
  }
  return count + separators;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
