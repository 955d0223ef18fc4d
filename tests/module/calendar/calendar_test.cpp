// The calendar: every day against a day-by-day walk, values against the literal double formulas.

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "abi/missing_value.h"
#include "module/calendar/civil.h"
#include "module/calendar/datetime_value.h"
#include "module/calendar/value_conversions.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
const double missing = missing_value();
const double other_missing = std::bit_cast<double>(0xFFFF00000000002A);

bool is_standard_missing(double value) {
  return std::bit_cast<std::uint64_t>(value) == 0xFFFFD10000000000;
}

// Equal as the calendar means it: the same number, or the standard missing value both.
bool same(double a, double b) {
  return a == b || (is_standard_missing(a) && is_standard_missing(b));
}
#define EXPECT_SAME(a, b) EXPECT_PRED2(same, a, b)

unsigned length_of_month(int year, unsigned month) {
  using namespace std::chrono;
  if (year % 4000 == 0 && month == 2) return 28;
  return unsigned{(std::chrono::year(year) / std::chrono::month(month) / last).day()};
}

TEST(Calendar, AgreesWithAWalkOverEveryDay) {
  int year = 1582;
  unsigned month = 1, day = 1, day_of_year = 1;
  int weekday = 6;  // a Friday
  // The truncated division leaves the first nine weekdays as they are here.
  constexpr int first_weekdays[] = {-1, 0, 1, -5, -4, -3, -2, -1, 0};
  long faults = 0;
  for (int date = -138061; date < 6589336 && faults < 10; ++date) {
    const double julian = year * 1000.0 + day_of_year;
    const int nth = date + 138061;
    std::int32_t julian_year = 0;
    double y = 0, m = 0, d = 0;
    const CivilDate civil = civil_from_day(date);
    julian_to_date_parts(julian, default_year_cutoff, y, m, d);
    CivilDate made = {};
    const bool right =
        date_value_to_julian(date, julian_year) == julian && julian_year == year &&
        date_value_to_julian(date + 0.75, julian_year) == julian &&
        julian_to_date_value(julian, default_year_cutoff) == date && y == year && m == month &&
        d == day && date_parts_to_julian(m, d, y, default_year_cutoff) == julian &&
        date_parts_to_date_value(m, d, y, default_year_cutoff) == date &&
        date_value_to_weekday(date) == (nth < 9 ? first_weekdays[nth] : weekday) &&
        datetime_to_date_value(date * 86400.0) == date &&
        datetime_to_date_value(date * 86400.0 + 86399) == date && civil.year == year &&
        civil.month == static_cast<int>(month) && civil.day == static_cast<int>(day) &&
        day_from_civil(civil) == date && make_date(civil.month, civil.day, civil.year, 0, made) &&
        day_from_civil(made) == date && weekday_from_day(date) == weekday;
    if (!right) {
      ++faults;
      ADD_FAILURE() << date << ' ' << year << '-' << month << '-' << day;
    }
    weekday = weekday % 7 + 1;
    ++day_of_year;
    if (++day > length_of_month(year, month)) {
      day = 1;
      if (++month > 12) {
        month = 1;
        day_of_year = 1;
        ++year;
      }
    }
  }
  EXPECT_EQ(year, 20001);
}

// Days of four-digit years are those of the walk.
TEST(Calendar, TakesAndRefusesDateParts) {
  const auto check = [&](double month, double day, double year, double julian, double date,
                         int cutoff = default_year_cutoff) {
    SCOPED_TRACE(testing::Message() << month << '/' << day << '/' << year);
    EXPECT_SAME(date_parts_to_julian(month, day, year, cutoff), julian);
    EXPECT_SAME(date_parts_to_date_value(month, day, year, cutoff), date);
  };
  // Two-digit years, and cutoffs other than the usual one.
  check(1, 1, 0, 2000001, 14610);
  check(1, 1, 49, 1949001, -4017, 1900);
  check(1, 1, 99, 1999001, 14245, 1999);
  check(1, 1, 98, 2098001, 50405, 1999);
  // Fractions are cut, once the double has passed the bounds.
  check(1, 1, 0.5, 2000001, 14610);
  check(12, 31.5, 2000, missing, missing);
  check(12.5, 1, 2000, missing, missing);
  check(0.999, 1, 2000, missing, missing);
  check(1, 0.999, 2000, missing, missing);
  check(1, 1, 20000.5, missing, missing);
  check(1, 1, 99.5, missing, missing);
  check(1, 1, 1581.999, missing, missing);
  check(1, 1, -0.5, missing, missing);
  check(2, 29, 1900, missing, missing);
  check(2, 29, 4000, missing, missing);
  check(4, 31, 2000, missing, missing);
  check(1, 1, 100, missing, missing);
  // A window that reaches past the calendar.
  check(1, 1, 5, missing, missing, 20000);
  check(1, 1, 5, missing, missing, 1500);
  for (const double bad : {nan, -nan, infinity, -infinity, missing, other_missing, 1e300, -1e300}) {
    EXPECT_TRUE(is_standard_missing(date_parts_to_julian(bad, 1, 2000, default_year_cutoff)));
    EXPECT_TRUE(is_standard_missing(date_parts_to_julian(1, bad, 2000, default_year_cutoff)));
    EXPECT_TRUE(is_standard_missing(date_parts_to_date_value(1, 1, bad, default_year_cutoff)));
  }
}

TEST(Calendar, RefusesJulianAndDateValuesOutsideIt) {
  for (const double julian :
       {0.0, 0.999, -1.0, 1000.0, 1961366.0, 1960367.0, 1960000.0, 1581365.0, 100001.0, 20001001.0,
        20000366.0, 1960999.0, 3e9, -3e9, nan, infinity, -infinity, missing, other_missing}) {
    double year = 0, month = 0, day = 0;
    EXPECT_TRUE(is_standard_missing(julian_to_date_value(julian, default_year_cutoff))) << julian;
    julian_to_date_parts(julian, default_year_cutoff, year, month, day);
    EXPECT_TRUE(is_standard_missing(year) && is_standard_missing(month) && is_standard_missing(day))
        << julian;
  }
  EXPECT_EQ(julian_to_date_value(1, default_year_cutoff), 14610)
      << "day 1 of the year 0, which is 2000";
  EXPECT_EQ(julian_to_date_value(49366 - 1000, default_year_cutoff), 32507)
      << "the year 48 is a leap year";
  EXPECT_EQ(julian_to_date_value(1960366.9, default_year_cutoff), 365);

  std::int32_t year = 7;
  for (const double date : {std::nextafter(-138061.0, -infinity), 6589336.0, 1e300, -1e300, nan,
                            infinity, -infinity, missing}) {
    EXPECT_TRUE(is_standard_missing(date_value_to_julian(date, year))) << date;
    EXPECT_TRUE(is_standard_missing(date_value_to_weekday(date))) << date;
  }
  EXPECT_TRUE(is_standard_missing(date_value_to_weekday(other_missing)));
  EXPECT_EQ(std::bit_cast<std::uint64_t>(date_value_to_julian(other_missing, year)),
            std::bit_cast<std::uint64_t>(other_missing))
      << "passed through unchanged, by this conversion alone";
  EXPECT_EQ(date_value_to_julian(std::nextafter(6589336.0, 0), year), 20000365);
  EXPECT_EQ(date_value_to_julian(-0.001, year), 1959365);
  EXPECT_EQ(date_value_to_weekday(0), 6);
  EXPECT_EQ(date_value_to_weekday(-138052.5), 1) << "truncated towards zero";
}

// ---- Datetimes, against the formulas as they are written down.

bool in_range(double s) { return s >= -11928470400.0 && s < 569318630400.0; }
double date_of(double s) { return std::trunc((11928470400.0 + s) / 86400) - 138061; }
double time_of_day_of(double s) { return std::fmod(s <= 0 ? s + 11928470400.0 : s, 86400); }
double hour_of(double s) {
  double r = std::fmod(s, 86400);
  if (r < 0) r += 86400;
  const double hour = std::floor(std::fabs(r / 3600));
  return hour == 24 ? 0 : hour;  // a hair below midnight
}
double clock_of(double s) {
  const double r = std::fmod(s, 86400);
  return s < 0 ? 86400 - std::fabs(r) : r;
}
double minute_of(double s) { return std::floor(std::floor(std::fmod(clock_of(s), 3600)) / 60); }
double second_of(double s) { return std::fmod(clock_of(s), 60); }

TEST(Calendar, SplitsDatetimesByTheFormulas) {
  std::vector<double> values;
  const auto add_with_neighbours = [&](double value) {
    double below = value, above = value;
    for (int i = 0; i < 4; ++i) {
      values.insert(values.end(), {below, above});
      below = std::nextafter(below, -infinity);
      above = std::nextafter(above, infinity);
    }
  };
  std::mt19937_64 random(test_seed(20000));
  std::uniform_real_distribution<double> any(-11928470400.0, 569318630400.0);
  std::uniform_real_distribution<double> near_zero(-200000, 200000);
  for (int i = 0; i < 100'000; ++i) {
    const double value = i % 2 == 0 ? any(random) : near_zero(random);
    values.push_back(value);
    for (const double unit : {86400.0, 3600.0, 60.0, 1.0, 1 / 1024.0}) {
      add_with_neighbours(std::floor(value / unit) * unit);
    }
  }
  for (int exponent = -1074; exponent < 40; ++exponent) {
    for (const double day : {0.0, -86400.0, 86400.0, -3600.0, -11928470400.0 + 86400}) {
      add_with_neighbours(day - std::ldexp(1, exponent));
      add_with_neighbours(day + std::ldexp(1, exponent));
    }
  }
  add_with_neighbours(-0.0);
  add_with_neighbours(-11928470400.0);
  add_with_neighbours(569318630400.0);
  values.insert(values.end(), {nan, -nan, infinity, -infinity, 1e300, -1e300, missing});
  values.push_back(other_missing);

  int faults = 0;
  for (const double value : values) {
    const auto check = [&](const char* name, double result, double (*formula)(double)) {
      const double expected = in_range(value) ? formula(value) : missing;
      if (same(result, expected) || ++faults >= 10) return;
      ADD_FAILURE() << name << " of " << std::hexfloat << value << ": " << result
                    << ", the formula gives " << expected;
    };
    check("date", datetime_to_date_value(value), date_of);
    check("time of day", datetime_to_time_of_day(value), time_of_day_of);
    check("hour", datetime_to_hour(value), hour_of);
    check("minute", datetime_to_minute(value), minute_of);
    check("second", datetime_to_second(value), second_of);
  }
}

}  // namespace
}  // namespace jwnls::test
