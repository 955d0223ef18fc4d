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

/// Up to this, integers are doubles as they stand; and so are 10^0 to 10^22.
inline constexpr std::uint64_t exact_mantissas = std::uint64_t{1} << 53;
inline constexpr int exact_powers = 22;
inline constexpr double powers_of_ten[exact_powers + 1] = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

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
