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
  for (std::size_t i = 0; i < numbers.count && i < NumberRuns::most; ++i) {
    const NumberRuns::Run& each = numbers.run[i];
    if (each.digits() != 4 && each.digits() != 8) continue;
    std::int32_t year = 0;
    for (std::size_t at = 0; at < 4; ++at) year = year * 10 + (text[each.begin + at] - '0');
    if (year < first_year) return true;
  }
  return false;
}

// Whether no date in front and time behind is the text.
bool is_no_date_and_time(const DateLayout& dates, const TimeLayout& times, std::string_view text,
                         const NumberRuns& runs) noexcept {
  Numbers numbers;
  for (std::size_t of_date = 1; of_date <= 3 && of_date + 2 <= runs.count; ++of_date) {
    const NumberRuns::Run& last = runs.run[of_date - 1];
    numbers.number[numbers.count++] = {0, last.begin, last.end};
    const std::size_t of_time = runs.count - of_date;
    if (of_time > TimeShape::most_numbers) continue;
    if (of_date == 1 && last.digits() != 8) continue;
    // A text parts at a blank, behind a number or before the hour.
    const std::size_t time = runs.run[of_date].begin;
    if (text[time - 1] == ':' && !dates.colon_joins && !times.half_first) continue;
    // What is not read has most often something wrong where it does not begin with a number.
    const auto is_time = [&] { return times.shape.could_end(text, runs.last(of_time)); };
    const auto is_date = [&] { return !is_no_date_in_front(dates, text.substr(0, time), numbers); };
    if (is_digit(text.front()) ? is_time() && is_date() : is_date() && is_time()) return false;
  }
  return true;
}

// Whether no time in front and date behind is the text.
bool is_no_time_and_date(const DateLayout& dates, const TimeLayout& times, std::string_view text,
                         const NumberRuns& runs) noexcept {
  if (!times.day_parts.empty()) return false;  // which the shape does not know
  for (std::size_t of_date = 1; of_date <= 3 && of_date < runs.count; ++of_date) {
    const std::size_t of_time = runs.count - of_date;
    if (of_date == 1 && runs.run[of_time].digits() != 8) continue;
    // A fraction may follow three numbers of the time.
    if (of_time > TimeShape::most_numbers) {
      if (of_time == TimeShape::most_numbers + 1) return false;
      continue;
    }
    Numbers numbers;
    for (const NumberRuns::Run& each : runs.last(of_date)) {
      numbers.number[numbers.count++] = {0, each.begin, each.end};
    }
    if (times.shape.could_begin(text, runs.first(of_time)) &&
        !is_no_date_behind(dates, text, numbers)) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool is_no_moment(const DateLayout& dates, const TimeLayout& times, std::string_view text,
                  const NumberRuns& runs) noexcept {
  if (!times.is_quick || !times.shape.is_known() || dates.century < first_year ||
      has_old_year(text, runs)) {
    return false;
  }
  if (runs.count < 3 || runs.count > NumberRuns::most) return true;
  if (may_be_fraction(text, runs.run[runs.count - 1].begin)) return false;
  if (dates.time_first && !is_no_time_and_date(dates, times, text, runs)) return false;
  return runs.count > 3 + TimeShape::most_numbers || is_no_date_and_time(dates, times, text, runs);
}

}  // namespace jwnls::library
