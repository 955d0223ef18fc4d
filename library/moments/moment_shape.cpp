#include "library/moments/moment_shape.h"

#include <cstddef>
#include <cstdint>

#include "library/dates/date_shape.h"
#include "library/locale_data/number_runs.h"
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
bool has_old_year(std::string_view text, const NumberRuns& numbers) noexcept {
  for (std::size_t i = 0; i < numbers.count && i < 3; ++i) {
    const NumberRuns::Run& each = numbers.run[i];
    if (each.digits() != 4 && each.digits() != 8) continue;
    std::int32_t year = 0;
    for (std::size_t at = 0; at < 4; ++at) year = year * 10 + (text[each.begin + at] - '0');
    if (year < first_year) return true;
  }
  return false;
}

}  // namespace

bool is_no_moment(const DateLayout& dates, const TimeLayout& times, std::string_view text,
                  const NumberRuns& runs) noexcept {
  const TimeShape& shape = times.shape;
  if (dates.time_first || !times.is_quick || !shape.is_known() || dates.century < first_year ||
      has_old_year(text, runs)) {
    return false;
  }
  const std::size_t count = runs.count;
  if (count < 3 || count > NumberRuns::most) return true;
  if (may_be_fraction(text, runs.run[count - 1].begin)) return false;
  if (count > 3 + TimeShape::most_numbers) return true;
  const bool begins_with_hour = !times.half_first;
  Numbers numbers;
  for (std::size_t of_date = 1; of_date <= 3 && of_date + 2 <= count; ++of_date) {
    const NumberRuns::Run& last = runs.run[of_date - 1];
    numbers.number[numbers.count++] = {0, last.begin, last.end};
    const std::size_t of_time = count - of_date;
    if (of_time > TimeShape::most_numbers) continue;
    if (of_date == 1 && last.digits() != 8) continue;
    // A text parts at a blank, behind a number or before the hour.
    const std::size_t time = runs.run[of_date].begin;
    if (text[time - 1] == ':' && !dates.colon_joins && begins_with_hour) continue;
    if (shape.could_end(text, runs.last(of_time)) &&
        !is_no_date_in_front(dates, text.substr(0, time), numbers)) {
      return false;
    }
  }
  return true;
}

}  // namespace jwnls::library
