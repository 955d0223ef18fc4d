#include "module/format_numbers/width_bound_exponent.h"

#include <algorithm>

#include "module/digits/digit_block.h"
#include "module/digits/leading_digits.h"
#include "module/digits/powers_of_ten.h"
#include "module/placement/exponent_suffix.h"

namespace jwnls {
namespace {

// A mantissa of one digit and `decimals`, of which those past the fourteenth are zeros.
struct Mantissa {
  LeadingDigits rounded;  // as many digits as are shown, fifteen at most
  int decimals;

  int digits() const noexcept { return std::min(decimals + 1, shown_digits); }
  int places() const noexcept {
    return 1 + (decimals > 0 ? 1 + decimals : 0) + short_exponent_suffix_length(rounded.exponent);
  }
};

// Fifteen digits rounded half up to those that `decimals` show.
Mantissa mantissa_of(LeadingDigits leading, int decimals) noexcept {
  Mantissa mantissa{leading, decimals};
  const int shown = mantissa.digits();
  const std::uint64_t unit = powers_of_ten[shown_digits - shown];
  LeadingDigits& rounded = mantissa.rounded;
  rounded.digits = (leading.digits + unit / 2) / unit;
  if (rounded.digits == powers_of_ten[shown]) {
    rounded.digits /= 10;
    ++rounded.exponent;
  }
  return mantissa;
}

// The most decimals up to `most` that leave room for the suffix of their own rounding, which may
// lengthen it; false when none do.
bool fit(const LeadingDigits& leading, int most, int room, Mantissa& out) noexcept {
  for (int decimals = std::min(most, std::max(room, 0)); decimals >= 0; --decimals) {
    out = mantissa_of(leading, decimals);
    if (out.places() <= room) return true;
  }
  return false;
}

// Writes a mantissa and returns its end.
char16_t* write_mantissa(const Mantissa& mantissa, bool trim, char16_t decimal_symbol,
                         char16_t* out) noexcept {
  const int digits = mantissa.digits();
  char text[16];  // the digits right-aligned
  write_16_digits(mantissa.rounded.digits, text);
  const char* digit = text + 16 - digits;
  int shown = mantissa.decimals;
  if (trim) {
    shown = std::min(shown, digits - 1);
    while (shown > 0 && digit[shown] == '0') --shown;
  }
  *out++ = static_cast<unsigned char>(digit[0]);
  if (shown > 0) *out++ = decimal_symbol;
  for (int i = 1; i <= shown; ++i) *out++ = i < digits ? static_cast<char16_t>(digit[i]) : u'0';
  return out;
}

}  // namespace

Status write_exponent_form(double magnitude, int room, std::int32_t decimals, bool trim,
                           char16_t decimal_symbol, char16_t* out, int& length) noexcept {
  const bool as_many = decimals == as_many_as_fit;
  const int wanted = as_many ? shown_digits - 1 : -std::max(decimals, -room - 1);
  Mantissa mantissa;
  if (!fit(rounded_digits(magnitude), wanted, room, mantissa)) return Status::does_not_fit;
  char16_t* end = write_mantissa(mantissa, trim, decimal_symbol, out);
  end = write_short_exponent_suffix(mantissa.rounded.exponent, end);
  length = static_cast<int>(end - out);
  return as_many || mantissa.decimals >= -decimals ? Status::ok : Status::decimals_dropped;
}

}  // namespace jwnls
