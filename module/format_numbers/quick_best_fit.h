// Best-fit numbers from 10^-5 to below 10^15 in the fixed form, as most are: without the choice
// between the forms.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_QUICK_BEST_FIT_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_QUICK_BEST_FIT_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "module/digits/digit_block.h"
#include "module/digits/leading_digits.h"
#include "module/digits/powers_of_ten.h"
#include "module/digits/quick_rounding.h"
#include "module/format_numbers/fieldless_number.h"
#include "module/format_numbers/number_formatter.h"
#include "module/format_numbers/width_bound_rounding.h"
#include "module/placement/symbols.h"

namespace jwnls::quick_best_fit {

/// What is overwritten behind the field, and put back.
inline constexpr std::int64_t overhang = block_digits;
inline constexpr int widest_field = 2 * block_digits;

// The least value with more integer digits than its estimate says, by the estimate; no value has
// where the estimate is 0 or less.
inline constexpr auto least_underestimated = [] {
  std::array<double, block_digits> least{};
  for (std::size_t i = 1; i < least.size(); ++i) least[i] = static_cast<double>(powers_of_ten[i]);
  least[0] = std::numeric_limits<double>::infinity();
  return least;
}();

/// Chooses the decimals that a value shows in `room` places, trailing zeros among them, and its
/// fifteen digits. Returns false where the fixed form is not certain.
[[gnu::always_inline]] inline bool choose(double magnitude, int room, LeadingDigits& leading,
                                          int& decimals) noexcept {
  if (!(magnitude >= 1e-5 && magnitude < 1e15)) return false;
  const int estimate = estimated_digits(magnitude);
  // In narrow fields the form depends on more.
  constexpr int narrow = 7;
  if (room <= narrow || estimate > room - 2) return false;
  const auto estimated = static_cast<unsigned>(std::max(estimate, 0));
  decimals = room - 1 - std::max(estimate, 1);
  // The estimate is low for many values: those get one decimal fewer.
  decimals -= nudged(magnitude, estimate, decimals) >= least_underestimated[estimated] ? 1 : 0;
  if (!truncate_to_significant(nudged(magnitude, estimate, decimals), shown_digits, leading)) {
    return false;  // unreachable: the powers to scale by, 0 to 20, are exact
  }
  const int integers = leading.exponent + 1;
  return integers + (decimals > 0 ? 1 + decimals : 0) <= room && integers <= shown_digits;
}

/// Writes the first `shown` of fifteen digits up to the unit before `end`, in front of them the
/// minus where `sign` is 1, and zero units behind. The digits go on for `integers` before the
/// point; where that is 0 or less, so many zeros follow it.
template <typename Unit>
[[gnu::always_inline]] inline void write(Symbols<Unit> symbols, const DigitBlock& block,
                                         int integers, int shown, int sign, Unit* end) noexcept {
  if (integers > 0) {
    Unit* const position = end - sign - shown - (shown > integers ? 1 : 0);
    *position = Unit{'-'};
    block.write_parted(integers, symbols.decimal(), shown, position + sign);
    return;
  }
  // "0", the point and up to four zeros before the digits.
  Unit* const digits = end - shown;
  Unit* position = digits + integers - 2 - sign;
  *position = Unit{'-'};
  position += sign;
  *position++ = Unit{'0'};
  *position++ = symbols.decimal();
  for (int i = 0; i < 4; ++i) position[i] = Unit{'0'};
  block.write(shown, digits);
}

/// Places digits in a field of blanks.
template <typename Unit>
[[gnu::always_inline]] inline void place(Symbols<Unit> symbols, const LeadingDigits& leading,
                                         int decimals, int sign, int width, Unit* out) noexcept {
  // Decimals past the fifteenth digit are zeros and go with the other trailing ones.
  const DigitBlock block(leading.digits, shown_digits);
  const int integers = leading.exponent + 1;
  const int kept = std::min(integers + decimals, shown_digits);
  const int shown = std::max(block.significant(kept), integers);
  // What whole blocks overwrite behind the field is the caller's: it is kept and put back.
  // (Composing the field elsewhere would cost more than all the rest, in loads that span fresh
  // stores.)
  Unit kept_behind[overhang];
  std::memcpy(kept_behind, out + width, sizeof kept_behind);
  std::fill_n(out, block_digits, Unit{' '});
  if (width > block_digits) std::fill_n(out + block_digits, block_digits, Unit{' '});
  write(symbols, block, integers, shown, sign, out + width);
  std::memcpy(out + width, kept_behind, sizeof kept_behind);
}

/// Formats a value into a field of `width` places, 1 to widest_field, without grouping; `overhang`
/// units behind it are overwritten and put back.
template <typename Unit>
[[gnu::noinline]] std::uint32_t format(LocaleHandle* handle, double value, std::int32_t width,
                                       std::int32_t decimals_asked, std::uint32_t flags, Unit* out,
                                       std::int64_t capacity, std::int64_t* length) noexcept {
  const Symbols<Unit> symbols{*handle->record};
  const int sign = value < 0 ? 1 : 0;
  LeadingDigits leading;
  int decimals = 0;
  if (!symbols.narrow(false) || !choose(magnitude_of(value), width - sign, leading, decimals)) {
    return format_any_number(handle, value, width, decimals_asked, flags, out, capacity, length);
  }
  place(symbols, leading, decimals, sign, width, out);
  if (length != nullptr) *length = width;
  return code(Status::ok);
}

}  // namespace jwnls::quick_best_fit

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_QUICK_BEST_FIT_H_
