// Days since 1970, as everybody counts them, and the calendar's days since 1960, which lack the
// 29 February of the years divisible by 4000.

#ifndef JWNLS_LIBRARY_DATES_DAY_SCALE_H_
#define JWNLS_LIBRARY_DATES_DAY_SCALE_H_

#include <cstdint>
#include <optional>

#include "module/calendar/civil.h"
#include "module/calendar/datetime_value.h"

namespace jwnls::library {

inline constexpr std::int32_t days_1960_to_1970 = 3653;
inline constexpr std::int64_t microseconds_per_second = 1'000'000;

/// Layouts read and write years of four digits.
inline constexpr std::int32_t last_written_year = 9999;
inline constexpr std::int32_t end_of_written_days = day_from_civil({last_written_year + 1, 1, 1});

// In 1960's count: the first days behind those that are absent.
inline constexpr std::int32_t behind_absent_day[] = {day_from_civil({4000, 3, 1}),
                                                     day_from_civil({8000, 3, 1})};

/// Of a day in range.
constexpr std::int32_t since_1970(std::int32_t day) noexcept {
  return day - days_1960_to_1970 + (day >= behind_absent_day[0] ? 1 : 0) +
         (day >= behind_absent_day[1] ? 1 : 0);
}

/// The calendar's day; nothing for days that it does not have, or years of five digits.
constexpr std::optional<std::int32_t> calendar_day(std::int64_t days_since_1970) noexcept {
  constexpr std::int64_t least = first_day - days_1960_to_1970;
  constexpr std::uint64_t plain = behind_absent_day[0] - first_day;
  // Nearly every day is before the first absent one.
  if (static_cast<std::uint64_t>(days_since_1970) - static_cast<std::uint64_t>(least) < plain) {
    return static_cast<std::int32_t>(days_since_1970 + days_1960_to_1970);
  }
  if (days_since_1970 < least || days_since_1970 > end_of_written_days) return std::nullopt;
  std::int64_t day = days_since_1970 + days_1960_to_1970;
  for (const std::int32_t behind : behind_absent_day) {
    if (day < behind) break;
    if (day == behind) return std::nullopt;
    --day;
  }
  if (day >= end_of_written_days) return std::nullopt;
  return static_cast<std::int32_t>(day);
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DAY_SCALE_H_
