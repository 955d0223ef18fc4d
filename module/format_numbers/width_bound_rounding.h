// The arithmetic of the width-bound fixed form: an estimate of the integer digits, and the upward
// nudge that rounds a value before its digits are cut off. Plain double steps, kept to the letter.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_ROUNDING_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_ROUNDING_H_

#include <bit>
#include <cstdint>

#include "module/digits/exact_digits.h"
#include "module/digits/leading_digits.h"

namespace jwnls {

// 0.5 * 10^-d, the double nearest to it.
inline constexpr double rounding_addends[] = {
    0.5,     0.5e-1,  0.5e-2,  0.5e-3,  0.5e-4,  0.5e-5,  0.5e-6,  0.5e-7,  0.5e-8,
    0.5e-9,  0.5e-10, 0.5e-11, 0.5e-12, 0.5e-13, 0.5e-14, 0.5e-15, 0.5e-16, 0.5e-17,
    0.5e-18, 0.5e-19, 0.5e-20, 0.5e-21, 0.5e-22, 0.5e-23, 0.5e-24, 0.5e-25, 0.5e-26,
    0.5e-27, 0.5e-28, 0.5e-29, 0.5e-30, 0.5e-31, 0.5e-32};
inline constexpr double upward_nudge = 1.0000000000000002;  // 1 + 2^-52

inline bool is_whole(double magnitude) noexcept {
  constexpr double no_fractions_from = 9007199254740992.0;  // 2^53
  return magnitude >= no_fractions_from ||
         magnitude == static_cast<double>(static_cast<std::int64_t>(magnitude));
}

/// The integer digits of a value by its binary exponent alone; below 1 for values below 8.
inline int estimated_digits(double magnitude) noexcept {
  // The exponent of the value as a fraction from 1/2 to below 1 times a power of two; 0 of 0.
  const auto [mantissa, binary_exponent] = binary_parts(magnitude);
  const int exponent = mantissa == 0 ? 0 : binary_exponent + 64 - std::countl_zero(mantissa);
  // 77/256 approximates log10(2); the estimate can be one below the true digit count, which the
  // exact count repairs.
  return exponent * 77 >> 8;
}

/// The decimals that the best-fit kind gives a value whose estimate is below 1, in more than two
/// places.
constexpr int best_fit_decimals_below_ten(int room) noexcept {
  return room - 2 < 2 ? room - 1 : room - 2;
}

/// A value nudged upward so that cutting it off behind `decimals` (0 to 32) rounds it.
inline double nudged(double magnitude, int estimate, int decimals) noexcept {
  if (is_whole(magnitude)) return magnitude;
  if (decimals <= shown_digits - estimate) magnitude += rounding_addends[decimals];
  return magnitude * upward_nudge;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_ROUNDING_H_
