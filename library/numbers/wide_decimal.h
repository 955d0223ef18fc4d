// Decimals of at most thirty-two digits: doubles of seventeen digits, and large ones with a fixed
// count of decimals.

#ifndef JWNLS_LIBRARY_NUMBERS_WIDE_DECIMAL_H_
#define JWNLS_LIBRARY_NUMBERS_WIDE_DECIMAL_H_

#include <cstddef>
#include <cstdint>

#include "library/numbers/lay_out.h"
#include "library/numbers/short_decimal.h"

namespace jwnls::library {

/// mantissa / 10^decimals.
struct WideDecimal {
  Wide mantissa = 0;  // below 10^32
  unsigned decimals = 0;
  bool negative = false;
};

/// A double with a fixed count of decimals, rounded on its exact value, halves away from zero.
/// False for what takes more digits, or more than sixteen decimals, and for what is not finite.
[[nodiscard]] bool fixed_wide(double value, unsigned decimals, WideDecimal& number) noexcept;

/// The shortest decimal that gives a double back, of these the nearest, as std::to_chars() has it;
/// there may be zeros at the end of its decimals. False below 2^-14, from 2^70 on, and for powers
/// of two.
[[nodiscard]] bool shortest_wide(double value, WideDecimal& number) noexcept;

/// Of what shortest_wide() gave.
///   shift   places that the decimal symbol moves to the right: two at most
///   wanted  decimals, rounded halves away from zero; below 0: those that there are, without zeros
///           at their end
/// False for what takes more digits; `number` is then of no use.
[[nodiscard]] bool adjust_wide(WideDecimal& number, unsigned shift, int wanted) noexcept;

/// The digits of one, for lay_out_long().
class WideDigits {
 public:
  explicit WideDigits(const WideDecimal& number) noexcept;
  [[nodiscard]] const NumberDigits& digits() const noexcept { return digits_; }

 private:
  static constexpr std::size_t most = 2 * short_digits;

  char room_[most + digits_margin];
  NumberDigits digits_;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_WIDE_DECIMAL_H_
