// Datetime values: seconds from the midnight that begins 1 January 1960, as doubles.

#ifndef JWNLS_MODULE_CALENDAR_DATETIME_VALUE_H_
#define JWNLS_MODULE_CALENDAR_DATETIME_VALUE_H_

#include <cstdint>

#include "module/calendar/civil.h"

namespace jwnls {

inline constexpr std::int32_t seconds_per_day = 86400;
inline constexpr double first_second = -11928470400.0;  // first_day * seconds_per_day
inline constexpr double end_second = 569318630400.0;    // end_day * seconds_per_day

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

#endif  // JWNLS_MODULE_CALENDAR_DATETIME_VALUE_H_
