// A value as rounded decimal digits with their point: what the plain kinds lay out.
//
// Up to sixteen digits stand in a word, more in memory; either way they are at least one
// integer digit, followed at once by the fraction digits. Rounding is half up on the exact
// expansion.

#ifndef JWNLS_MODULE_DIGITS_DECIMAL_H_
#define JWNLS_MODULE_DIGITS_DECIMAL_H_

#include <cstdint>

#include "abi/status.h"
#include "module/digits/digit_block.h"
#include "module/digits/exact_digits.h"
#include "module/placement/number_request.h"

namespace jwnls {

/// How many digits stand before and behind the point, and the exponent beside them.
struct DecimalShape {
  int integers = 1;
  int decimals = 0;
  int exponent = 0;
  bool has_exponent = false;
};

/// Rounds a value for a plain kind into a word. Returns false when its digits are more than
/// sixteen or cannot be found the quick way. The general kind loses its trailing zeros here.
///   magnitude  0 or a finite value above
bool quick_decimal(const NumberRequest& request, double magnitude, ShortDigits& digits,
                   DecimalShape& shape) noexcept;

/// Any value for a plain kind, in memory.
class ExactDecimal {
 public:
  /// not_possible when integer digits and decimals are more than 350 together.
  Status set(const NumberRequest& request, double magnitude) noexcept;

  const DecimalShape& shape() const noexcept { return shape_; }
  DigitRun digits() const noexcept { return {digits_}; }

 private:
  Status set_fixed(double magnitude, std::int32_t decimals) noexcept;
  Status set_fraction(double magnitude, std::int32_t decimals) noexcept;
  Status set_exponent(double magnitude, std::int32_t decimals) noexcept;
  Status set_general(double magnitude, std::int32_t significant) noexcept;
  void set_zero(int decimals) noexcept;
  void round_fixed(int decimals) noexcept;
  int round_leading(int wanted) noexcept;
  void remove_trailing_zeros() noexcept;

  DecimalShape shape_;
  const char* digits_ = nullptr;
  ExactDigits exact_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_DECIMAL_H_
