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
#include "abi/number_flags.h"
#include "abi/status.h"
#include "module/digits/decimal.h"
#include "module/digits/digit_block.h"
#include "module/digits/powers_of_ten.h"
#include "module/format_numbers/number_formatter.h"
#include "module/format_numbers/number_request.h"
#include "module/placement/decimal_body.h"
#include "module/placement/exponent_suffix.h"
#include "module/placement/groups_of_three.h"
#include "module/placement/symbols.h"

namespace jwnls {

inline double magnitude_of(double value) noexcept {
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) << 1 >> 1);
}

namespace fieldless_number {

/// The room that these ways may overwrite, whatever the number's own length.
inline constexpr std::int64_t room = 64;
/// The most decimals that they are asked for.
inline constexpr std::uint32_t most_decimals_asked = 17;

/// Amounts, as most numbers are: from 2^-12 to below 2^39, with three decimals at most. One word
/// holds such a value times 10^decimals, and the rounded product has fifteen digits at most.
inline bool is_amount(double value, std::int32_t decimals) noexcept {
  const auto biased_exponent =
      static_cast<unsigned>(std::bit_cast<std::uint64_t>(value) >> 52 & 0x7FF);
  return biased_exponent - (1023 - 12) < 12 + 39 && static_cast<std::uint32_t>(decimals) <= 3;
}

template <bool grouped, typename Unit>
[[gnu::noinline]] std::uint32_t write_amount(const LocaleRecord& record, double value, int decimals,
                                             Unit* out, std::int64_t* length) noexcept {
  const Symbols<Unit> symbols{record};
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
    write_groups_of_three(scaled, place, decimals, symbols.grouping(), out);
    if (decimals != 0) *point = symbols.decimal();
  } else {
    int count = 0;
    const DigitBlock block(scaled, counted, count);
    if (length != nullptr) [[likely]]
      *length = sign + count + (decimals == 0 ? 0 : 1);
    if (decimals == 0) {
      block.write(count, out);
    } else {
      block.write_parted(count - decimals, symbols.decimal(), count, out);
    }
  }
  return code(Status::ok);
}

/// Any value in a plain form, with groups of three if any.
template <DecimalForm form, bool grouped, typename Unit>
[[gnu::noinline]] std::uint32_t format(LocaleHandle* handle, double value, std::int32_t width,
                                       std::int32_t decimals, std::uint32_t flags, Unit* out,
                                       std::int64_t capacity, std::int64_t* length) noexcept {
  constexpr bool general = form == DecimalForm::general;
  const Symbols<Unit> symbols{*handle->record};
  const int wanted = general && decimals == 0 ? default_significant_digits : decimals;
  Decimal decimal;
  if (!symbols.narrow(grouped) || !quick_decimal<form>(magnitude_of(value), wanted, false, decimal))
      [[unlikely]] {
    return format_any_number(handle, value, width, decimals, flags, out, capacity, length);
  }
  const DecimalShape& shape = decimal.shape;
  // The sign goes first: what follows overwrites it where the value is not negative.
  Unit* position = out;
  *position = Unit{'-'};
  position += value < 0 ? 1 : 0;
  if (grouped && !shape.has_exponent && shape.zeros == 0) {
    position = write_groups_of_three(symbols, decimal.number, shape.integers,
                                     decimal.count - shape.integers, shape.decimals, position);
  } else {
    position = write_word_digits(symbols, decimal, position);
  }
  if (shape.has_exponent) {
    constexpr std::uint32_t capital_bit =
        general ? number_flags::general_capital : number_flags::exponent_capital;
    position = write_exponent_suffix(shape.exponent, (flags & capital_bit) != 0, position);
  }
  if (length != nullptr) [[likely]]
    *length = position - out;
  return code(Status::ok);
}

}  // namespace fieldless_number
}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_FIELDLESS_NUMBER_H_
