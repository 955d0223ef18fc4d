// The two readers of decimal fields: free width and fixed width.
//
//   free  = blanks digit { digit }          at most `width` digits, none behind them
//   fixed = blanks { digit }                `width` units together, or fewer at the end of the text

#ifndef JWNLS_MODULE_READ_DATES_NUMBER_FIELDS_H_
#define JWNLS_MODULE_READ_DATES_NUMBER_FIELDS_H_

#include <cstddef>
#include <cstdint>

#include "module/text/text_cursor.h"

namespace jwnls {

struct NumberField {
  std::uint32_t width;  // digits
  std::int32_t minimum;
  std::int32_t maximum;

  constexpr bool holds(std::int32_t value) const { return value >= minimum && value <= maximum; }
};

/// Reads the digits that `width` leaves room for; true when there was at least one.
template <typename Unit>
[[gnu::always_inline]] inline bool read_digits(TextCursor<Unit>& input, std::uint32_t width,
                                               std::int32_t& value) noexcept {
  if (width == 2) return input.one_or_two_digits(value);  // nearly every field
  if (width == 4 && input.four_digits(value)) return true;
  const std::uint32_t room = width;
  std::int32_t sum = 0;
  for (; width > 0 && !input.at_end() && input.digit() <= 9; --width) {
    sum = sum * 10 + static_cast<std::int32_t>(input.digit());
    input.step();
  }
  value = sum;
  return width < room;
}

/// Blanks, which do not count, then one digit or two with no digit behind them: a free-width number
/// of width 2.
template <typename Unit>
[[gnu::always_inline]] inline bool read_one_or_two_digits(TextCursor<Unit>& input,
                                                          const NumberField& field,
                                                          std::int32_t& value) noexcept {
  input.skip_blanks();
  if (!input.one_or_two_digits(value)) return false;
  const bool too_many = !input.at_end() && input.digit() <= 9;
  return !too_many && field.holds(value);
}

/// Blanks, which do not count, then 1 to `width` digits with no digit behind them.
template <typename Unit>
[[gnu::always_inline]] inline bool read_free(TextCursor<Unit>& input, const NumberField& field,
                                             std::int32_t& value) noexcept {
  input.skip_blanks();
  if (!read_digits(input, field.width, value)) return false;
  const bool too_many = !input.at_end() && input.digit() <= 9;
  return !too_many && field.holds(value);
}

/// Exactly `width` units, blanks before the digits included; the end of the text may cut it short.
/// A text that ends before any digit counts as 0.
template <typename Unit>
[[gnu::always_inline]] inline bool read_fixed(TextCursor<Unit>& input, const NumberField& field,
                                              std::int32_t& value) noexcept {
  std::uint32_t width = field.width;
  if (width == 2 && input.two_digits(value)) return field.holds(value);
  if (width == 4 && input.four_digits(value)) return field.holds(value);
  for (; width > 0 && input.at(' '); --width) input.step();
  if (width == 0) return false;
  value = 0;
  const std::size_t before = input.remaining();
  read_digits(input, width, value);
  const bool filled = before - input.remaining() == width;
  return (filled || input.at_end()) && field.holds(value);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_NUMBER_FIELDS_H_
