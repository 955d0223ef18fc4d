// What a date looks like at a glance: enough to tell which layouts cannot read it.

#ifndef JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_
#define JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "abi/locale_record.h"
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

/// The marks that a text or a pattern holds.
template <typename Unit>
constexpr DateMarks date_marks_of(const Unit* text, std::size_t length) noexcept {
  DateMarks marks = 0;
  for (std::size_t i = 0; i < length; ++i) {
    marks |= date_mark(static_cast<std::uint32_t>(text[i]));
  }
  return marks;
}

/// A search of the record's patterns for any of some marks.
class MarkSearch {
 public:
  explicit MarkSearch(DateMarks wanted) noexcept : wanted_(wanted) {}

  bool holds_any(const TextEntry& pattern) const noexcept {
#if defined(__SSE2__)
    if (pattern.length >= 0 && pattern.length <= 2 * unit_block::units) [[likely]] {
      if (wanted_ == 0) return false;
      const __m128i bytes =
          unit_block::load_bytes(pattern.units, pattern.units + unit_block::units);
      __m128i found = _mm_setzero_si128();
      for (const auto& mark : bytes_of_sets[wanted_]) {
        const __m128i wanted = _mm_load_si128(reinterpret_cast<const __m128i*>(mark.data()));
        found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, wanted));
      }
      return (unit_block::lanes(found) & ((1u << pattern.length) - 1)) != 0;
    }
#endif
    const std::u16string_view text = text_of(pattern);
    return (date_marks_of(text.data(), text.size()) & wanted_) != 0;
  }

 private:
  using Bytes = std::array<char, 16>;

  // For each set four blocks of one of its marks each, some of them twice.
  alignas(16) static constexpr auto bytes_of_sets = [] {
    std::array<std::array<Bytes, 4>, date_mark_sets> sets{};
    for (DateMarks set = 1; set < date_mark_sets; ++set) {
      for (int i = 0; i < 4; ++i) {
        const int mark = (set >> i & 1) != 0 ? i : std::countr_zero(set);
        sets[set][static_cast<std::size_t>(i)].fill(static_cast<char>(',' + mark));
      }
    }
    return sets;
  }();

  DateMarks wanted_;
};

struct DateShape {
  DateMarks marks;               // all that it holds
  std::uint32_t leading_digits;  // that it begins with; 5 stands for more than 4
  DateMarks next;                // the mark behind them, if it is one
  bool number_next;              // a number may stand behind that mark: a digit or a blank does
  DateMarks last;                // the mark before the digits that it ends with, if it is one
};

namespace date_shape {

template <typename Unit>
constexpr bool is_digit(Unit unit) noexcept {
  return static_cast<std::uint32_t>(unit) - std::uint32_t{'0'} <= 9;
}

// What takes a look at every unit.
struct Scan {
  DateMarks marks;
  std::size_t leading_digits;  // up to 5
  std::size_t last_other;      // one behind the last unit that is no digit, or less than 1
};

template <typename Unit>
Scan scan(const Unit* text, std::size_t length) noexcept {
#if defined(__SSE2__)
  if (length >= unit_block::units) [[likely]] {
    // Twice eight units a turn, those at the end last; some may be taken again.
    const std::size_t last = length - unit_block::units;
    __m128i found[4] = {};
    std::uint32_t others = 0;  // a bit for each unit that is no digit
    std::size_t leading_digits = 0;
    for (std::size_t at = 0; at < length; at += 2 * unit_block::units) {
      const __m128i bytes = unit_block::load_bytes(text + std::min(at, last),
                                                   text + std::min(at + unit_block::units, last));
      for (int i = 0; i < 4; ++i) {
        const __m128i same = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(',' + i)));
        found[i] = _mm_or_si128(found[i], same);
      }
      // Digits become the ten smallest signed numbers.
      const __m128i moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(0x80 - '0')));
      others = unit_block::lanes(_mm_cmpgt_epi8(moved, _mm_set1_epi8(-0x80 + 9)));
      if (at == 0) leading_digits = static_cast<std::size_t>(std::countr_zero(others | 1u << 5));
    }
    DateMarks marks = 0;
    for (int i = 0; i < 4; ++i) marks |= unit_block::lanes(found[i]) != 0 ? 1u << i : 0;
    const int ending_digits = std::countl_zero(others << 16 | 1u << 23);
    return {marks, leading_digits, length - static_cast<std::size_t>(ending_digits)};
  }
#endif
  std::size_t digits = 0;
  while (digits < 5 && digits < length && is_digit(text[digits])) ++digits;
  std::size_t last = length;
  while (last > 0 && is_digit(text[last - 1])) --last;
  return {date_marks_of(text, length), digits, last};
}

}  // namespace date_shape

/// The shape of a text that begins with no blank.
template <typename Unit>
DateShape date_shape_of(const Unit* text, std::size_t length) noexcept {
  const auto [marks, digits, last_other] = date_shape::scan(text, length);
  const auto mark_at = [=](std::size_t at) noexcept {
    return at < length ? date_mark(static_cast<std::uint32_t>(text[at])) : 0;
  };
  const bool number_next = digits + 1 < length && (date_shape::is_digit(text[digits + 1]) ||
                                                   text[digits + 1] == Unit{' '});
  return {marks, static_cast<std::uint32_t>(digits), mark_at(digits), number_next,
          mark_at(last_other - 1)};
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_DATE_SHAPE_H_
