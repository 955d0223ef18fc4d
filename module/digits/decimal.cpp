#include "module/digits/decimal.h"

#include <algorithm>
#include <cstring>

#include "module/digits/powers_of_ten.h"
#include "module/digits/quick_rounding.h"

namespace jwnls {
namespace {

constexpr int most_quick_digits = block_digits;

// Rounds `kept` digits half up by the one behind them, in place. A carry out of the first digit
// leaves zeros and returns true.
bool round_half_up(char* digits, int kept) noexcept {
  if (digits[kept] <= '4') return false;
  int i = kept - 1;
  while (i >= 0 && digits[i] == '9') digits[i--] = '0';
  if (i < 0) return true;
  ++digits[i];
  return false;
}

// The integer digits that count towards the limit; a value below 1 has none.
constexpr int counted_integers(int exponent) noexcept { return std::max(exponent + 1, 0); }

// The part behind the point of a value of at least 1; exact.
double fraction_of(double magnitude) noexcept {
  constexpr double no_fractions_from = 9007199254740992.0;  // 2^53
  if (magnitude >= no_fractions_from) return 0;
  return magnitude - static_cast<double>(static_cast<std::uint64_t>(magnitude));
}

bool quick_fixed(double magnitude, int decimals, ShortDigits& digits,
                 DecimalShape& shape) noexcept {
  std::uint64_t scaled = 0;
  if (decimals >= most_quick_digits || !round_to_decimals(magnitude, decimals, scaled) ||
      scaled >= ten_to_16) {
    return false;
  }
  const int count = std::max(digit_count(scaled), decimals + 1);
  digits = {scaled, count};
  shape = {count - decimals, decimals, 0, false};
  return true;
}

bool quick_exponent(double magnitude, int decimals, ShortDigits& digits,
                    DecimalShape& shape) noexcept {
  Significand rounded;
  if (magnitude == 0 || decimals >= most_quick_digits - 1 ||
      !round_to_significant(magnitude, decimals + 1, rounded)) {
    return false;
  }
  // A carry leaves a digit more, a zero that nobody looks at.
  const int carried = rounded.digits >= powers_of_ten[decimals + 1] ? 1 : 0;
  digits = {rounded.digits, decimals + 1 + carried};
  shape = {1, decimals, rounded.exponent + carried, true};
  return true;
}

bool quick_general(double magnitude, int significant, bool keep_zeros, ShortDigits& digits,
                   DecimalShape& shape) noexcept {
  Significand rounded;
  if (magnitude == 0 || significant >= most_quick_digits ||
      !round_to_significant(magnitude, significant, rounded)) {
    return false;
  }
  if (rounded.exponent < -4 || rounded.exponent >= significant) {
    const int carried = rounded.digits >= powers_of_ten[significant] ? 1 : 0;
    digits = {rounded.digits, significant + carried};
    shape = {1, significant - 1, rounded.exponent + carried, true};
  } else {
    const int decimals = significant - 1 - rounded.exponent;
    const int count = std::max(digit_count(rounded.digits), decimals + 1);
    if (count > most_quick_digits) return false;
    digits = {rounded.digits, count};
    shape = {count - decimals, decimals, 0, false};
  }
  if (!keep_zeros) {
    const int kept = DigitBlock(digits.number, digits.count).significant(digits.count);
    shape.decimals = std::clamp(kept - shape.integers, 0, shape.decimals);
  }
  return true;
}

}  // namespace

bool quick_decimal(const NumberRequest& request, double magnitude, ShortDigits& digits,
                   DecimalShape& shape) noexcept {
  switch (request.kind) {
    case NumberKind::fixed:
      return quick_fixed(magnitude, request.decimals, digits, shape);
    case NumberKind::fraction:
      return magnitude < 1 && quick_fixed(magnitude, request.decimals, digits, shape);
    case NumberKind::exponent:
      return quick_exponent(magnitude, request.decimals, digits, shape);
    case NumberKind::general:
      return quick_general(magnitude, request.decimals, request.trailing_zeros, digits, shape);
    default:
      return false;
  }
}

Status ExactDecimal::set(const NumberRequest& request, double magnitude) noexcept {
  switch (request.kind) {
    case NumberKind::general:
      if (const Status status = set_general(magnitude, request.decimals); status != Status::ok) {
        return status;
      }
      if (!request.trailing_zeros) remove_trailing_zeros();
      return Status::ok;
    case NumberKind::exponent:
      return set_exponent(magnitude, request.decimals);
    case NumberKind::fraction:
      return set_fraction(magnitude, request.decimals);
    default:
      return set_fixed(magnitude, request.decimals);
  }
}

void ExactDecimal::set_zero(int decimals) noexcept {
  std::memset(exact_.text(), '0', static_cast<std::size_t>(decimals) + 1);
  digits_ = exact_.text();
  shape_.integers = 1;
  shape_.decimals = decimals;
}

// Rounds the exact digits, which reach at least one place below the wanted decimals, in place. The
// integer zero and the decimals before the first digit go into the room in front of it.
void ExactDecimal::round_fixed(int decimals) noexcept {
  const int zeros = std::max(-exact_.exponent, 0);
  char* first = exact_.text() - zeros;
  std::memset(first - 1, '0', static_cast<std::size_t>(zeros) + 1);
  const int kept = std::max(exact_.exponent, 0) + 1 + decimals;
  shape_.integers = kept - decimals;
  shape_.decimals = decimals;
  if (round_half_up(first, kept)) {
    *--first = '1';
    ++shape_.integers;
  }
  digits_ = first;
}

// Rounds the exact digits to `wanted` leading ones; returns 1 when the rounding carried.
int ExactDecimal::round_leading(int wanted) noexcept {
  char* first = exact_.text();
  const bool carried = round_half_up(first, wanted);
  if (carried) *--first = '1';
  digits_ = first;
  return carried ? 1 : 0;
}

Status ExactDecimal::set_fixed(double magnitude, std::int32_t decimals) noexcept {
  exact_.count = 0;
  if (magnitude != 0) exact_digits_to(magnitude, -decimals - 1, exact_);
  // A first digit below the one that decides the rounding leaves zeros.
  if (exact_.count == 0 || exact_.exponent < -decimals - 1) {
    set_zero(decimals);
    return Status::ok;
  }
  if (counted_integers(exact_.exponent) + decimals > most_decimals) return Status::not_possible;
  round_fixed(decimals);
  return Status::ok;
}

Status ExactDecimal::set_fraction(double magnitude, std::int32_t decimals) noexcept {
  if (magnitude < 1) return set_fixed(magnitude, decimals);
  exact_significant_digits(magnitude, 1, exact_);
  if (counted_integers(exact_.exponent) + decimals > most_decimals) return Status::not_possible;
  return set_fixed(fraction_of(magnitude), decimals);
}

Status ExactDecimal::set_exponent(double magnitude, std::int32_t decimals) noexcept {
  shape_.has_exponent = true;
  if (magnitude == 0) {
    set_zero(decimals);
    return Status::ok;
  }
  exact_significant_digits(magnitude, decimals + 2, exact_);
  if (counted_integers(exact_.exponent) + decimals > most_decimals) return Status::not_possible;
  shape_.exponent = exact_.exponent + round_leading(decimals + 1);
  shape_.decimals = decimals;
  return Status::ok;
}

Status ExactDecimal::set_general(double magnitude, std::int32_t significant) noexcept {
  if (magnitude == 0) {
    set_zero(significant - 1);
    return Status::ok;
  }
  exact_significant_digits(magnitude, significant + 1, exact_);
  const int exponent = exact_.exponent;  // before the rounding: it decides the form
  if (counted_integers(exponent) + significant > most_decimals) return Status::not_possible;
  if (exponent < -4 || exponent >= significant) {
    shape_.has_exponent = true;
    shape_.exponent = exponent + round_leading(significant);
    shape_.decimals = significant - 1;
  } else {
    round_fixed(significant - 1 - exponent);
  }
  return Status::ok;
}

void ExactDecimal::remove_trailing_zeros() noexcept {
  const char* end = digits_ + shape_.integers + shape_.decimals;
  while (shape_.decimals > 0 && end[-1] == '0') {
    --end;
    --shape_.decimals;
  }
}

}  // namespace jwnls
