// Numbers without a field, as most are asked for: no width, few digits, room to spare. They need no
// placement, so their units go from a register straight into the caller's buffer.

#ifndef JWNLS_MODULE_NUMFMT_QUICK_NUMBER_H_
#define JWNLS_MODULE_NUMFMT_QUICK_NUMBER_H_

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

#include "module/numfmt/digit_block.h"
#include "module/numfmt/exponent_suffix.h"
#include "module/numfmt/groups_of_three.h"
#include "module/numfmt/number_request.h"
#include "module/numfmt/rounded_decimal.h"
#include "module/record/locale_record.h"

namespace jwnls {

/// The room that the quick way may overwrite, whatever the number's own length.
inline constexpr std::int64_t quick_room = 64;

namespace quick_number {

using namespace number_flags;
inline constexpr std::uint32_t general_bits = general | general_capital;
inline constexpr std::uint32_t exponent_bits = exponent_small | exponent_capital;
inline constexpr std::uint32_t fixed_bits = fixed | integer_first;
inline constexpr std::uint32_t known_bits = general_bits | exponent_bits | fixed_bits | group;

// Digits with the decimal symbol behind the first `integers` of the `shown` ones, where more
// follow.
template <typename Unit>
[[gnu::always_inline]] inline Unit* write_parted(const LocaleRecord& record,
                                                 const DigitBlock& block, int integers, int shown,
                                                 Unit* out) noexcept {
  if (integers == shown) {
    block.write(shown, out);
    return out + shown;
  }
  block.write_parted(integers, static_cast<Unit>(record.decimal_symbol), shown, out);
  return out + shown + 1;
}

template <typename Unit>
inline Unit* write_fixed(const LocaleRecord& record, double magnitude, int decimals, bool grouped,
                         Unit* out) noexcept {
  std::uint64_t scaled = 0;
  if (decimals >= block_digits || !round_to_decimals(magnitude, decimals, scaled) ||
      scaled >= ten_to_16) {
    return nullptr;
  }
  const int count = std::max(digit_count(scaled), decimals + 1);
  const int integers = count - decimals;
  if (!grouped) return write_parted(record, DigitBlock(scaled, count), integers, count, out);
  if (integers > most_grouped_digits) return nullptr;
  return write_groups_of_three(record, scaled, integers, decimals, decimals, out);
}

// One digit before the point, `decimals` up to 16 behind it.
template <typename Unit>
inline Unit* write_scientific(const LocaleRecord& record, double magnitude, int decimals,
                              bool capital, Unit* out) noexcept {
  Significand rounded;
  if (magnitude == 0 || decimals > block_digits ||
      !round_to_significant(magnitude, decimals + 1, rounded)) {
    return nullptr;
  }
  std::uint64_t first = rounded.digits / powers_of_ten[decimals];
  const std::uint64_t rest = rounded.digits - first * powers_of_ten[decimals];
  if (first == 10) {  // the rounding carried
    first = 1;
    ++rounded.exponent;
  }
  *out++ = static_cast<Unit>('0' + first);
  if (decimals != 0) {
    *out++ = static_cast<Unit>(record.decimal_symbol);
    DigitBlock(rest, decimals).write(decimals, out);
    out += decimals;
  }
  return write_exponent_suffix(rounded.exponent, capital, out);
}

template <typename Unit>
inline Unit* write_general(const LocaleRecord& record, double magnitude, int significant,
                           bool capital, bool grouped, Unit* out) noexcept {
  Significand rounded;
  if (magnitude == 0 || significant >= block_digits ||
      !round_to_significant(magnitude, significant, rounded)) {
    return nullptr;
  }
  const bool carried = rounded.digits >= powers_of_ten[significant];
  const int count = significant + (carried ? 1 : 0);
  const DigitBlock block(rounded.digits, count);
  int shown = block.significant(count);
  const int exponent = rounded.exponent + (carried ? 1 : 0);
  if (rounded.exponent < -4 || rounded.exponent >= significant) {
    out = write_parted(record, block, 1, shown, out);
    return write_exponent_suffix(exponent, capital, out);
  }
  if (exponent >= 0) {
    const int integers = exponent + 1;
    shown = std::max(shown, integers);
    if (!grouped) return write_parted(record, block, integers, shown, out);
    if (integers > most_grouped_digits) return nullptr;
    return write_groups_of_three(record, rounded.digits, integers, count - integers,
                                 shown - integers, out);
  }
  // "0", the point and up to three zeros before the digits.
  *out++ = Unit{'0'};
  *out++ = static_cast<Unit>(record.decimal_symbol);
  for (int i = 0; i < 4; ++i) out[i] = Unit{'0'};
  out -= exponent + 1;
  block.write(shown, out);
  return out + shown;
}

}  // namespace quick_number

/// Formats a number without a field if it can: `flags` ask for nothing but a plain kind and
/// grouping by threes, and the digits are few. Writes up to quick_room units, so there must be that
/// many. Returns false with nothing written otherwise.
template <typename Unit>
[[gnu::always_inline]] inline bool format_quickly(const LocaleRecord& record, double value,
                                                  std::int32_t decimals, std::uint32_t flags,
                                                  Unit* out, std::int64_t* length) noexcept {
  using namespace quick_number;
  if ((flags & ~known_bits) != 0 || static_cast<std::uint32_t>(decimals) > most_quick_decimals) {
    return false;
  }
  const bool grouped = (flags & group) != 0;
  if (grouped && !groups_by_three(record)) return false;
  if constexpr (sizeof(Unit) == 1) {
    if ((record.decimal_symbol | (grouped ? record.grouping_symbol : 0)) >= 0x80) return false;
  }
  const double magnitude = std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) << 1 >> 1);
  if (!(magnitude <= std::numeric_limits<double>::max())) return false;
  const bool negative = value < 0;
  Unit* position = out + (negative ? 1 : 0);
  if ((flags & (general_bits | exponent_bits)) == 0 && (flags & fixed_bits) != 0) {
    position = write_fixed(record, magnitude, decimals, grouped, position);
  } else if ((flags & general_bits) == 0 && (flags & exponent_bits) != 0) {
    position =
        write_scientific(record, magnitude, decimals, (flags & exponent_capital) != 0, position);
  } else {
    position = write_general(record, magnitude, decimals == 0 ? 6 : decimals,
                             (flags & general_capital) != 0, grouped, position);
  }
  if (position == nullptr) return false;
  *out = negative ? Unit{'-'} : *out;
  if (length != nullptr) *length = position - out;
  return true;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_QUICK_NUMBER_H_
