// The calendar's conversions with two-digit years placed by the host option JW_NAME_YEARCUTOFF.
//
// Period input converts with these; everything that formats, and date and datetime input, keep the
// fixed cutoff of calendar.h. The rules and limits are the same, invalid input yields the standard
// missing value, and so does a year that an odd cutoff places outside 1582 to 20000. A date value
// has no two-digit year: from date values, use date_value_to_julian and date_value_to_weekday.
//
// The option is read from the kernel again for each two-digit year, and for no other year. Any
// thread may call these when the kernel's option reading may be called by any thread.

#ifndef JWNLS_MODULE_HOST_CALLS_YEAR_CUTOFF_H_
#define JWNLS_MODULE_HOST_CALLS_YEAR_CUTOFF_H_

#include <cstdint>

#include "module/calendar/calendar.h"

namespace jwnls {

/// The first year of the window of two-digit years: the option's value, 1950 when the kernel gives
/// none. A value outside the range of the result, which no window can use, is the nearer bound.
std::int32_t year_cutoff_option() noexcept;

/// The date value of a date. Parts are taken and truncated as by date_parts_to_date_value; note the
/// other order.
double parts_to_date_value(double year, double month, double day) noexcept;

/// The Julian value of a date, likewise.
double parts_to_julian(double year, double month, double day) noexcept;

/// The date value of a Julian value.
double julian_to_date_value(double julian) noexcept;

/// The parts of a Julian value; all three missing on invalid input. Returns 0 always.
int julian_to_date_parts(double julian, double& year, double& month, double& day) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_YEAR_CUTOFF_H_
