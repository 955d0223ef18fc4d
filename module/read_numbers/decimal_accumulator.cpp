#include "module/read_numbers/decimal_accumulator.h"

#include <algorithm>
#include <limits>

namespace jwnls {

#define JWNLS_TEN_POWERS(tens)                                                               \
  1e##tens##0, 1e##tens##1, 1e##tens##2, 1e##tens##3, 1e##tens##4, 1e##tens##5, 1e##tens##6, \
      1e##tens##7, 1e##tens##8, 1e##tens##9
const double double_powers_of_ten[highest_double_power + 1] = {JWNLS_TEN_POWERS(0),
                                                               JWNLS_TEN_POWERS(1),
                                                               JWNLS_TEN_POWERS(2),
                                                               JWNLS_TEN_POWERS(3),
                                                               JWNLS_TEN_POWERS(4),
                                                               JWNLS_TEN_POWERS(5),
                                                               JWNLS_TEN_POWERS(6),
                                                               JWNLS_TEN_POWERS(7),
                                                               JWNLS_TEN_POWERS(8),
                                                               JWNLS_TEN_POWERS(9),
                                                               JWNLS_TEN_POWERS(10),
                                                               JWNLS_TEN_POWERS(11),
                                                               JWNLS_TEN_POWERS(12),
                                                               JWNLS_TEN_POWERS(13),
                                                               JWNLS_TEN_POWERS(14),
                                                               JWNLS_TEN_POWERS(15),
                                                               JWNLS_TEN_POWERS(16),
                                                               JWNLS_TEN_POWERS(17),
                                                               JWNLS_TEN_POWERS(18),
                                                               JWNLS_TEN_POWERS(19),
                                                               JWNLS_TEN_POWERS(20),
                                                               JWNLS_TEN_POWERS(21),
                                                               JWNLS_TEN_POWERS(22),
                                                               JWNLS_TEN_POWERS(23),
                                                               JWNLS_TEN_POWERS(24),
                                                               JWNLS_TEN_POWERS(25),
                                                               JWNLS_TEN_POWERS(26),
                                                               JWNLS_TEN_POWERS(27),
                                                               JWNLS_TEN_POWERS(28),
                                                               JWNLS_TEN_POWERS(29),
                                                               1e300,
                                                               1e301,
                                                               1e302,
                                                               1e303,
                                                               1e304,
                                                               1e305,
                                                               1e306,
                                                               1e307,
                                                               1e308};
#undef JWNLS_TEN_POWERS

Scaled scale_far(double sum, std::int64_t exponent) noexcept {
  if (sum == 0) return {Status::ok, sum};
  // Two steps reach past both ends of the doubles, wherever the sum of 150 digits lies; what is
  // left beyond them changes nothing.
  const std::int64_t distance = exponent < 0 ? -exponent : exponent;
  const auto first = std::min<std::int64_t>(distance, highest_double_power);
  const auto second = std::min<std::int64_t>(distance - first, highest_double_power);
  if (exponent < 0) {
    return {Status::ok, sum / double_powers_of_ten[first] / double_powers_of_ten[second]};
  }
  const double value = sum * double_powers_of_ten[first] * double_powers_of_ten[second];
  const bool in_range = value <= std::numeric_limits<double>::max();
  return {in_range ? Status::ok : Status::out_of_range, value};
}

// One by one, as the value is defined. Deliberate: a digit past the 150th, leading zeros aside, is
// dropped without a trace in the exponent.
DecimalAccumulator DecimalAccumulator::rounded(DecimalAccumulator copy, std::uint32_t value,
                                               std::uint32_t count) noexcept {
  if (copy.rounded_ == 0) {
    copy.rounded_ = static_cast<double>(copy.integer_);
    for (std::int64_t rest = copy.integer_; rest != 0; rest /= 10) ++copy.digits_;
  }
  for (; count-- > 0 && copy.digits_ < counted_digits; ++copy.digits_) {
    copy.rounded_ = copy.rounded_ * 10.0 + value / powers_of_ten_to_4[count] % 10;
  }
  return copy;
}

}  // namespace jwnls
