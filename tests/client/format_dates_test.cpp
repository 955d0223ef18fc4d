#include <gtest/gtest.h>

#include "real_host.h"

namespace jwnls::client {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

const year_month_day ides = year{2024} / 3 / 15;

TEST(FormatDate, WritesEachStyleAsTheLocaleDoes) {
  const auto check = [&](const char* name, DateStyle style, const char* text) {
    EXPECT_EQ(text_or_error(locale(name).format_date(ides, style)), text) << name;
    EXPECT_EQ(to_utf8(locale(name).format_date<std::u16string>(ides, style).value()), text) << name;
  };
  check("de_DE", DateStyle::short_numeric, "15.03.2024");
  check("en_US", DateStyle::medium, "Mar 15, 2024");
  check("en_US", DateStyle::long_form, "March 15, 2024");
  check("ff_Adlm", DateStyle::long_form,
        "15 𞤐𞤦𞤮𞥅𞤴𞤮⹁ 2024");  // names beyond U+FFFF
}

TEST(FormatDate, TakesDatesAndValues) {
  const Locale german = locale("de_DE");
  EXPECT_EQ(german.format_date(sys_days{ides}, DateStyle::short_numeric), "15.03.2024");
  EXPECT_EQ(german.format_date(DateValue{0}, DateStyle::short_numeric), "01.01.1960");
  EXPECT_EQ(german.format_date(DateValue{-0.5}, DateStyle::short_numeric), "31.12.1959");
  EXPECT_EQ(german.format_date(first_date_value, DateStyle::short_numeric), "01.01.1582");
  // From here on std::chrono counts a day more than the calendar of the values.
  EXPECT_EQ(german.format_date(*date_value(year{4000} / 3 / 1), DateStyle::short_numeric),
            "01.03.4000");
}

TEST(FormatDate, SaysWhatIsWrong) {
  const Locale english = locale("en_US");
  const auto refuses = [](const Result<std::string>& result, const char* message,
                          Status status = Status::out_of_range) {
    ASSERT_FALSE(result) << *result;
    EXPECT_EQ(result.error().message, message);
    EXPECT_EQ(result.error().status, status) << message;
  };
  refuses(english.format_date(year{2023} / 2 / 30),
          "date 2023-02-30: no such date in the calendar");
  refuses(english.format_date(year{4000} / 2 / 29),
          "date 4000-02-29: no such date in the calendar");
  refuses(english.format_date(year{49} / 1 / 1),
          "date 0049-01-01: outside 1582-01-01 to 20000-12-31");
  refuses(english.format_date(end_date_value),
          "date 6589336 days: outside 1582-01-01 to 20000-12-31");
  refuses(english.format_date(DateValue{MissingValue().value()}), "date value: missing",
          Status::missing_value);
  refuses(english.format_time(24h),
          "time 86400 seconds: outside 0 to 86399 seconds since midnight");
  refuses(english.format_time(-1s), "time -1 seconds: outside 0 to 86399 seconds since midnight");
  refuses(english.format_datetime(local_days{year{8000} / 2 / 29} + 1s),
          "datetime 8000-02-29: no such date in the calendar");
  refuses(english.format_datetime(DatetimeValue{1e300}),
          "datetime 1e+300 seconds: outside 1582-01-01 to 20000-12-31");
  refuses(english.format_datetime(std::chrono::sys_seconds::max()),
          "instant 9223372036854775807 seconds from 1970: outside 1582 to 20000");
}

TEST(FormatTime, WritesTheLocalesClock) {
  const auto check = [&](const char* name, std::chrono::seconds time, const char* text) {
    EXPECT_EQ(text_or_error(locale(name).format_time(time)), text) << name;
    EXPECT_EQ(text_or_error(locale(name).format_time(std::chrono::hh_mm_ss{time + 999ms})), text);
  };
  check("en_US", 0s, "12:00:00 AM");
  check("de_DE", 24h - 1s, "23:59:59");
  check("ko_KR", 14h + 7min + 9s, "오후 2:07:09");
  EXPECT_EQ(locale("de_DE").format_time(DatetimeValue{-1}), "23:59:59");
}

TEST(FormatDatetime, WritesWallClockTimesAsTheyStand) {
  const auto time = local_days{ides} + 14h + 7min + 9s;
  EXPECT_EQ(locale("de_DE").format_datetime(time), "15.03.2024, 14:07:09");
  EXPECT_EQ(locale("en_US").format_datetime(time), "Mar 15, 2024, 2:07:09 PM");
  EXPECT_EQ(locale("en_US").format_datetime(time + 999ms), "Mar 15, 2024, 2:07:09 PM");
  EXPECT_EQ(locale("en_US").format_datetime(time, DatetimeStyle::time_only), "2:07:09 PM");
  EXPECT_EQ(locale("de_DE").format_datetime(DatetimeValue{-0.25}), "31.12.1959, 23:59:59");
}

TEST(FormatDatetime, ShowsInstantsOnTheZonesClock) {
  const auto check = [&](const char* zone, std::chrono::sys_seconds instant, const char* text) {
    EXPECT_EQ(text_or_error(locale("de_DE", zone).format_datetime(instant)), text) << zone;
    EXPECT_EQ(text_or_error(locale("de_DE", zone).format_datetime(instant + 1ms)), text) << zone;
  };
  check("Europe/Berlin", sys_days{ides} + 12h, "15.03.2024, 13:00:00");
  check("Europe/Berlin", sys_days{year{2024} / 7 / 1} + 12h, "01.07.2024, 14:00:00");  // summer
  check("America/New_York", sys_days{year{2050} / 7 / 1} + 3h, "30.06.2050, 23:00:00");
  check("Asia/Kathmandu", sys_days{ides} + 12h, "15.03.2024, 17:45:00");
  check("UTC+05:30", sys_days{ides} + 12h, "15.03.2024, 17:30:00");
}

}  // namespace
}  // namespace jwnls::client
