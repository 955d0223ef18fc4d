// Best-fit numbers from 1 to below 10^15 in the fixed form, as most are: without the choice of
// forms.

#ifndef JWNLS_MODULE_NUMFMT_QUICK_BEST_FIT_H_
#define JWNLS_MODULE_NUMFMT_QUICK_BEST_FIT_H_

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "module/numfmt/digit_block.h"
#include "module/numfmt/fixed_rounding.h"
#include "module/numfmt/quick_number.h"

namespace jwnls {

/// What is overwritten behind the field, and put back.
inline constexpr std::int64_t quick_overhang = block_digits;
inline constexpr int widest_quick_field = 2 * block_digits;

// Returns false with nothing written where the fixed form is not certain.
template <typename Unit>
[[gnu::always_inline]] inline bool write_best_fit(const LocaleRecord& record, double value,
                                                  int width, Unit* out) noexcept {
  const double magnitude = magnitude_of(value);
  if (!(magnitude >= 1 && magnitude < 1e15)) return false;
  if (sizeof(Unit) == 1 && record.decimal_symbol >= 0x80) return false;
  const int sign = value < 0 ? 1 : 0;
  const int room = width - sign;
  const int estimate = estimated_digits(magnitude);
  if (estimate >= room) return false;
  int decimals = estimate < 1 && room > 2 ? best_fit_decimals_below_ten(room) : room - estimate - 1;
  const int integers_fitting = decimals > 0 ? room - 1 - decimals : room;
  if (integers_fitting > shown_digits) return false;
  // The estimate is low for many values: those get one decimal fewer.
  const double first_power = static_cast<double>(powers_of_ten[integers_fitting]);
  decimals -= nudged(magnitude, estimate, decimals) >= first_power ? 1 : 0;
  Significand leading;
  if (decimals < 0 ||
      !truncate_to_significant(nudged(magnitude, estimate, decimals), shown_digits, leading)) {
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
  Unit* const position = out + width - sign - shown - (shown > integers ? 1 : 0);
  *position = Unit{'-'};
  block.write_parted(integers, static_cast<Unit>(record.decimal_symbol), shown, position + sign);
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

#endif  // JWNLS_MODULE_NUMFMT_QUICK_BEST_FIT_H_
