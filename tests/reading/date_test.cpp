// Date and datetime input: single patterns, recognition, and what may stand behind a date.

#include <chrono>

#include "tests/reading/reading.h"

namespace jwnls::test {
namespace {

constexpr std::uint32_t strict = 0;
constexpr std::uint32_t lenient = 4;
constexpr std::uint32_t datetime = 0x200;
constexpr std::optional<double> fails;
constexpr const char16_t* none = u"!";

/// The date value of a date before 29 February 4000, where both calendars still agree.
constexpr double day(int year, unsigned month, unsigned of_month) {
  using namespace std::chrono;
  const sys_days date =
      std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(of_month);
  return static_cast<double>((date - sys_days(1960y / January / 1)).count());
}
constexpr double second(double date, int hour = 0, int minute = 0, double seconds = 0) {
  return date * 86400 + hour * 3600 + minute * 60 + seconds;
}

class DateTest : public ReadingTest {
 protected:
  void set_date_patterns(std::u16string_view first, std::u16string_view second = none,
                         std::u16string_view third = none) {
    set_text(handle->record->date_patterns[0], first);
    set_text(handle->record->date_patterns[1], second);
    set_text(handle->record->date_patterns[2], third);
  }
};

struct OrderRow {
  const char16_t* date_pattern_1;
  const char16_t* text;
  std::optional<double> strict_value;
  std::optional<double> lenient_value;
};

constexpr double april_3 = day(2024, 4, 3);
constexpr double march_4 = day(2024, 3, 4);

constexpr OrderRow orders[] = {
    {u"%d|%m|%Y", u"03/04/2024", april_3, april_3},
    {u"%d|%m|%Y", u"03-04-2024", april_3, april_3},
    {u"%d|%m|%Y", u"03.04.2024", april_3, april_3},
    {u"%d|%m|%Y", u"04/13/2024", day(2024, 4, 13), day(2024, 4, 13)},
    {u"%m|%d|%Y", u"03/04/2024", march_4, march_4},
    {u"%m|%d|%Y", u"03-04-2024", march_4, march_4},
    {u"%m|%d|%Y", u"03.04.2024", march_4, march_4},
    {u"%m|%d|%Y", u"13.04.2024", day(2024, 4, 13), day(2024, 4, 13)},
    {u"%o|%e|%y", u"03/04/2024", march_4, march_4},
    {u"%O|%E|%Y", u"03/04/2024", april_3, april_3},  // these letters do not tell the order
    {u"%d|%B|%Y", u"03/04/2024", march_4, march_4},  // a named month counts as first
    {u"%Y|%m|%d", u"03/04/2024", april_3, april_3},
    {u"%m|%d", u"03/04/2024", april_3, april_3},
    {none, u"2024/04/03", april_3, april_3},
    {none, u"2024-04-03", april_3, april_3},
    {none, u"2024.04.03", april_3, april_3},
    {none, u"2024/apr/03", april_3, april_3},
    {none, u"2024-APR-03", april_3, april_3},
    {none, u"2024.Apr.03", april_3, april_3},
    {none, u"2024-April-03", fails, april_3},
    {none, u"Apr/03/2024", april_3, april_3},
    {none, u"Apr.03.2024", april_3, april_3},
    {none, u"Apr-03-2024", april_3, april_3},
    {none, u"Apr 3 2024", fails, april_3},
    {none, u"Apr 03 2024", april_3, april_3},
    {none, u"Wednesday,Apr03,2024", april_3, april_3},
    {none, u"wed, apr 3, 2024", fails, april_3},
    {none, u"3/4/24", fails, april_3},
    {none, u"3/4/60", fails, day(1960, 4, 3)},
    {none, u"03-04-24", fails, april_3},
    {u"%Y|%m|%d", u"24.4.3", fails, day(2003, 4, 24)},  // the days come first there
    {none, u"31/04/2024", fails, fails},  // read whole, and no date: nothing else is tried
    {none, u"29.02.2023", fails, fails},
    {none, u"29.02.2024", day(2024, 2, 29), day(2024, 2, 29)},
    {none, u"29-02-4000", fails, fails},
    {none, u"01/01/1582", day(1582, 1, 1), day(1582, 1, 1)},
    {none, u"31/12/9999", day(9999, 12, 31) - 2, day(9999, 12, 31) - 2},
    {none, u"03/04/2024x", fails, fails},
    {none, u"03/04/2024 10:30", fails, fails},
    {none, u"03,04,2024", fails, fails},
    {none, u"", fails, fails},
    {u"", u"03/04/2024", april_3, april_3},  // an empty pattern reads only a part
    {u"%d/%m/%Y!", u"03/04/2024", april_3, april_3},
    {u"%Y-%d-%m", u"2024-03-04", april_3, april_3},  // the locale's own come first
    {u"%d %B %Y", u" 03 April 2024", april_3, april_3},
    {u"%d %m", u"03 04", day(2000, 4, 3), day(2000, 4, 3)},  // no year is the year 0
};

TEST_F(DateTest, RecognisesInTheOrderOfTheLocale) {
  for (const OrderRow& row : orders) {
    set_date_patterns(row.date_pattern_1);
    const std::u16string bare = row.text;
    const std::size_t whole = bare.size();
    for (const std::u16string& text : {bare, bare + u"  "}) {
      expect_read(Service::date, text, strict, row.strict_value, whole);
      expect_read(Service::date, text, lenient, row.lenient_value, whole);
      if (row.text == std::u16string_view(u"03/04/2024 10:30")) continue;
      const auto midnight = [](std::optional<double> date) {
        return date ? std::optional(second(*date)) : date;
      };
      expect_read(Service::date, text, strict | datetime, midnight(row.strict_value), whole);
      expect_read(Service::date, text, lenient | datetime, midnight(row.lenient_value), whole);
    }
  }
}

TEST_F(DateTest, MonthsMayBeNamedByNumbers) {
  set_date_patterns(none);
  LocaleRecord& record = *handle->record;
  for (int i = 0; i < 12; ++i) {
    const char16_t name[] = {static_cast<char16_t>(u'1' + i % 9), u'\0'};
    set_text(record.full_months[i], name);
    set_text(record.short_months[i], name);
  }
  expect_read(Service::date, u"3 04 2024", strict, march_4, 9);
  expect_read(Service::date, u"3 4 2024", lenient, march_4, 8);
  expect_read(Service::date, u" 3/4/2024", lenient, april_3, 9);
}

TEST_F(DateTest, ASinglePatternLeavesTheRestToTheCaller) {
  set_date_patterns(u"%d.%m.%Y", u"%E %b %Y", u"%A, %E %B %Y");
  expect_read(Service::date, u"03.04.2024 and more", 1, april_3, 10);
  expect_read(Service::date, u"3.4.24 and more", 1, fails, 0);
  expect_read(Service::date, u"3.4.24 and more  ", 1 | 8, april_3, 6);
  expect_read(Service::date, u" 3 Apr 2024  ", 2, april_3, 11);
  expect_read(Service::date, u"Wednesday, 3 April 2024", 3, april_3, 23);
  expect_read(Service::date, u"Sunday, 3 April 2024", 3, april_3,
              20);  // the weekday is not checked
  expect_read(Service::date, u"2024-04-03", 3, fails, 0);
  expect_read(Service::date, u"31.04.2024", 1, fails, 0);
}

struct DatetimeRow {
  const char16_t* text;
  std::optional<double> value;
};
constexpr DatetimeRow datetimes[] = {
    {u"3 Apr 2024, 10:30:15 PM", second(april_3, 22, 30, 15)},  // time pattern 1
    {u"3 Apr 2024, 13:30:15 PM", fails},
    {u"31 Apr 2024, 10:30:15 PM", fails},
    {u"2024-04-03T10:30:15", second(april_3, 10, 30, 15)},
    {u"2024-04-03t10:30:15Z", second(april_3, 10, 30, 15)},
    {u"2024-04-03 , 10:30:15", second(april_3, 10, 30, 15)},
    {u"2024-04-03:10:30:15", second(april_3, 10, 30, 15)},
    {u"2024-04-0310:30:15", fails},
    {u"Apr 3 2024 10:30 pm", second(april_3, 22, 30)},
    {u"4/3/24 10:30", second(april_3, 10, 30)},
    {u"4/3/2024   12:05 AM  ", second(april_3, 0, 5)},
    {u"4/3/2024 TT10:30", fails},
    {u"4/3/2024 T,10:30", fails},
    {u"4/3/2024 T", fails},
    {u"4/3/2024 13:30 PM", fails},
    {u"4/3/2024 3 Apr 2024, 10:30", fails},  // time pattern 1 is no time behind a date
    {u"4/31/2024 10:30", fails},
    {u"10:30", fails},
};

TEST_F(DateTest, DatetimesAreADateAndATime) {
  set_date_patterns(u"%m/%d/%Y", u"%b %E, %Y", u"%B %E, %Y");
  set_time_patterns(u"%E %b %Y, %I:%M:%S %p", u"%#I:%M:%S %p");
  for (const DatetimeRow& row : datetimes) {
    const std::u16string_view text = row.text;
    expect_read(Service::date, text, lenient | datetime, row.value,
                text.find_last_not_of(u' ') + 1);
  }
  // One date pattern; its time is recognised all the same.
  expect_read(Service::date, u"04/03/2024 9:05", 1 | datetime, second(april_3, 9, 5), 15);
  expect_read(Service::date, u"04/03/2024", 1 | datetime, second(april_3), 10);
  expect_read(Service::date, u"04/03/2024 more", 1 | datetime, fails, 0);
  expect_read(Service::date, u"2024-04-03 9:05", 1 | datetime, fails, 0);
  expect_read(Service::date, u"3 Apr 2024, 10:30:15 PM", 1 | datetime, second(april_3, 22, 30, 15),
              23);
}

TEST_F(DateTest, BadInputStaysInBounds) {
  set_date_patterns(u"%A, %E. %B %Y", u"%d %b %Y %z", u"%B %Z");
  set_time_patterns(u"%A %E. %B %Y %H:%M:%S %p", u"%H:%M:%S %p");
  const std::u16string whole = u"Wednesday, 3. April 2024\U0001F319 T 10:30:15 PM";
  const std::string bytes = utf8(whole);
  for (const std::uint32_t mode : {0u, 1u, 2u, 3u, 4u, 0x200u, 0x201u, 0x204u, ~0u}) {
    for (std::size_t length = 0; length <= whole.size(); ++length) {
      (void)read_text<char16_t>(Service::date, std::u16string_view(whole).substr(0, length), mode);
      (void)read_text<char16_t>(Service::date, std::u16string_view(whole).substr(length), mode);
    }
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
      (void)read_text<char>(Service::date, std::string_view(bytes).substr(0, length), mode);
      (void)read_text<char>(Service::date, std::string_view(bytes).substr(length), mode);
    }
    expect_read(Service::date, std::u16string(9000, u' '), mode, fails, 0);
    expect_read(Service::date, u"2024" + std::u16string(9000, u' ') + u"x", mode, fails, 0);
    EXPECT_EQ(read_units<char>(Service::date, nullptr, -1, mode).value, fails);
  }
}

}  // namespace
}  // namespace jwnls::test
