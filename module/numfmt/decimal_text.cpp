#include "module/numfmt/decimal_text.h"

#include <algorithm>
#include <cstring>

#include "module/numfmt/digit_text.h"
#include "module/numfmt/rounded_decimal.h"

namespace jwnls {
namespace {

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

}  // namespace

void DecimalText::set_zero(int decimals) noexcept {
  std::memset(text_, '0', static_cast<std::size_t>(decimals) + 1);
  digits_ = text_;
  integer_count_ = 1;
  fraction_count_ = decimals;
}

// The digits of an integer that counts units of 10^-decimals; below 10^18, decimals up to 31.
void DecimalText::set_scaled(std::uint64_t scaled, int decimals) noexcept {
  constexpr int zeros = 32;
  std::memset(text_, '0', zeros);
  write_18_digits(scaled, text_ + zeros);
  const int count = std::max(digit_count(scaled), decimals + 1);
  digits_ = text_ + zeros + 18 - count;
  integer_count_ = count - decimals;
  fraction_count_ = decimals;
}

// Rounds exact digits, which reach one place below the wanted decimals, in the fixed form.
void DecimalText::round_fixed(const ExactDigits& exact, int decimals) noexcept {
  // One zero for a carry, and the integer zero and the decimals before the first digit.
  const int leading_zeros = 1 + std::max(0, -exact.exponent);
  const int kept = std::max(exact.exponent, 0) + 1 + decimals;
  std::memset(text_, '0', static_cast<std::size_t>(std::min(leading_zeros, kept + 2)));
  const int room = std::max(kept + 2 - leading_zeros, 0);
  const int copied = std::min(exact.count, room);
  std::memcpy(text_ + leading_zeros, exact.text, static_cast<std::size_t>(std::max(copied, 0)));
  if (copied < room) {
    std::memset(text_ + leading_zeros + copied, '0', static_cast<std::size_t>(room - copied));
  }
  digits_ = text_ + 1;
  integer_count_ = kept - decimals;
  fraction_count_ = decimals;
  if (round_half_up(text_ + 1, kept)) {
    text_[0] = '1';
    digits_ = text_;
    ++integer_count_;
  }
}

// Rounds exact digits to `wanted` leading ones, in one run; returns 1 when the rounding carried,
// and the run is then one digit longer.
int DecimalText::round_leading(const ExactDigits& exact, int wanted) noexcept {
  std::memcpy(text_ + 1, exact.text, static_cast<std::size_t>(wanted) + 1);
  digits_ = text_ + 1;
  if (!round_half_up(text_ + 1, wanted)) return 0;
  text_[0] = '1';
  digits_ = text_;
  return 1;
}

Status DecimalText::set_fixed(double magnitude, std::int32_t decimals) noexcept {
  std::uint64_t scaled = 0;
  if (decimals <= most_quick_decimals && round_to_decimals(magnitude, decimals, scaled))
      [[likely]] {
    set_scaled(scaled, decimals);
    return Status::ok;
  }
  if (magnitude == 0) {
    set_zero(decimals);
    return Status::ok;
  }
  ExactDigits exact;
  exact_digits_to(magnitude, -decimals - 1, exact);
  if (exact.count == 0) {
    set_zero(decimals);
    return Status::ok;
  }
  if (std::max(exact.exponent + 1, 0) + decimals > most_decimals) return Status::not_possible;
  round_fixed(exact, decimals);
  return Status::ok;
}

Status DecimalText::set_fraction(double magnitude, std::int32_t decimals) noexcept {
  if (magnitude < 1) return set_fixed(magnitude, decimals);
  // Doubles of 2^53 and above have no fraction.
  const bool whole = magnitude >= 9007199254740992.0;
  const double integer =
      whole ? magnitude : static_cast<double>(static_cast<std::uint64_t>(magnitude));
  ExactDigits exact;
  exact_significant_digits(integer, 1, exact);
  if (exact.exponent + 1 + decimals > most_decimals) return Status::not_possible;
  return set_fixed(magnitude - integer, decimals);
}

Status DecimalText::set_exponent(double magnitude, std::int32_t decimals) noexcept {
  has_exponent_ = true;
  if (magnitude == 0) {
    set_zero(decimals);
    exponent_ = 0;
    return Status::ok;
  }
  Significand rounded;
  if (decimals < most_quick_decimals && round_to_significant(magnitude, decimals + 1, rounded)) {
    // A carry leaves one digit more, which is a zero that nobody looks at.
    set_scaled(rounded.digits, decimals);
    exponent_ = rounded.exponent + integer_count_ - 1;
  } else {
    ExactDigits exact;
    exact_significant_digits(magnitude, decimals + 2, exact);
    if (std::max(exact.exponent + 1, 0) + decimals > most_decimals) return Status::not_possible;
    exponent_ = exact.exponent + round_leading(exact, decimals + 1);
    fraction_count_ = decimals;
  }
  integer_count_ = 1;
  return Status::ok;
}

Status DecimalText::set_general(double magnitude, std::int32_t significant,
                                bool trailing_zeros) noexcept {
  if (magnitude == 0) {
    set_zero(trailing_zeros ? significant - 1 : 0);
    return Status::ok;
  }
  int carried = 0;
  Significand rounded;
  ExactDigits exact;
  const bool quick = significant <= 17 && round_to_significant(magnitude, significant, rounded);
  if (quick) {
    exponent_ = rounded.exponent;
  } else {
    exact_significant_digits(magnitude, significant + 1, exact);
    exponent_ = exact.exponent;
    if (std::max(exponent_ + 1, 0) + significant > most_decimals) return Status::not_possible;
  }
  has_exponent_ = exponent_ < -4 || exponent_ >= significant;
  const int decimals = significant - 1 - (has_exponent_ ? 0 : exponent_);
  if (quick) {
    set_scaled(rounded.digits, decimals);
    carried = has_exponent_ ? integer_count_ - 1 : 0;
  } else if (has_exponent_) {
    carried = round_leading(exact, significant);
    fraction_count_ = decimals;
  } else {
    round_fixed(exact, decimals);
  }
  if (has_exponent_) {
    integer_count_ = 1;
    exponent_ += carried;
  }
  if (!trailing_zeros) remove_trailing_zeros();
  return Status::ok;
}

void DecimalText::remove_trailing_zeros() noexcept {
  const char* end = digits_ + integer_count_ + fraction_count_;
  while (fraction_count_ >= 8) {
    std::uint64_t last_eight = 0;
    std::memcpy(&last_eight, end - 8, sizeof last_eight);
    if (last_eight != ascii_zeros) break;
    end -= 8;
    fraction_count_ -= 8;
  }
  while (fraction_count_ > 0 && end[-1] == '0') {
    --end;
    --fraction_count_;
  }
}

}  // namespace jwnls
