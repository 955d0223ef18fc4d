// What a date looks like at a glance: enough to tell which layouts cannot read it.

#ifndef JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_
#define JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "module/text/unit_block.h"

namespace jwnls {

/// A set of the marks ',', '-', '.' and '/', in this order.
using DateMarks = std::uint32_t;

inline constexpr std::size_t date_mark_sets = 16;

/// The bit of a mark; 0 for every other unit.
constexpr DateMarks date_mark(std::uint32_t unit) noexcept {
  const std::uint32_t place = unit - std::uint32_t{','};
  return place < 4 ? 1u << place : 0;
}

/// The marks that a text (or a pattern) holds.
template <typename Unit>
constexpr DateMarks date_marks_of(const Unit* text, std::size_t length) noexcept {
  DateMarks marks = 0;
#if defined(__SSE2__)
  if (length >= unit_block::units && !std::is_constant_evaluated()) {
    // Twice eight units a turn; those at the end may be taken again.
    __m128i found[4] = {};
    const std::size_t last = length - unit_block::units;
    std::size_t at = 0;
    do {
      const __m128i bytes = unit_block::load_bytes(text + std::min(at, last),
                                                   text + std::min(at + unit_block::units, last));
      for (int i = 0; i < 4; ++i) {
        const __m128i same = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(',' + i)));
        found[i] = _mm_or_si128(found[i], same);
      }
      at += 2 * unit_block::units;
    } while (at < length);
    for (int i = 0; i < 4; ++i) marks |= unit_block::lanes(found[i]) != 0 ? 1u << i : 0;
    return marks;
  }
#endif
  for (std::size_t i = 0; i < length; ++i) {
    marks |= date_mark(static_cast<std::uint32_t>(text[i]));
  }
  return marks;
}

struct DateShape {
  DateMarks marks;               // all that it holds
  std::uint32_t leading_digits;  // that it begins with; 5 stands for more than 4
  DateMarks next;                // the mark behind them, if it is one
  bool number_next;              // a number may stand behind that mark: a digit or a blank does
  DateMarks last;                // the mark before the digits that it ends with, if it is one
};

namespace date_shape {

#if defined(__SSE2__)
// Two bits for each of the eight units that is no digit.
template <typename Unit>
std::uint32_t other_lanes(const Unit* text) noexcept {
  // Digits become the ten smallest signed numbers.
  const __m128i moved =
      _mm_add_epi16(unit_block::load(text), _mm_set1_epi16(static_cast<short>(0x8000 - '0')));
  return unit_block::lanes(_mm_cmpgt_epi16(moved, _mm_set1_epi16(static_cast<short>(0x8000 + 9))));
}
#endif

template <typename Unit>
bool is_digit(Unit unit) noexcept {
  return static_cast<std::uint32_t>(unit) - std::uint32_t{'0'} <= 9;
}

}  // namespace date_shape

/// The shape of a text that begins with no blank.
template <typename Unit>
DateShape date_shape_of(const Unit* text, std::size_t length) noexcept {
  using date_shape::is_digit;
  std::size_t digits = 0;
  std::size_t last = length;  // one behind the last unit that is no digit
#if defined(__SSE2__)
  if (length >= unit_block::units) {
    digits =
        static_cast<std::size_t>(std::countr_zero(date_shape::other_lanes(text) | 1u << 10)) / 2;
    const std::uint32_t others = date_shape::other_lanes(text + length - unit_block::units);
    last -= static_cast<std::size_t>(std::countl_zero(others << 16 | 1u << 15)) / 2;
  } else
#endif
  {
    while (digits < 5 && digits < length && is_digit(text[digits])) ++digits;
    while (last > 0 && is_digit(text[last - 1])) --last;
  }
  const auto mark_at = [=](std::size_t at) {
    return at < length ? date_mark(static_cast<std::uint32_t>(text[at])) : 0;
  };
  const bool number_next =
      digits + 1 < length && (is_digit(text[digits + 1]) || text[digits + 1] == Unit{' '});
  return {date_marks_of(text, length), static_cast<std::uint32_t>(digits), mark_at(digits),
          number_next, mark_at(last - 1)};
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_
