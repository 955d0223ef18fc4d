// What a date looks like at a glance: enough to tell which layouts cannot read it.

#ifndef JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_
#define JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_

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
    __m128i found[4] = {};
    const Unit* const last = text + length - unit_block::units;
    for (const Unit* at = text;; at += unit_block::units) {
      // The last block may overlap the one before.
      const __m128i block = unit_block::load(at < last ? at : last);
      for (int i = 0; i < 4; ++i) {
        const __m128i same = unit_block::equal_to(block, static_cast<char>(',' + i));
        found[i] = _mm_or_si128(found[i], same);
      }
      if (at >= last) break;
    }
    const std::uint32_t low = unit_block::lanes(_mm_packs_epi16(found[0], found[1]));
    const std::uint32_t high = unit_block::lanes(_mm_packs_epi16(found[2], found[3]));
    marks = (low & 0xFF) != 0 ? 1 : 0;
    marks |= low > 0xFF ? 2 : 0;
    marks |= (high & 0xFF) != 0 ? 4 : 0;
    marks |= high > 0xFF ? 8 : 0;
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
};

/// The shape of a text that begins with no blank.
template <typename Unit>
DateShape date_shape_of(const Unit* text, std::size_t length) noexcept {
  std::uint32_t digits = 0;
#if defined(__SSE2__)
  if (length >= unit_block::units) {
    // Digits become the ten smallest signed numbers.
    const __m128i moved =
        _mm_add_epi16(unit_block::load(text), _mm_set1_epi16(static_cast<short>(0x8000 - '0')));
    const __m128i others = _mm_cmpgt_epi16(moved, _mm_set1_epi16(static_cast<short>(0x8000 + 9)));
    digits = static_cast<std::uint32_t>(std::countr_zero(unit_block::lanes(others) | 1u << 10)) / 2;
  } else
#endif
  {
    while (digits < 5 && digits < length &&
           static_cast<std::uint32_t>(text[digits]) - std::uint32_t{'0'} <= 9) {
      ++digits;
    }
  }
  const DateMarks next = digits < length ? date_mark(static_cast<std::uint32_t>(text[digits])) : 0;
  return {date_marks_of(text, length), digits, next};
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_
