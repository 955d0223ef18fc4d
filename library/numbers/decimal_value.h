// What digits are worth: as a double, as an integer, as a text.

#ifndef JWNLS_LIBRARY_NUMBERS_DECIMAL_VALUE_H_
#define JWNLS_LIBRARY_NUMBERS_DECIMAL_VALUE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "library/numbers/number_syntax.h"

namespace jwnls::library {

/// Digits times a power of ten, with a sign. The digits are ASCII, and zeros may lead.
struct Decimal {
  std::string_view digits;
  int exponent = 0;
  bool negative = false;
};

/// mantissa times 10^exponent, correctly rounded; nothing beyond the doubles.
[[nodiscard]] std::optional<double> double_of(std::uint64_t mantissa, int exponent) noexcept;

/// Of at most longest_text digits.
[[nodiscard]] std::optional<double> double_of(const Decimal& decimal) noexcept;

/// The magnitude; nothing beyond 64 bits. The exponent is not asked.
[[nodiscard]] std::optional<std::uint64_t> integer_of(std::string_view digits) noexcept;

/// The room of a canonical decimal: a sign, a point, zeros, and longest_text digits.
inline constexpr std::size_t canonical_room = 2 * longest_text + 8;

/// Writes "-1234567.89": no zeros lead but one in front of the point, those at the end stay. Gives
/// the length, at most canonical_room; nothing where an exponent would take more than longest_text
/// zeros.
[[nodiscard]] std::optional<std::size_t> write_canonical(const Decimal& decimal,
                                                         char* out) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_DECIMAL_VALUE_H_
