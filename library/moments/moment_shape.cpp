#include "library/moments/moment_shape.h"

#include <bit>
#include <cstddef>
#include <cstdint>

#include "library/dates/date_shape.h"
#include "library/dates/text_outline.h"
#include "module/calendar/civil.h"

namespace jwnls::library {
namespace {

// Whether the last number, which begins at `last`, may be a fraction of a second: "14:30:05.25",
// "14.30.05,25".
bool may_be_fraction(std::string_view text, std::size_t last) noexcept {
  if (last < 4 || !is_digit(text[last - 2])) return false;
  const char mark = text[last - 1];
  const char before = text[last - 4];
  return (mark == ',' && (before == ':' || before == '.')) || (mark == '.' && before == ':');
}

// Of which a date is told even where no time follows.
bool has_old_year(const Numbers& numbers) noexcept {
  for (std::size_t i = 0; i < numbers.count && i < 3; ++i) {
    const Numbers::Number& each = numbers.number[i];
    if (each.digits() == 4 && each.value < first_year) return true;
    if (each.digits() == 8 && each.value / 10000 < first_year) return true;
  }
  return false;
}

}  // namespace

bool is_no_moment(const DateLayout& dates, const TimeLayout& times,
                  std::string_view text) noexcept {
  const TimeShape& shape = times.shape;
  if (text.size() > longest_outlined || dates.time_first || !times.is_quick || !shape.is_known() ||
      dates.century < first_year || !keeps_its_numbers(dates, text)) {
    return false;
  }
  const std::uint64_t digits = digits_of(text);
  const std::uint64_t begins = digits & ~(digits << 1);
  Numbers numbers = numbers_of(text, digits);
  if (has_old_year(numbers)) return false;
  const std::size_t count = number_count(digits);
  if (count < 3) return true;
  if (may_be_fraction(text, 63 - static_cast<std::size_t>(std::countl_zero(begins)))) return false;
  if (count > 3 + TimeShape::most_numbers) return true;
  const bool begins_with_hour = !times.half_first;
  std::uint64_t later = begins;  // those behind the date's
  for (std::size_t of_date = 1; of_date <= 3 && of_date + 2 <= count; ++of_date) {
    later &= later - 1;
    const std::size_t of_time = count - of_date;
    if (of_time > TimeShape::most_numbers) continue;
    if (of_date == 1 && numbers.number[0].digits() != 8) continue;
    // A text parts at a blank, behind a number or before the hour.
    const auto time = static_cast<std::size_t>(std::countr_zero(later));
    if (text[time - 1] == ':' && !dates.colon_joins && begins_with_hour) continue;
    numbers.count = of_date;
    if (is_no_date_in_front(dates, text.substr(0, time), numbers)) continue;
    if (shape.could_end(text, digits, of_time)) return false;
  }
  return true;
}

}  // namespace jwnls::library
