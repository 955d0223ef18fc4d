// The calendar's conversions on doubles, for callers who hold their values so.
//
// The services do not call these: they work on civil.h and datetime_value.h, and these are the
// reference that the tests prove them against. They are a library of their own,
// jwnls_value_conversions, and no part of the shared object.
//
// Three scales: a date value counts days from 1 January 1960, a datetime value counts seconds from
// that midnight, a Julian value is year * 1000 + day of year. Valid are 1 January 1582 to 31
// December 20000. Invalid input of any kind (NaNs and infinities included) yields the standard
// missing value. Parts are truncated once they have passed their bounds as doubles: 30.5 is a day
// of a month of 31 days, 31.5 is none.
//
// Where a year can have two digits (0 to 99), `cutoff` is the first year of the window of 100 years
// that it is placed in: default_year_cutoff for what the formatting services and date input do, the
// host's option for period input.
//
// Pure functions; any thread may call them.

#ifndef JWNLS_MODULE_CALENDAR_VALUE_CONVERSIONS_H_
#define JWNLS_MODULE_CALENDAR_VALUE_CONVERSIONS_H_

#include <cstdint>

namespace jwnls {

/// The Julian value of a date.
double date_parts_to_julian(double month, double day, double year, std::int32_t cutoff) noexcept;

/// The date value of a date.
double date_parts_to_date_value(double month, double day, double year,
                                std::int32_t cutoff) noexcept;

/// The date value of a Julian value, whose fraction is cut.
double julian_to_date_value(double julian, std::int32_t cutoff) noexcept;

/// The parts of a Julian value; all three missing on invalid input.
void julian_to_date_parts(double julian, std::int32_t cutoff, double& year, double& month,
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

}  // namespace jwnls

#endif  // JWNLS_MODULE_CALENDAR_VALUE_CONVERSIONS_H_
