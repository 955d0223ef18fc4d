// Integers without a field, as most are asked for: the usual radixes, a minus at most, and room to
// spare. What the text leaves of the room is zero, so whole blocks are stored with no regard to the
// digits' number.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_FIELDLESS_INTEGER_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_FIELDLESS_INTEGER_H_

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "abi/status.h"
#include "module/digits/digit_block.h"
#include "module/digits/digit_groups.h"
#include "module/digits/powers_of_ten.h"
#include "module/placement/groups_of_three.h"
#include "module/text/copy_text.h"

namespace jwnls::fieldless_integer {

/// The room that a quick way needs.
inline constexpr std::int64_t room = 32;

// The writers tell `tell` how many units they write, without the zero units behind them: before
// they write them, while few registers are in use.

template <typename Unit, typename Tell>
[[gnu::always_inline]] inline void write_decimal(std::uint64_t magnitude, Unit* out,
                                                 Tell tell) noexcept {
  int count = 0;
  const DigitBlock block(magnitude, magnitude, count);
  tell(count);
  block.write(count, out);
}

// The same of more than sixteen digits.
template <typename Unit, typename Tell>
[[gnu::always_inline]] inline void write_long_decimal(std::uint64_t magnitude, Unit* out,
                                                      Tell tell) noexcept {
  const std::uint64_t front = over_ten_to_16(magnitude);
  const int count = digit_count(front);
  tell(count + block_digits);
  DigitBlock(front, count).write(count, out);
  DigitBlock(magnitude - front * ten_to_16, block_digits).write(block_digits, out + count);
}

template <typename Unit, typename Tell>
[[gnu::always_inline]] inline void write_grouped(std::uint64_t magnitude, Unit separator, Unit* out,
                                                 Tell tell) noexcept {
  const groups_of_three::Place place = place_of_groups(magnitude);
  tell(place.length);
  write_groups_of_three(magnitude, place, 0, separator, out);
}

// The same of more than eighteen digits.
template <typename Unit, typename Tell>
[[gnu::always_inline]] inline void write_long_grouped(std::uint64_t magnitude, Unit separator,
                                                      Unit* out, Tell tell) noexcept {
  const std::uint64_t front = over_ten_to_18(magnitude);
  const int count = digit_count(front);
  tell(count + most_grouped_digits + most_groups);
  DigitBlock(front, count).write(count, out);
  out[count] = separator;
  // All six groups, whatever zeros the rest begins with.
  write_18_digits_in_groups(magnitude - front * ten_to_18, most_groups, 0, 0, separator,
                            out + count + 1);
}

template <bool capital, typename Unit, typename Tell>
[[gnu::always_inline]] inline void write_hexadecimal(std::uint64_t number, Unit* out,
                                                     Tell tell) noexcept {
  const unsigned highest_bit = 63 ^ static_cast<unsigned>(std::countl_zero(number | 1));
  const unsigned count = highest_bit / 4 + 1;
  tell(count);
  DigitBlock::hexadecimal(number << (~highest_bit & 60), capital)
      .write(static_cast<int>(count), out);
}

// Sets what lies behind the quick room to zero.
template <typename Unit>
[[gnu::noinline]] std::uint32_t zero_behind(Unit* out, std::int64_t capacity) noexcept {
  zero_units(out + room, capacity - room);
  return code(Status::ok);
}

template <typename Integer>
constexpr std::uint64_t magnitude_of(Integer value) noexcept {
  const auto bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
  return std::is_signed_v<Integer> && value < 0 ? 0 - bits : static_cast<std::uint64_t>(value);
}

// The quick way around `write(magnitude, position, tell)`.
template <typename Integer, typename Unit, typename Write>
[[gnu::always_inline]] inline std::uint32_t write_quickly(Integer value, Write write, Unit* out,
                                                          std::int64_t capacity,
                                                          std::int64_t* length) noexcept {
  std::memset(out + block_digits, 0, block_digits * sizeof(Unit));
  int sign = 0;
  if constexpr (std::is_signed_v<Integer>) {
    sign = value < 0 ? 1 : 0;
    *out = Unit{'-'};
  }
  write(magnitude_of(value), out + sign,
        [=](auto count) { *length = sign + static_cast<std::int64_t>(count); });
  if (capacity > room) [[unlikely]]
    return zero_behind(out, capacity);
  return code(Status::ok);
}

// The quick ways that few numbers take are functions apart, so that the others have no registers to
// save.

template <typename Integer, typename Unit>
[[gnu::noinline]] std::uint32_t format_capital_hexadecimal(Integer value, Unit* out,
                                                           std::int64_t capacity,
                                                           std::int64_t* length) noexcept {
  return write_quickly(
      value, [](auto... call) { write_hexadecimal<true>(call...); }, out, capacity, length);
}

template <typename Integer, typename Unit>
[[gnu::noinline]] std::uint32_t format_long(Integer value, Unit* out, std::int64_t capacity,
                                            std::int64_t* length) noexcept {
  return write_quickly(
      value, [](auto... call) { write_long_decimal(call...); }, out, capacity, length);
}

template <typename Integer, typename Unit>
[[gnu::always_inline]] inline std::uint32_t format_grouped(Integer value, Unit separator, Unit* out,
                                                           std::int64_t capacity,
                                                           std::int64_t* length) noexcept {
  return write_quickly(
      value,
      [=](std::uint64_t magnitude, Unit* to, auto tell) {
        write_grouped(magnitude, separator, to, tell);
      },
      out, capacity, length);
}

template <typename Integer, typename Unit>
[[gnu::noinline]] std::uint32_t format_long_grouped(Integer value, Unit separator, Unit* out,
                                                    std::int64_t capacity,
                                                    std::int64_t* length) noexcept {
  return write_quickly(
      value,
      [=](std::uint64_t magnitude, Unit* to, auto tell) {
        write_long_grouped(magnitude, separator, to, tell);
      },
      out, capacity, length);
}

}  // namespace jwnls::fieldless_integer

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_FIELDLESS_INTEGER_H_
