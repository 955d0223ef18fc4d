// The first significant digits of a value, and the fifteen that are all that the width-bound kinds
// ever show.

#ifndef JWNLS_MODULE_DIGITS_LEADING_DIGITS_H_
#define JWNLS_MODULE_DIGITS_LEADING_DIGITS_H_

#include <cstdint>

namespace jwnls {

/// Digits as a number, 0 for 0.
struct LeadingDigits {
  std::uint64_t digits = 0;
  int exponent = 0;  // of the first digit
};

inline constexpr int shown_digits = 15;

/// The first fifteen, truncated, for the fixed form.
LeadingDigits truncated_digits(double magnitude) noexcept;

/// The first fifteen, rounded half up on the exact expansion, for the exponent form.
LeadingDigits rounded_digits(double magnitude) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_LEADING_DIGITS_H_
