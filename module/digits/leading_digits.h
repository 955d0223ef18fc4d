// The first fifteen significant digits of a value: all that the width-bound kinds ever show.

#ifndef JWNLS_MODULE_DIGITS_LEADING_DIGITS_H_
#define JWNLS_MODULE_DIGITS_LEADING_DIGITS_H_

#include <cstdint>

namespace jwnls {

inline constexpr int shown_digits = 15;

/// Digits as a number, 10^14 to below 10^15, or 0 for 0.
struct LeadingDigits {
  std::uint64_t digits = 0;
  int exponent = 0;  // of the first digit
};

/// Truncated, for the fixed form.
LeadingDigits truncated_digits(double magnitude) noexcept;

/// Rounded half up on the exact expansion, for the exponent form.
LeadingDigits rounded_digits(double magnitude) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_LEADING_DIGITS_H_
