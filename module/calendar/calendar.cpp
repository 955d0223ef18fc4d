#include "module/calendar/calendar.h"

namespace jwnls {
namespace {

// Sets the scratch for a full year. Returns false for a year outside the calendar, which a
// two-digit year can become under an odd cutoff.
bool set_year(std::int64_t year, CalendarScratch& scratch) noexcept {
  if (year < first_year || year > last_year) return false;
  scratch.year = static_cast<std::int32_t>(year);
  scratch.days_in_year = is_leap_year(scratch.year) ? 366 : 365;
  scratch.month_lengths[1] = days_in_month(scratch.year, 2);
  return true;
}

// Splits a Julian value into the scratch's year and day of year. Returns false when it has none.
bool split_julian(double julian, CalendarScratch& scratch) noexcept {
  constexpr double first_past_range = (last_year + 1) * 1000.0;
  if (!(julian >= 1 && julian < first_past_range)) return false;
  const auto whole = static_cast<std::int32_t>(julian);
  std::int64_t year = whole / 1000;
  const std::int32_t day = whole % 1000;
  if (year <= 99) year = widen_year(year, scratch.year_cutoff);
  if (!set_year(year, scratch)) return false;
  scratch.day_of_year = day;
  return day >= 1 && day <= scratch.days_in_year;
}

}  // namespace

double date_parts_to_julian(double month, double day, double year,
                            CalendarScratch& scratch) noexcept {
  if (!(month >= 1 && month <= 12 && day >= 1 && day <= 31)) return missing_value();
  if (!(year >= 0 && (year <= 99 || (year >= first_year && year <= last_year)))) {
    return missing_value();
  }
  std::int64_t full_year = static_cast<std::int32_t>(year);
  if (full_year <= 99) full_year = widen_year(full_year, scratch.year_cutoff);
  if (!set_year(full_year, scratch)) return missing_value();
  const auto month_number = static_cast<std::int32_t>(month);
  // On the double: 30.5 is a day of a month of 31 days and truncated, 31.5 is none.
  if (day > scratch.month_lengths[month_number - 1]) return missing_value();
  scratch.day_of_year =
      days_before_month(scratch.year, month_number) + static_cast<std::int32_t>(day);
  return scratch.year * 1000.0 + scratch.day_of_year;
}

double julian_to_date_value(double julian, CalendarScratch& scratch) noexcept {
  if (!split_julian(julian, scratch)) return missing_value();
  return day_before_year(scratch.year) + scratch.day_of_year;
}

double date_parts_to_date_value(double month, double day, double year,
                                CalendarScratch& scratch) noexcept {
  return julian_to_date_value(date_parts_to_julian(month, day, year, scratch), scratch);
}

int julian_to_date_parts(double julian, CalendarScratch& scratch, double& year, double& month,
                         double& day) noexcept {
  if (!split_julian(julian, scratch)) {
    year = month = day = missing_value();
    return 0;
  }
  const CivilDate date = civil_from_day(day_before_year(scratch.year) + scratch.day_of_year);
  year = date.year;
  month = date.month;
  day = date.day;
  return 0;
}

double date_value_to_julian(double date, std::int32_t& year) noexcept {
  if (is_missing(date)) return date;
  if (!(date >= first_day && date < end_day)) return missing_value();
  auto day = static_cast<std::int32_t>(date);
  if (date < day) --day;  // floor, for dates before day 0
  year = civil_from_day(day).year;
  return year * 1000.0 + (day - day_before_year(year));
}

double date_value_to_weekday(double date) noexcept {
  if (!(date >= first_day && date < end_day)) return missing_value();
  // Truncated towards zero, with the remainder's sign: below 1 for the first nine days,
  // deliberately.
  return static_cast<std::int32_t>(138052 + date) % 7 + 1;
}

double datetime_to_date_value(double datetime) noexcept {
  return datetime_in_range(datetime) ? day_of_datetime(datetime) : missing_value();
}

double datetime_to_time_of_day(double datetime) noexcept {
  if (!datetime_in_range(datetime)) return missing_value();
  // Whole days are added first, so a hair below midnight may round up to that midnight and is 0.
  return clock_seconds(datetime <= 0 ? datetime - first_second : datetime);
}

double datetime_to_hour(double datetime) noexcept {
  if (!datetime_in_range(datetime)) return missing_value();
  return static_cast<std::int32_t>(clock_seconds(datetime)) / 3600 % 24;
}

double datetime_to_minute(double datetime) noexcept {
  if (!datetime_in_range(datetime)) return missing_value();
  const std::int32_t minute = static_cast<std::int32_t>(clock_seconds(datetime)) % 3600 / 60;
  return minute;
}

double datetime_to_second(double datetime) noexcept {
  if (!datetime_in_range(datetime)) return missing_value();
  const double seconds = clock_seconds(datetime);
  const auto whole = static_cast<std::int32_t>(seconds);
  return whole % 60 + (seconds - whole);
}

}  // namespace jwnls
