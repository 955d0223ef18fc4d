// Calendar conversions on values: doubles in, doubles out, missing values throughout.
//
// Three scales: a date value counts days from 1 January 1960, a datetime value counts seconds from
// that midnight, a Julian value is year * 1000 + day of year. Valid are 1 January 1582 to 31
// December 20000; invalid input of any kind (NaNs and infinities included) yields the standard
// missing value. Pure functions but for the caller's scratch; any thread may call them.

#ifndef JWNLS_MODULE_CALENDAR_CALENDAR_H_
#define JWNLS_MODULE_CALENDAR_CALENDAR_H_

#include <cstdint>

#include "abi/missing_value.h"
#include "module/calendar/civil.h"

namespace jwnls {

/// What a conversion needs besides the value, and what it leaves behind. Seventeen 32-bit integers.
struct CalendarScratch {
  std::int32_t year;               // the full year of the last conversion
  std::int32_t days_in_year;       // 365 or 366
  std::int32_t day_of_year;        // 1 to 366
  std::int32_t spare;              //
  std::int32_t month_lengths[12];  // February's is set by each conversion
  std::int32_t year_cutoff;        // first year of the window of two-digit years
};
static_assert(sizeof(CalendarScratch) == 17 * sizeof(std::int32_t));

inline constexpr std::int32_t default_year_cutoff = 1950;

/// The image that every service copies before use.
inline constexpr CalendarScratch initial_scratch = {
    0, 0, 0, 0, {31, 0, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}, default_year_cutoff};

/// Places a two-digit year (0 to 99) in the 100 years that begin at `cutoff`.
constexpr std::int64_t widen_year(std::int64_t year, std::int64_t cutoff) noexcept {
  return year + (cutoff - cutoff % 100) + (year < cutoff % 100 ? 100 : 0);
}

/// The Julian value of a date. The day may have a fraction as long as it does not exceed the month;
/// years 0 to 99 are widened by the scratch's cutoff.
double date_parts_to_julian(double month, double day, double year, CalendarScratch&) noexcept;

/// The date value of a date, by way of its Julian value.
double date_parts_to_date_value(double month, double day, double year, CalendarScratch&) noexcept;

/// The date value of a Julian value.
double julian_to_date_value(double julian, CalendarScratch&) noexcept;

/// The parts of a Julian value; all three missing on invalid input. Returns 0 always.
int julian_to_date_parts(double julian, CalendarScratch&, double& year, double& month,
                         double& day) noexcept;

/// The Julian value of a date value, with its year apart. A special missing value is returned as it
/// is; `year` is written on success only.
double date_value_to_julian(double date, std::int32_t& year) noexcept;

/// 1 (Sunday) to 7 (Saturday); from 1 to 9 January 1582 up to seven less, which is kept as it is.
double date_value_to_weekday(double date) noexcept;

double datetime_to_date_value(double datetime) noexcept;
double datetime_to_time_of_day(double datetime) noexcept;  // seconds since midnight
double datetime_to_hour(double datetime) noexcept;         // 0 to 23
double datetime_to_minute(double datetime) noexcept;       // 0 to 59
double datetime_to_second(double datetime) noexcept;       // within the minute, with its fraction

/// True for a datetime value inside the calendar; false for every NaN.
constexpr bool datetime_in_range(double datetime) noexcept {
  return datetime >= first_second && datetime < end_second;
}

/// The day of a datetime value in range. The double quotient rounds up to the next day a hair below
/// some midnights; that is kept.
inline std::int32_t day_of_datetime(double datetime) noexcept {
  return static_cast<std::int32_t>((datetime - first_second) / seconds_per_day) + first_day;
}

/// The seconds into the day of a datetime value in range, as hour, minute and second share them:
/// 0 to 86,400, where 86,400 (a hair below midnight before day 0) stands for 0.
inline double clock_seconds(double datetime) noexcept {
  // Equal to fmod(datetime, 86400): the whole seconds are reduced exactly as integers, and adding
  // the fraction back is exact because the result is a double.
  const auto whole = static_cast<std::int64_t>(datetime);
  const double seconds =
      static_cast<double>(whole % seconds_per_day) + (datetime - static_cast<double>(whole));
  return seconds < 0 ? seconds_per_day + seconds : seconds;
}

struct DayAndSecond {
  std::int32_t day;
  std::uint32_t second;  // whole seconds since midnight, below 86,400
};

/// Both of a datetime value in range. Whole seconds, nearly all values, need one integer division;
/// with a fraction both follow the double steps above.
inline DayAndSecond split_datetime(double datetime) noexcept {
  const auto whole = static_cast<std::int64_t>(datetime);
  if (static_cast<double>(whole) == datetime) [[likely]] {
    const auto elapsed =
        static_cast<std::uint64_t>(whole - static_cast<std::int64_t>(first_second));
    const std::uint64_t days = elapsed / seconds_per_day;
    return {static_cast<std::int32_t>(days) + first_day,
            static_cast<std::uint32_t>(elapsed - days * seconds_per_day)};
  }
  return {day_of_datetime(datetime),
          static_cast<std::uint32_t>(clock_seconds(datetime)) % seconds_per_day};
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_CALENDAR_CALENDAR_H_
