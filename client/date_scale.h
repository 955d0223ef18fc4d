// Between std::chrono and the values that the services count in.
//
// A date value counts days from 1 January 1960, a datetime value seconds from 1 January 1960
// 00:00:00 on the wall clock, both as doubles. They cover 1 January 1582 to 31 December 20000 of
// the Gregorian calendar with one exception, which every stored value counts by: 4000, 8000, 12000,
// 16000 and 20000 are common years. So 29 February of these years is no date here, and from 1 March
// 4000 on a value is not simply std::chrono's day number shifted.

#ifndef JWNLS_CLIENT_DATE_SCALE_H_
#define JWNLS_CLIENT_DATE_SCALE_H_

#include <chrono>
#include <optional>

namespace jwnls::client {

/// Days since 1 January 1960: -138,061 to below 6,589,336. A fraction is the time of day, dropped.
struct DateValue {
  double days = 0;
  bool operator==(const DateValue&) const = default;
};

/// Seconds since 1 January 1960 00:00:00: -11,928,470,400 to below 569,318,630,400.
struct DatetimeValue {
  double seconds = 0;
  bool operator==(const DatetimeValue&) const = default;
};

inline constexpr DateValue first_date_value = {-138'061};
inline constexpr DateValue end_date_value = {6'589'336};  // the first day that is not in the range
inline constexpr DatetimeValue first_datetime_value = {first_date_value.days * 86'400};
inline constexpr DatetimeValue end_datetime_value = {end_date_value.days * 86'400};

/// The value of a date; nothing when it is no date of this calendar (30 February, 29 February 4000,
/// a year outside 1582 to 20000).
[[nodiscard]] std::optional<DateValue> date_value(std::chrono::year_month_day date) noexcept;

/// The date that a value stands for; nothing when it is missing, NaN or out of range.
[[nodiscard]] std::optional<std::chrono::year_month_day> civil_date(DateValue value) noexcept;

/// The value of a wall-clock time; nothing when its date is none of this calendar.
[[nodiscard]] std::optional<DatetimeValue> datetime_value(std::chrono::local_seconds time) noexcept;

/// The wall-clock time that a value stands for, a fraction of a second dropped; nothing as above.
[[nodiscard]] std::optional<std::chrono::local_seconds> civil_time(DatetimeValue value) noexcept;

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_DATE_SCALE_H_
