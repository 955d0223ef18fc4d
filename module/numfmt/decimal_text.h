// A value as rounded decimal digits in ASCII, with its point: what the plain kinds lay out.

#ifndef JWNLS_MODULE_NUMFMT_DECIMAL_TEXT_H_
#define JWNLS_MODULE_NUMFMT_DECIMAL_TEXT_H_

#include <cstdint>

#include "module/numfmt/exact_decimal.h"
#include "module/numfmt/number_request.h"
#include "module/record/status.h"

namespace jwnls {

/// Integer digits (at least one) followed at once by fraction digits. Rounding is half up on the
/// exact expansion of the stored double. Any 16 bytes from a digit on may be read.
class DecimalText {
 public:
  DecimalText() noexcept {}  // the buffer stays as it is: only what is written is read

  /// `decimals` digits behind the point. not_possible when the value's integer digits and the
  /// decimals are more than 350 together.
  ///   magnitude  0 or a finite value above
  Status set_fixed(double magnitude, std::int32_t decimals) noexcept;

  /// The same for the part behind the point; the integer digit is "0", or "1" when the rounding
  /// carries. The dropped digits count towards the 350.
  Status set_fraction(double magnitude, std::int32_t decimals) noexcept;

  /// One integer digit and `decimals` more, with exponent() beside them.
  Status set_exponent(double magnitude, std::int32_t decimals) noexcept;

  /// `significant` digits, in the fixed form for exponents from -4 to below `significant` (of the
  /// exact value, before the rounding), else in the exponent form; trailing zeros of the fraction
  /// stay only with `trailing_zeros`.
  Status set_general(double magnitude, std::int32_t significant, bool trailing_zeros) noexcept;

  const char* digits() const noexcept { return digits_; }
  int integer_count() const noexcept { return integer_count_; }
  int fraction_count() const noexcept { return fraction_count_; }
  bool has_exponent() const noexcept { return has_exponent_; }
  int exponent() const noexcept { return exponent_; }

 private:
  void set_scaled(std::uint64_t scaled, int decimals) noexcept;
  void set_zero(int decimals) noexcept;
  void round_fixed(const ExactDigits& exact, int decimals) noexcept;
  int round_leading(const ExactDigits& exact, int wanted) noexcept;
  void remove_trailing_zeros() noexcept;

  const char* digits_ = nullptr;
  int integer_count_ = 0;
  int fraction_count_ = 0;
  int exponent_ = 0;
  bool has_exponent_ = false;
  // Leading zeros and a carry, up to 309 integer digits and 351 decimals, and what may be read
  // behind.
  char text_[2 + 309 + 2 * 351 + 48];
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_DECIMAL_TEXT_H_
