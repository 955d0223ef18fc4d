// A value as rounded decimal digits with their point: what the plain kinds show. Here a number's
// form is chosen, once for all its ways.

#ifndef JWNLS_MODULE_DIGITS_DECIMAL_H_
#define JWNLS_MODULE_DIGITS_DECIMAL_H_

#include <algorithm>
#include <bit>
#include <cstdint>

#include "abi/status.h"
#include "module/digits/digit_block.h"
#include "module/digits/exact_digits.h"
#include "module/digits/quick_rounding.h"

namespace jwnls {

/// What a decimal is made of a value for, and what `wanted` counts there.
enum class DecimalForm : std::uint8_t {
  fixed,     // decimals
  fraction,  // decimals; the integer part is dropped
  general,   // significant digits
  exponent,  // decimals
};

/// How many digits stand before and behind the point, and the exponent beside them.
struct DecimalShape {
  int integers = 1;
  int decimals = 0;
  int zeros = 0;     // up to the first digit of a value below 1, the integer digit among them
  int exponent = 0;  // of the first digit that is not 0
  bool has_exponent = false;
};

/// The form of a value that is not 0.
///   exponent  of its first digit, before the rounding
///   carried   1 where the rounding made it a digit more, else 0
constexpr DecimalShape shape_of(DecimalForm form, int wanted, int exponent, int carried) noexcept {
  const int shown = exponent + carried;
  if (form == DecimalForm::exponent) return {1, wanted, 0, shown, true};
  if (form == DecimalForm::general) {
    // Below -4 or from `wanted` on, in one comparison.
    if (static_cast<unsigned>(exponent + 4) >= static_cast<unsigned>(wanted + 4)) {
      return {1, wanted - 1, 0, shown, true};
    }
    wanted -= exponent + 1;
  }
  if (shown < 0) return {1, wanted, -shown, shown, false};
  return {shown + 1, wanted, 0, shown, false};
}

/// Digits with their shape. Behind those that are shown others may follow.
struct Decimal {
  DecimalShape shape;
  const char* text = nullptr;  // all digits, the shape's zeros among them; or null:
  std::uint64_t number = 0;    // then those behind the zeros,
  int count = 1;               // so many: up to 16, with an exponent 17

  int shown() const noexcept { return shape.integers + shape.decimals; }
};

/// Whether a value is neither 0 nor an infinity nor a NaN.
inline bool is_finite_but_zero(double value) noexcept {
  return (std::bit_cast<std::uint64_t>(value) << 1) - 1 < (std::uint64_t{0x7FF} << 53) - 1;
}

/// Rounds a value half up on its exact expansion into a word. Returns false when that takes more
/// digits than a word has or cannot be done the quick way; always for infinities and NaNs.
///   magnitude   not negative
///   wanted      0 to most_decimals; general: 1 or more
///   keep_zeros  the general form keeps its trailing zeros
template <DecimalForm form>
[[gnu::always_inline]] inline bool quick_decimal(double magnitude, int wanted, bool keep_zeros,
                                                 Decimal& out) noexcept {
  if constexpr (form == DecimalForm::fixed || form == DecimalForm::fraction) {
    if (wanted >= block_digits || !round_to_decimals(magnitude, wanted, out.number) ||
        out.number >= ten_to_16 || (form == DecimalForm::fraction && magnitude >= 1)) {
      return false;
    }
    // A digit before the point, at least.
    out.count = digit_count(std::max(out.number, powers_of_ten[wanted]));
    out.shape = shape_of(form, wanted, out.count - wanted - 1, 0);
    return true;
  }
  constexpr bool general = form == DecimalForm::general;
  constexpr int most_digits = general ? block_digits - 1 : block_digits + 1;
  const int leading = general ? wanted : wanted + 1;
  LeadingDigits rounded;
  if (!is_finite_but_zero(magnitude) || leading > most_digits ||
      !round_to_significant(magnitude, leading, rounded)) {
    return false;
  }
  const int carried = rounded.digits >= powers_of_ten[leading] ? 1 : 0;
  out.number = rounded.digits;
  out.count = leading + carried;
  if constexpr (general) {
    // Before the shape, whose choices the writer then makes along with it.
    const int kept =
        keep_zeros ? out.count : DigitBlock(out.number, out.count).significant(out.count);
    out.shape = shape_of(form, wanted, rounded.exponent, carried);
    if (!keep_zeros) {
      out.shape.decimals =
          std::max(out.shape.zeros + kept, out.shape.integers) - out.shape.integers;
    }
  } else {
    // A carry leaves a zero more than is shown.
    out.count = leading;
    if (carried != 0) out.number = powers_of_ten[leading - 1];
    out.shape = shape_of(form, wanted, rounded.exponent, carried);
  }
  return true;
}

/// The same for a form that is known late.
inline bool quick_decimal(DecimalForm form, double magnitude, int wanted, bool keep_zeros,
                          Decimal& out) noexcept {
  switch (form) {
    case DecimalForm::fixed:
      return quick_decimal<DecimalForm::fixed>(magnitude, wanted, keep_zeros, out);
    case DecimalForm::fraction:
      return quick_decimal<DecimalForm::fraction>(magnitude, wanted, keep_zeros, out);
    case DecimalForm::general:
      return quick_decimal<DecimalForm::general>(magnitude, wanted, keep_zeros, out);
    default:
      return quick_decimal<DecimalForm::exponent>(magnitude, wanted, keep_zeros, out);
  }
}

/// Any finite value; the digits stand in `exact`. not_possible when integer digits and `wanted` are
/// more than most_decimals together.
Status exact_decimal(DecimalForm form, double magnitude, int wanted, bool keep_zeros,
                     ExactDigits& exact, Decimal& out) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_DECIMAL_H_
