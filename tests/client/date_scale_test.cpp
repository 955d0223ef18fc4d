#include "client/date_scale.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>

#include "abi/missing_value.h"
#include "module/calendar/civil.h"
#include "module/calendar/value_conversions.h"

namespace jwnls::client {
namespace {

using namespace std::chrono_literals;
using std::chrono::days;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
const double missing = std::bit_cast<double>(0xFFFFD10000000000U);

double module_value(year_month_day date) {
  return date_parts_to_date_value(unsigned{date.month()}, unsigned{date.day()},
                                  static_cast<int>(date.year()), default_year_cutoff);
}

// The module counts the same days: every date that std::chrono has in 1582 to 20000.
TEST(DateScale, AgreesWithTheModulesCalendarOnEveryDay) {
  std::int64_t dates = 0;
  for (auto day = local_days{year{1582} / 1 / 1}; day <= local_days{year{20000} / 12 / 31};
       day += days{1}) {
    const year_month_day date{day};
    const auto value = date_value(date);
    const double expected = module_value(date);
    if (!value) {
      ASSERT_TRUE(is_missing(expected)) << day.time_since_epoch().count();
      continue;
    }
    ASSERT_EQ(value->days, expected) << day.time_since_epoch().count();
    ASSERT_EQ(civil_date(*value), date) << value->days;
    ++dates;
  }
  EXPECT_EQ(dates, 6'727'397);
}

TEST(DateScale, HasNoValueForOtherDates) {
  const year_month_day cases[] = {year{1581} / 12 / 31, year{20001} / 1 / 1,  year{2023} / 2 / 29,
                                  year{4000} / 2 / 29,  year{20000} / 2 / 29, year{2024} / 13 / 1,
                                  year{2024} / 0 / 1,   year{99} / 1 / 1,     year{-5} / 1 / 1};
  for (const auto date : cases) EXPECT_FALSE(date_value(date)) << static_cast<int>(date.year());
}

TEST(DateScale, HasNoDateForOtherValues) {
  for (const double value : {-138'061.5, 6'589'336.0, infinity, -infinity, nan_value, missing}) {
    EXPECT_FALSE(civil_date(DateValue{value})) << value;
    EXPECT_FALSE(civil_time(DatetimeValue{value * 86'400})) << value;
  }
}

TEST(DateScale, CountsSecondsOnTheSameDays) {
  const auto check = [&](local_seconds time, double value) {
    EXPECT_EQ(datetime_value(time), DatetimeValue{value});
    EXPECT_EQ(civil_time(DatetimeValue{value}), time) << value;
  };
  check(local_days{year{1960} / 1 / 1} + 0s, 0);
  check(local_days{year{1959} / 12 / 31} + 23h + 59min + 59s, -1);
  check(local_days{year{1582} / 1 / 1} + 0s, -11'928'470'400);
  check(local_days{year{4000} / 2 / 28} + 23h, module_value(year{4000} / 2 / 28) * 86'400 + 82'800);
  check(local_days{year{4000} / 3 / 1} + 1s, module_value(year{4000} / 3 / 1) * 86'400 + 1);
  check(local_days{year{20000} / 12 / 31} + 86'399s, 569'318'630'399);
  EXPECT_EQ(civil_time(DatetimeValue{-0.25}), local_days{year{1959} / 12 / 31} + 86'399s);
  EXPECT_FALSE(datetime_value(local_days{year{8000} / 2 / 29} + 12h));
  EXPECT_FALSE(datetime_value(local_seconds::min()));
  EXPECT_FALSE(datetime_value(local_seconds::max()));
}

}  // namespace
}  // namespace jwnls::client
