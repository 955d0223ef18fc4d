// From decimal digits to a double, by the steps that define the value: each digit is added to ten
// times the ones before, in double arithmetic, and the sum is scaled by a power of ten.

#ifndef JWNLS_MODULE_READ_NUMBERS_DECIMAL_ACCUMULATOR_H_
#define JWNLS_MODULE_READ_NUMBERS_DECIMAL_ACCUMULATOR_H_

#include <cstdint>

#include "abi/status.h"
#include "module/text/digit_words.h"

namespace jwnls {

/// The doubles nearest to 10^0 to 10^308.
inline constexpr int highest_double_power = 308;
extern const double double_powers_of_ten[highest_double_power + 1];

struct Scaled {
  Status status;
  double value;
};

/// sum * 10^exponent for a sum of digits, exponents up to 30,800 and down to any. out_of_range when
/// it is beyond the doubles; one that is too small is 0.
Scaled scale_far(double sum, std::int64_t exponent) noexcept;

/// The same; nearly every exponent needs one division.
[[nodiscard]] inline Scaled scale(double sum, std::int64_t exponent) noexcept {
  if (exponent <= 0 && exponent >= -highest_double_power) [[likely]] {
    return {Status::ok, sum / double_powers_of_ten[-exponent]};
  }
  return scale_far(sum, exponent);
}

/// The sum of few digits, which doubles hold exactly.
class ExactAccumulator {
 public:
  static constexpr int most_digits = 15;

  void add(FewDigits digits) noexcept {
    sum_ = sum_ * powers_of_ten_to_4[digits.count] + digits.value;
  }
  double sum() const noexcept { return static_cast<double>(sum_); }

 private:
  std::int64_t sum_ = 0;
};

/// The sum of any number of digits. Below 2^53 every step is exact, so integers take those.
class DecimalAccumulator {
 public:
  void add(FewDigits digits) noexcept {
    if (integer_ <= largest_exact) [[likely]] {
      integer_ = integer_ * powers_of_ten_to_4[digits.count] + digits.value;
    } else {
      *this = rounded(*this, digits.value, digits.count);
    }
  }

  double sum() const noexcept { return rounded_ == 0 ? static_cast<double>(integer_) : rounded_; }

 private:
  static constexpr std::int64_t largest_exact = ((std::int64_t{1} << 53) - 9'999) / 10'000;
  static constexpr int counted_digits = 150;

  // Of a copy, for the same reason as the steps of the scanner (number_scanner.h).
  static DecimalAccumulator rounded(DecimalAccumulator copy, std::uint32_t value,
                                    std::uint32_t count) noexcept;

  std::int64_t integer_ = 0;
  double rounded_ = 0;  // takes over from integer_ once it is not 0
  int digits_ = 0;      // in rounded_
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_NUMBERS_DECIMAL_ACCUMULATOR_H_
