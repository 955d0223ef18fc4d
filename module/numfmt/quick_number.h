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

template <typename Unit>
[[gnu::always_inline]] inline Unit* write_fraction(const Unit* digits, int decimals,
                                                   char16_t symbol, Unit* out) noexcept {
  if (decimals == 0) return out;
  *out++ = static_cast<Unit>(symbol);
  copy_block(digits, out);
  return out + decimals;
}

template <typename Unit>
[[gnu::always_inline]] inline Unit* write_integers(const Unit* digits, int count, bool grouped,
                                                   char16_t symbol, Unit* out) noexcept {
  if (!grouped) {
    copy_block(digits, out);
    return out + count;
  }
  write_groups_of_three(digits, count, static_cast<Unit>(symbol), out);
  return out + count + separators_of_three(count);
}

template <typename Unit>
inline Unit* write_fixed(const LocaleRecord& record, double magnitude, int decimals, bool grouped,
                         Unit* out) noexcept {
  std::uint64_t scaled = 0;
  if (decimals >= block_digits || !round_to_decimals(magnitude, decimals, scaled) ||
      scaled >= ten_to_16) {
    return nullptr;
  }
  const DigitBlock<Unit> block(scaled);
  const int count = std::max(block.count(), decimals + 1);
  const int integers = count - decimals;
  out = write_integers(block.last(count), integers, grouped, record.grouping_symbol, out);
  return write_fraction(block.last(decimals), decimals, record.decimal_symbol, out);
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
  const DigitBlock<Unit> block(rest);
  out = write_fraction(block.last(decimals), decimals, record.decimal_symbol, out);
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
  const DigitBlock<Unit> block(rounded.digits);
  const Unit* const digits = block.last(count);
  int shown = without_trailing_zeros(rounded.digits, count, count);
  if (rounded.exponent < -4 || rounded.exponent >= significant) {
    *out++ = *digits;
    out = write_fraction(digits + 1, shown - 1, record.decimal_symbol, out);
    return write_exponent_suffix(rounded.exponent + (carried ? 1 : 0), capital, out);
  }
  const int integers = rounded.exponent + (carried ? 2 : 1);
  if (integers > 0) {
    shown = std::max(shown, integers);
    out = write_integers(digits, integers, grouped, record.grouping_symbol, out);
    return write_fraction(digits + integers, shown - integers, record.decimal_symbol, out);
  }
  // "0", the point and up to four zeros before the digits.
  *out++ = Unit{'0'};
  *out++ = static_cast<Unit>(record.decimal_symbol);
  for (int i = 0; i < 4; ++i) out[i] = Unit{'0'};
  out -= integers;
  copy_block(digits, out);
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
  if ((flags & ~known_bits) != 0 || static_cast<std::uint32_t>(decimals) > 17) return false;
  const bool grouped = (flags & group) != 0;
  if (grouped && grouping_of(record) != u"3") return false;
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
