// Numbers without a field, as most are asked for: no width, few digits, room to spare. They need no
// placement, so their units go from a register straight into the caller's buffer.
//
// Each kind is a function with the service's own arguments that calls no other but at its end,
// where the call is a jump: it has no registers to save, and what it cannot do it hands on as it
// stands.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_FIELDLESS_NUMBER_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_FIELDLESS_NUMBER_H_

#include <algorithm>
#include <bit>
#include <cstdint>

#include "abi/locale_handle.h"
#include "module/digits/digit_block.h"
#include "module/digits/quick_rounding.h"
#include "module/format_numbers/number_formatter.h"
#include "module/placement/exponent_suffix.h"
#include "module/placement/groups_of_three.h"
#include "module/placement/number_request.h"

namespace jwnls {

/// The room that a quick way may overwrite, whatever the number's own length.
inline constexpr std::int64_t quick_room = 64;

inline bool is_finite_but_zero(double value) noexcept {
  return (std::bit_cast<std::uint64_t>(value) << 1) - 1 < (std::uint64_t{0x7FF} << 53) - 1;
}

inline double magnitude_of(double value) noexcept {
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) << 1 >> 1);
}

namespace quick_number {

// Whether every symbol that the number can show is one unit.
template <typename Unit>
[[gnu::always_inline]] inline bool has_narrow_symbols(const LocaleRecord& record,
                                                      bool grouped) noexcept {
  if (sizeof(Unit) == 2) return true;
  return (record.decimal_symbol | (grouped ? record.grouping_symbol : 0)) < 0x80;
}

// The sign goes first: what follows overwrites it where the value is not negative.
template <typename Unit>
[[gnu::always_inline]] inline Unit* write_minus(double value, Unit* out) noexcept {
  *out = Unit{'-'};
  return out + (value < 0 ? 1 : 0);
}

template <typename Unit>
[[gnu::always_inline]] inline std::uint32_t done(const Unit* out, const Unit* end,
                                                 std::int64_t* length) noexcept {
  if (length != nullptr) [[likely]]
    *length = end - out;
  return code(Status::ok);
}

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

// Amounts, as most numbers are: from 2^-12 to below 2^39, with three decimals at most. One word
// holds such a value times 10^decimals, and the rounded product has fifteen digits at most.
inline bool is_amount(double value, std::int32_t decimals) noexcept {
  const auto biased_exponent =
      static_cast<unsigned>(std::bit_cast<std::uint64_t>(value) >> 52 & 0x7FF);
  return biased_exponent - (1023 - 12) < 12 + 39 && static_cast<std::uint32_t>(decimals) <= 3;
}

template <bool grouped, typename Unit>
[[gnu::noinline]] std::uint32_t write_amount(const LocaleRecord& record, double value, int decimals,
                                             Unit* out, std::int64_t* length) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const std::uint64_t mantissa = bits << 12 >> 12 | std::uint64_t{1} << 52;
  const std::uint64_t shift = 1074 - (bits >> 52 & 0x7FF);
  const std::uint64_t scaled = ((mantissa * powers_of_ten[decimals] >> (shift & 63)) + 1) >> 1;
  // A digit before the point, at least.
  const std::uint64_t counted = std::max(scaled, powers_of_ten[decimals]);
  const int sign = static_cast<int>(bits >> 63);
  const int behind = decimals == 0 ? 0 : decimals + 1;
  *out = Unit{'-'};
  out += sign;
  if constexpr (grouped) {
    const auto& place = place_of_groups(digit_count(counted) - decimals, decimals);
    if (length != nullptr) [[likely]]
      *length = sign + place.length + behind;
    Unit* const point = out + place.length;
    write_groups_of_three(scaled, place, decimals, static_cast<Unit>(record.grouping_symbol), out);
    if (decimals != 0) *point = static_cast<Unit>(record.decimal_symbol);
  } else {
    int count = 0;
    const DigitBlock block(scaled, counted, count);
    if (length != nullptr) [[likely]]
      *length = sign + count + (decimals == 0 ? 0 : 1);
    if (decimals == 0) {
      block.write(count, out);
    } else {
      block.write_parted(count - decimals, static_cast<Unit>(record.decimal_symbol), count, out);
    }
  }
  return code(Status::ok);
}

// Any value.
template <bool grouped, typename Unit>
[[gnu::noinline]] std::uint32_t format_fixed(LocaleHandle* handle, double value, std::int32_t width,
                                             std::int32_t decimals, std::uint32_t flags, Unit* out,
                                             std::int64_t capacity, std::int64_t* length) noexcept {
  const LocaleRecord& record = *handle->record;
  std::uint64_t scaled = 0;
  if (decimals >= block_digits || !has_narrow_symbols<Unit>(record, grouped) ||
      !round_to_decimals(magnitude_of(value), decimals, scaled) || scaled >= ten_to_16)
      [[unlikely]] {
    return format_number_here(handle, value, width, decimals, flags, out, capacity, length);
  }
  const int count = digit_count(std::max(scaled, powers_of_ten[decimals]));
  Unit* position = write_minus(value, out);
  position =
      grouped
          ? write_groups_of_three(record, scaled, count - decimals, decimals, decimals, position)
          : write_parted(record, DigitBlock(scaled, count), count - decimals, count, position);
  return done(out, position, length);
}

// One digit before the point, `decimals` up to 16 behind it.
template <typename Unit>
[[gnu::noinline]] std::uint32_t format_exponent(LocaleHandle* handle, double value,
                                                std::int32_t width, std::int32_t decimals,
                                                std::uint32_t flags, Unit* out,
                                                std::int64_t capacity,
                                                std::int64_t* length) noexcept {
  const LocaleRecord& record = *handle->record;
  Significand rounded;
  if (!is_finite_but_zero(value) || decimals > block_digits ||
      !has_narrow_symbols<Unit>(record, false) ||
      !round_to_significant(magnitude_of(value), decimals + 1, rounded)) [[unlikely]] {
    return format_number_here(handle, value, width, decimals, flags, out, capacity, length);
  }
  std::uint64_t first = rounded.digits / powers_of_ten[decimals];
  const std::uint64_t rest = rounded.digits - first * powers_of_ten[decimals];
  if (first == 10) {  // the rounding carried
    first = 1;
    ++rounded.exponent;
  }
  Unit* position = write_minus(value, out);
  *position++ = static_cast<Unit>('0' + first);
  if (decimals != 0) {
    *position++ = static_cast<Unit>(record.decimal_symbol);
    DigitBlock(rest, decimals).write(decimals, position);
    position += decimals;
  }
  const bool capital = (flags & number_flags::exponent_capital) != 0;
  return done(out, write_exponent_suffix(rounded.exponent, capital, position), length);
}

template <bool grouped, typename Unit>
[[gnu::noinline]] std::uint32_t format_general(LocaleHandle* handle, double value,
                                               std::int32_t width, std::int32_t decimals,
                                               std::uint32_t flags, Unit* out,
                                               std::int64_t capacity,
                                               std::int64_t* length) noexcept {
  const LocaleRecord& record = *handle->record;
  const int significant = decimals == 0 ? 6 : decimals;
  Significand rounded;
  if (!is_finite_but_zero(value) || significant >= block_digits ||
      !has_narrow_symbols<Unit>(record, grouped) ||
      !round_to_significant(magnitude_of(value), significant, rounded)) [[unlikely]] {
    return format_number_here(handle, value, width, decimals, flags, out, capacity, length);
  }
  const int carried = rounded.digits >= powers_of_ten[significant] ? 1 : 0;
  const int count = significant + carried;
  const int exponent = rounded.exponent + carried;
  const DigitBlock block(rounded.digits, count);
  int shown = block.significant(count);
  Unit* position = write_minus(value, out);
  if (rounded.exponent < -4 || rounded.exponent >= significant) {
    position = write_parted(record, block, 1, shown, position);
    const bool capital = (flags & number_flags::general_capital) != 0;
    return done(out, write_exponent_suffix(exponent, capital, position), length);
  }
  if (exponent >= 0) {
    const int integers = exponent + 1;
    shown = std::max(shown, integers);
    position = grouped ? write_groups_of_three(record, rounded.digits, integers, count - integers,
                                               shown - integers, position)
                       : write_parted(record, block, integers, shown, position);
    return done(out, position, length);
  }
  // "0", the point and up to three zeros before the digits.
  *position++ = Unit{'0'};
  *position++ = static_cast<Unit>(record.decimal_symbol);
  for (int i = 0; i < 4; ++i) position[i] = Unit{'0'};
  position -= exponent + 1;
  block.write(shown, position);
  return done(out, position + shown, length);
}

}  // namespace quick_number
}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_FIELDLESS_NUMBER_H_
