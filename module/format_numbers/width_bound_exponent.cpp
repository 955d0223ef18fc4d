#include "module/format_numbers/width_bound_exponent.h"

#include <algorithm>
#include <cstdlib>

#include "module/digits/digit_block.h"
#include "module/digits/leading_digits.h"

namespace jwnls {
namespace {

constexpr int suffix_length(int exponent) noexcept {
  const int size = exponent < 0 ? -exponent : exponent;
  return 3 + (size >= 10 ? 1 : 0) + (size >= 100 ? 1 : 0);
}

// The fifteen digits rounded half up to `shown` of them.
LeadingDigits rounded_to(LeadingDigits leading, int shown) noexcept {
  const std::uint64_t unit = powers_of_ten[shown_digits - shown];
  leading.digits = (leading.digits + unit / 2) / unit;
  if (leading.digits == powers_of_ten[shown]) {
    leading.digits /= 10;
    ++leading.exponent;
  }
  return leading;
}

}  // namespace

Status write_exponent_form(double magnitude, int room, std::int32_t decimals, bool trim,
                           char16_t decimal_symbol, char16_t* out, int& length) noexcept {
  const LeadingDigits leading = rounded_digits(magnitude);
  const bool fit = decimals == as_many_as_fit;
  const int wanted = fit ? shown_digits - 1 : -std::max(decimals, -room - 1);

  // The most decimals that leave room for the suffix of their own rounding, which may lengthen it.
  int shown = std::min(wanted, std::max(room, 0));
  LeadingDigits rounded;
  for (;; --shown) {
    if (shown < 0) return Status::does_not_fit;
    rounded = rounded_to(leading, std::min(shown + 1, shown_digits));
    const int mantissa = 1 + (shown > 0 ? 1 + shown : 0);
    if (mantissa + suffix_length(rounded.exponent) <= room) break;
  }
  const bool dropped = !fit && shown < -decimals;

  // The digits right-aligned in sixteen; decimals past the fourteenth are zeros.
  const int digits = std::min(shown + 1, shown_digits);
  char text[16];
  write_16_digits(rounded.digits, text);
  const char* digit = text + 16 - digits;
  int kept = shown;
  if (trim) {
    if (kept >= digits) kept = digits - 1;
    while (kept > 0 && digit[kept] == '0') --kept;
  }
  char16_t* position = out;
  *position++ = static_cast<unsigned char>(digit[0]);
  if (kept > 0) *position++ = decimal_symbol;
  for (int i = 1; i <= kept; ++i) {
    *position++ = i < digits ? static_cast<char16_t>(digit[i]) : u'0';
  }
  *position++ = u'E';
  *position++ = rounded.exponent < 0 ? u'-' : u'+';
  const auto size = static_cast<unsigned>(std::abs(rounded.exponent));
  if (size >= 100) *position++ = static_cast<char16_t>(u'0' + size / 100);
  if (size >= 10) *position++ = static_cast<char16_t>(u'0' + size / 10 % 10);
  *position++ = static_cast<char16_t>(u'0' + size % 10);
  length = static_cast<int>(position - out);
  return dropped ? Status::decimals_dropped : Status::ok;
}

}  // namespace jwnls
