// The calendar's integer core: parts to civil dates, civil dates to day numbers and back.
//
// Day 0 is 1 January 1960. The rule is the Gregorian one with one exception, deliberately kept:
// a year divisible by 4000 is a common year, because every stored date value counts its days this
// way.

#ifndef JWNLS_MODULE_CALENDAR_CIVIL_H_
#define JWNLS_MODULE_CALENDAR_CIVIL_H_

#include <cstdint>

namespace jwnls {

inline constexpr std::int32_t first_year = 1582;
inline constexpr std::int32_t last_year = 20000;
inline constexpr std::int32_t first_day = -138061;  // 1 January 1582
inline constexpr std::int32_t end_day = 6589336;    // 1 January 20001, the first day past the range

struct CivilDate {
  std::int32_t year;
  std::int32_t month;  // 1 to 12
  std::int32_t day;    // 1 to 31
};

constexpr bool is_leap_year(std::int32_t year) noexcept {
  if (year % 4 != 0) return false;
  return year % 100 != 0 || (year % 400 == 0 && year % 4000 != 0);
}

constexpr std::int32_t days_in_month(std::int32_t year, std::int32_t month) noexcept {
  if (month == 2) return is_leap_year(year) ? 29 : 28;
  return 30 + ((month ^ month >> 3) & 1);
}

/// The number of the day before 1 January of `year`, so that adding a day of year gives its day.
constexpr std::int32_t day_before_year(std::int32_t year) noexcept {
  const std::int32_t p = year - 1;
  // 715,875 is 715,510 (the days from the day before 1 January of year 1 to 1 January 1960) and one
  // year more, because 365 is multiplied by the year itself.
  return p / 4 - p / 4000 - p / 100 + p / 100 / 4 + 365 * year - 715875;
}

/// The days of `year` before the first of `month`.
constexpr std::int32_t days_before_month(std::int32_t year, std::int32_t month) noexcept {
  constexpr std::int16_t common[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  return common[month - 1] + (month > 2 && is_leap_year(year) ? 1 : 0);
}

inline constexpr std::int32_t default_year_cutoff = 1950;

/// Places a two-digit year (0 to 99) in the 100 years that begin at `cutoff`.
constexpr std::int64_t widen_year(std::int64_t year, std::int64_t cutoff) noexcept {
  return year + (cutoff - cutoff % 100) + (year < cutoff % 100 ? 100 : 0);
}

inline constexpr std::uint8_t common_month_lengths[12] = {31, 28, 31, 30, 31, 30,
                                                          31, 31, 30, 31, 30, 31};

/// The civil date of parts of any size, a two-digit year among them. False when they form no date,
/// as when an odd cutoff places the year outside the calendar; `date` is then unspecified.
constexpr bool make_date(std::int32_t month, std::int32_t day, std::int32_t year,
                         std::int32_t cutoff, CivilDate& date) noexcept {
  const std::int64_t full_year = year >= 0 && year <= 99 ? widen_year(year, cutoff) : year;
  if (full_year < first_year || full_year > last_year) return false;
  if (month < 1 || month > 12 || day < 1) return false;
  date = {static_cast<std::int32_t>(full_year), month, day};
  // Only 29 February asks for the year: branches on the month, or on days above 28, are a gamble.
  return day <= common_month_lengths[month - 1] ||
         (month == 2 && day == 29 && is_leap_year(date.year));
}

// Both directions count days from 1 March of year 0, so that a leap day ends its year.
inline constexpr std::int32_t march_day_zero = -715815;

/// Days from 1 March of year 0 to a civil date that is in range.
constexpr std::uint32_t days_since_march(CivilDate date) noexcept {
  // January and February are the months 13 and 14 of the year before.
  const std::uint32_t of_year_before = date.month <= 2 ? 1 : 0;
  const std::uint32_t year = static_cast<std::uint32_t>(date.year) - of_year_before;
  const std::uint32_t month = static_cast<std::uint32_t>(date.month) + 12 * of_year_before;
  const std::uint32_t century = year / 100;
  const std::uint32_t before_year = 1461 * year / 4 - century + century / 4 - century / 40;
  const std::uint32_t before_month = (979 * month - 2919) / 32;
  return before_year + before_month + static_cast<std::uint32_t>(date.day - 1);
}

/// The day of a civil date that is in range.
constexpr std::int32_t day_from_civil(CivilDate date) noexcept {
  return static_cast<std::int32_t>(days_since_march(date)) + march_day_zero;
}

/// The civil date of a day from first_day to below end_day.
constexpr CivilDate civil_from_day(std::int32_t day) noexcept {
  // Days are counted from 1 March of year 0, so that a leap day ends its year. Each run of 4000
  // years from there lacks the 29 February at its very end; adding one day for every run that is
  // over gives the count of the plain Gregorian calendar, which the multiplications below divide
  // exactly (Neri and Schneider, "Euclidean affine functions and their application to calendar
  // algorithms").
  constexpr std::uint32_t days_in_4000_years = 1460969;  // under the rule above
  const auto since_march = static_cast<std::uint32_t>(day - march_day_zero);
  // In 64 bits the quotient is one multiplication, in 32 it would be six instructions more.
  const auto runs_over =
      static_cast<std::uint32_t>(std::uint64_t{since_march} / days_in_4000_years);
  const std::uint32_t gregorian = since_march + runs_over;

  const std::uint32_t quarter_days = 4 * gregorian + 3;
  const std::uint32_t century = quarter_days / 146097;
  const std::uint32_t century_quarters = quarter_days % 146097 | 3;
  const std::uint64_t years_product = std::uint64_t{2939745} * century_quarters;
  const auto year_of_century = static_cast<std::uint32_t>(years_product >> 32);
  const std::uint32_t day_of_year = static_cast<std::uint32_t>(years_product) / 2939745 / 4;
  const std::uint32_t month_product = 2141 * day_of_year + 197913;
  const bool next_year = day_of_year >= 306;  // January and February belong to the next year
  return {static_cast<std::int32_t>(100 * century + year_of_century + (next_year ? 1 : 0)),
          static_cast<std::int32_t>((month_product >> 16) - (next_year ? 12 : 0)),
          static_cast<std::int32_t>((month_product & 0xFFFF) / 2141 + 1)};
}

/// 0 (Sunday) to 6 (Saturday), by the days since 1 March of year 0.
constexpr std::uint32_t weekday_index(std::uint32_t since_march) noexcept {
  // The remainder by 7 as the fraction of a product (exact for far more days than there are); that
  // 1 March is a Wednesday.
  constexpr std::uint32_t reciprocal = 613566757;  // 2^32 / 7, rounded up
  const std::uint32_t fraction = (since_march + 3) * reciprocal;
  return static_cast<std::uint32_t>(std::uint64_t{fraction} * 7 >> 32);
}

/// 1 (Sunday) to 7 (Saturday), for every day in range.
constexpr std::int32_t weekday_from_day(std::int32_t day) noexcept {
  return static_cast<std::int32_t>(
             weekday_index(static_cast<std::uint32_t>(day - march_day_zero))) +
         1;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_CALENDAR_CIVIL_H_
