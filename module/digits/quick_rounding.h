// A double rounded to a decimal integer of at most 64 bits, half up on its exact expansion: the
// quick ways, which serve nearly every value. Where one cannot be certain it says so, and the exact
// digits of exact_digits.h decide.

#ifndef JWNLS_MODULE_DIGITS_QUICK_ROUNDING_H_
#define JWNLS_MODULE_DIGITS_QUICK_ROUNDING_H_

#include <bit>
#include <cstdint>

#include "module/digits/exact_digits.h"
#include "module/digits/leading_digits.h"
#include "module/digits/powers_of_ten.h"
#include "module/digits/scaling_power.h"

namespace jwnls {

/// The most decimals that round_to_decimals() takes.
inline constexpr int most_quick_decimals = 17;

/// floor(magnitude * 10^decimals + 1/2), where that is below 10^18 and decimals is 0 to
/// most_quick_decimals. Returns false otherwise.
inline bool round_to_decimals(double magnitude, int decimals, std::uint64_t& rounded) noexcept {
  using Wide = unsigned __int128;
  const auto [mantissa, exponent] = binary_parts(magnitude);
  if (exponent > 7) return false;  // 2^60 and above
  if (decimals <= 3 && exponent < 0) [[likely]] {
    // Below 2^53 * 10^3 < 2^63: one word holds it.
    const std::uint64_t scaled = mantissa * powers_of_ten[decimals];
    rounded = exponent >= -64 ? ((scaled >> (-exponent - 1)) + 1) >> 1 : 0;
    return rounded < ten_to_18;
  }
  // Below 2^53 * 10^17 < 2^110: exact, and the half is added exactly as well.
  const Wide scaled = Wide{mantissa} * powers_of_ten[decimals];
  Wide whole = 0;
  if (exponent >= 0) {
    whole = scaled << exponent;
  } else if (exponent > -112) {
    whole = ((scaled >> (-exponent - 1)) + 1) >> 1;
  }
  rounded = static_cast<std::uint64_t>(whole);
  return whole < ten_to_18;
}

/// Twice the first `wanted` significant digits (1 to 17) of a finite value above 0, truncated: the
/// last bit tells whether the rest is at least one half. The exponent is that before any rounding.
/// Returns false when it cannot be certain,
/// which takes a value within 2^-64 of a boundary or one that lies on it.
inline bool doubled_digits(double magnitude, int wanted, LeadingDigits& out) noexcept {
  using Wide = unsigned __int128;
  const auto [small_mantissa, small_exponent] = binary_parts(magnitude);
  const int shift = std::countl_zero(small_mantissa);
  const std::uint64_t mantissa = small_mantissa << shift;
  const int estimate = estimated_exponent(small_exponent - shift + 63);
  const int scale = wanted - 1 - estimate;
  if (scale > highest_scaling_power || scale < lowest_scaling_power) return false;

  // Twice the scaled value is the upper word of a 192-bit product, shifted; all below is its
  // fraction.
  const ScalingPower power = scaling_power(scale);
  const Wide low = Wide{mantissa} * power.low;
  const Wide sum = Wide{mantissa} * power.high + static_cast<std::uint64_t>(low >> 64);
  const auto upper = static_cast<std::uint64_t>(sum >> 64);
  const auto middle = static_cast<std::uint64_t>(sum);
  const int fraction_bits = -(small_exponent - shift + binary_exponent_of(scale)) - 1 - 128;
  const std::uint64_t doubled = upper >> fraction_bits;
  // The power may be up to two units low, which is less than three of the middle word.
  const std::uint64_t fraction_mask = (std::uint64_t{1} << fraction_bits) - 1;
  const bool exact = scale >= 0 && scale <= 55;
  if (!exact && middle >= ~std::uint64_t{2} && (upper & fraction_mask) == fraction_mask) {
    return false;
  }
  // One digit too many where the estimate was low.
  const std::uint64_t low_estimate = doubled >= 2 * powers_of_ten[wanted] ? 1 : 0;
  // Without a branch, which values of all sizes would take at random.
  const std::uint64_t fewer = doubled / 10;
  out.digits = doubled ^ ((doubled ^ fewer) & (0 - low_estimate));
  out.exponent = estimate + static_cast<int>(low_estimate);
  return true;
}

/// Rounds to `wanted` significant digits, half up: 10^wanted when the rounding carried.
inline bool round_to_significant(double magnitude, int wanted, LeadingDigits& out) noexcept {
  if (!doubled_digits(magnitude, wanted, out)) return false;
  out.digits = (out.digits + 1) >> 1;
  return true;
}

/// Truncates to `wanted` significant digits.
inline bool truncate_to_significant(double magnitude, int wanted, LeadingDigits& out) noexcept {
  if (!doubled_digits(magnitude, wanted, out)) return false;
  out.digits >>= 1;
  return true;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_QUICK_ROUNDING_H_
