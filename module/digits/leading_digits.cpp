#include "module/digits/leading_digits.h"

#include "module/digits/exact_digits.h"
#include "module/digits/quick_rounding.h"

namespace jwnls {
namespace {

// The exact way, for the rare value that lies on a boundary: fifteen digits, rounded if asked for.
LeadingDigits exactly(double magnitude, bool rounded) noexcept {
  ExactDigits exact;
  exact_significant_digits(magnitude, shown_digits + 1, exact);
  LeadingDigits leading{0, exact.exponent};
  for (int i = 0; i < shown_digits; ++i) {
    leading.digits = leading.digits * 10 + static_cast<std::uint64_t>(exact.first[i] - '0');
  }
  if (rounded && exact.first[shown_digits] > '4') ++leading.digits;
  return leading;
}

}  // namespace

LeadingDigits truncated_digits(double magnitude) noexcept {
  if (magnitude == 0) return {};
  LeadingDigits leading;
  if (truncate_to_significant(magnitude, shown_digits, leading)) return leading;
  return exactly(magnitude, false);
}

LeadingDigits rounded_digits(double magnitude) noexcept {
  if (magnitude == 0) return {};
  LeadingDigits leading;
  if (!round_to_significant(magnitude, shown_digits, leading)) leading = exactly(magnitude, true);
  if (leading.digits == powers_of_ten[shown_digits]) {
    leading = {powers_of_ten[shown_digits - 1], leading.exponent + 1};
  }
  return leading;
}

}  // namespace jwnls
