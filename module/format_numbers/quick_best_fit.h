// Best-fit numbers from 1 to below 10^15 in the fixed form, as most are: without the choice of
// forms.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_QUICK_BEST_FIT_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_QUICK_BEST_FIT_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>

#include "module/digits/digit_block.h"
#include "module/format_numbers/fieldless_number.h"
#include "module/format_numbers/width_bound_rounding.h"

namespace jwnls {

/// What is overwritten behind the field, and put back.
inline constexpr std::int64_t quick_overhang = block_digits;
inline constexpr int widest_quick_field = 2 * block_digits;

// The least value with more integer digits than its estimate says, by the estimate; no value has
// where the estimate is 0 or less.
inline constexpr auto least_underestimated = [] {
  std::array<double, block_digits> least{};
  for (std::size_t i = 1; i < least.size(); ++i) least[i] = static_cast<double>(powers_of_ten[i]);
  least[0] = std::numeric_limits<double>::infinity();
  return least;
}();

// Returns false with nothing written where the fixed form is not certain.
template <typename Unit>
[[gnu::always_inline]] inline bool write_best_fit(const LocaleRecord& record, double value,
                                                  int width, Unit* out) noexcept {
  const double magnitude = magnitude_of(value);
  if (!(magnitude >= 1e-5 && magnitude < 1e15)) return false;
  if (sizeof(Unit) == 1 && record.decimal_symbol >= 0x80) return false;
  const int sign = value < 0 ? 1 : 0;
  const int room = width - sign;
  const int estimate = estimated_digits(magnitude);
  // In narrow fields the form depends on more.
  constexpr int narrow = 7;
  if (room <= narrow || estimate > room - 2) return false;
  const auto estimated = static_cast<unsigned>(std::max(estimate, 0));
  int decimals = room - 1 - std::max(estimate, 1);
  // The estimate is low for many values: those get one decimal fewer.
  decimals -= nudged(magnitude, estimate, decimals) >= least_underestimated[estimated] ? 1 : 0;
  Significand leading;
  if (!truncate_to_significant(nudged(magnitude, estimate, decimals), shown_digits, leading)) {
    return false;
  }
  const int integers = leading.exponent + 1;
  if (integers + (decimals > 0 ? 1 + decimals : 0) > room || integers > shown_digits) return false;

  // Decimals past the fifteenth digit are zeros and go with the other trailing ones.
  const DigitBlock block(leading.digits, shown_digits);
  const int kept = std::min(integers + decimals, shown_digits);
  const int shown = std::max(block.significant(kept), integers);
  // What whole blocks overwrite behind the field is the caller's: it is kept and put back.
  // (Composing the field elsewhere would cost more than all the rest, in loads that span fresh
  // stores.)
  Unit kept_behind[quick_overhang];
  std::memcpy(kept_behind, out + width, sizeof kept_behind);
  std::fill_n(out, block_digits, Unit{' '});
  if (width > block_digits) std::fill_n(out + block_digits, block_digits, Unit{' '});
  const auto symbol = static_cast<Unit>(record.decimal_symbol);
  if (integers > 0) {
    Unit* const position = out + width - sign - shown - (shown > integers ? 1 : 0);
    *position = Unit{'-'};
    block.write_parted(integers, symbol, shown, position + sign);
  } else {
    // "0", the point and up to four zeros before the digits.
    Unit* const digits = out + width - shown;
    Unit* position = digits + integers - 2 - sign;
    *position = Unit{'-'};
    position += sign;
    *position++ = Unit{'0'};
    *position++ = symbol;
    for (int i = 0; i < 4; ++i) position[i] = Unit{'0'};
    block.write(shown, digits);
  }
  std::memcpy(out + width, kept_behind, sizeof kept_behind);
  return true;
}

/// Formats a value into a field of `width` places, 1 to widest_quick_field, without
/// grouping.
template <typename Unit>
[[gnu::noinline]] std::uint32_t format_best_fit(LocaleHandle* handle, double value,
                                                std::int32_t width, std::int32_t decimals_asked,
                                                std::uint32_t flags, Unit* out,
                                                std::int64_t capacity,
                                                std::int64_t* length) noexcept {
  const LocaleRecord& record = *handle->record;
  if (!write_best_fit(record, value, width, out)) {
    return format_number_here(handle, value, width, decimals_asked, flags, out, capacity, length);
  }
  if (length != nullptr) *length = width;
  return code(Status::ok);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_QUICK_BEST_FIT_H_
