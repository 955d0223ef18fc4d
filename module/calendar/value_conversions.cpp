#include "module/calendar/value_conversions.h"

#include "abi/missing_value.h"
#include "module/calendar/civil.h"
#include "module/calendar/datetime_value.h"

namespace jwnls {
namespace {

// A double's date: the bounds are those of the doubles, the date that of the whole numbers.
bool date_of_parts(double month, double day, double year, std::int32_t cutoff,
                   CivilDate& date) noexcept {
  if (!(month >= 1 && month <= 12 && day >= 1 && day <= 31)) return false;
  if (!(year >= 0 && (year <= 99 || (year >= first_year && year <= last_year)))) return false;
  return make_date(static_cast<std::int32_t>(month), static_cast<std::int32_t>(day),
                   static_cast<std::int32_t>(year), cutoff, date) &&
         day <= days_in_month(date.year, date.month);
}

double julian_of(CivilDate date) noexcept {
  return date.year * 1000.0 + (day_from_civil(date) - day_before_year(date.year));
}

// The day of a Julian value; false when it has none.
bool day_of_julian(double julian, std::int32_t cutoff, std::int32_t& day) noexcept {
  constexpr double first_past_range = (last_year + 1) * 1000.0;
  if (!(julian >= 1 && julian < first_past_range)) return false;
  const auto whole = static_cast<std::int32_t>(julian);
  CivilDate new_year;
  if (!make_date(1, 1, whole / 1000, cutoff, new_year)) return false;
  const std::int32_t day_of_year = whole % 1000;
  day = day_before_year(new_year.year) + day_of_year;
  return day_of_year >= 1 && day_of_year <= (is_leap_year(new_year.year) ? 366 : 365);
}

}  // namespace

double date_parts_to_julian(double month, double day, double year, std::int32_t cutoff) noexcept {
  CivilDate date;
  return date_of_parts(month, day, year, cutoff, date) ? julian_of(date) : missing_value();
}

double date_parts_to_date_value(double month, double day, double year,
                                std::int32_t cutoff) noexcept {
  CivilDate date;
  return date_of_parts(month, day, year, cutoff, date) ? day_from_civil(date) : missing_value();
}

double julian_to_date_value(double julian, std::int32_t cutoff) noexcept {
  std::int32_t day = 0;
  return day_of_julian(julian, cutoff, day) ? day : missing_value();
}

void julian_to_date_parts(double julian, std::int32_t cutoff, double& year, double& month,
                          double& day) noexcept {
  std::int32_t date_value = 0;
  if (!day_of_julian(julian, cutoff, date_value)) {
    year = month = day = missing_value();
    return;
  }
  const CivilDate date = civil_from_day(date_value);
  year = date.year;
  month = date.month;
  day = date.day;
}

double date_value_to_julian(double date, std::int32_t& year) noexcept {
  if (is_missing(date)) return date;
  if (!(date >= first_day && date < end_day)) return missing_value();
  auto day = static_cast<std::int32_t>(date);
  if (date < day) --day;  // floor, for dates before day 0
  const CivilDate civil = civil_from_day(day);
  year = civil.year;
  return julian_of(civil);
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
