// Date and datetime input: single patterns, recognition, and what may stand behind a date.

#include "abi/reading_modes.h"
#include "tests/module/read_dates/reading.h"

namespace jwnls::test {
namespace {

constexpr std::uint32_t strict = 0;
constexpr std::uint32_t lenient = 4;
constexpr std::uint32_t datetime = reading_modes::datetime;
constexpr std::optional<double> fails;
constexpr const char16_t* none = u"!";

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

constexpr double april_3 = day(2024, 4, 3);
constexpr double march_4 = day(2024, 3, 4);

TEST_F(DateTest, RecognisesInTheOrderOfTheLocale) {
  // Each text under the locale's first date pattern, bare and with blanks behind it, alone and as a
  // datetime that has no time.
  const auto read = [this](const char16_t* pattern, std::optional<double> strict_value,
                           std::optional<double> lenient_value, auto... texts) {
    set_date_patterns(pattern);
    for (const std::u16string_view bare : {std::u16string_view(texts)...}) {
      for (const std::u16string& text : {std::u16string(bare), std::u16string(bare) + u"  "}) {
        for (const auto& [mode, date] :
             {std::pair(strict, strict_value), {lenient, lenient_value}}) {
          expect_read(Service::date, text, mode, date, bare.size());
          const auto midnight = date ? std::optional(second(*date)) : date;
          expect_read(Service::date, text, mode | datetime, midnight, bare.size());
        }
      }
    }
  };
  constexpr double april_13 = day(2024, 4, 13);
  read(u"%d|%m|%Y", april_3, april_3, u"03/04/2024", u"03-04-2024", u"03.04.2024");
  read(u"%d|%m|%Y", april_13, april_13, u"04/13/2024");
  read(u"%m|%d|%Y", march_4, march_4, u"03/04/2024", u"03-04-2024", u"03.04.2024");
  read(u"%m|%d|%Y", april_13, april_13, u"13.04.2024");
  read(u"%o|%e|%y", march_4, march_4, u"03/04/2024");
  read(u"%O|%E|%Y", april_3, april_3, u"03/04/2024");  // these letters do not tell the order
  read(u"%d|%B|%Y", march_4, march_4, u"03/04/2024");  // a named month counts as first
  read(u"%Y|%m|%d", april_3, april_3, u"03/04/2024");
  read(u"%m|%d", april_3, april_3, u"03/04/2024");
  read(none, april_3, april_3, u"2024/04/03", u"2024-04-03", u"2024.04.03", u"2024/apr/03",
       u"2024-APR-03", u"2024.Apr.03", u"Apr/03/2024", u"Apr.03.2024", u"Apr-03-2024",
       u"Apr 03 2024", u"Wednesday,Apr03,2024");
  read(none, fails, april_3, u"2024-April-03", u"Apr 3 2024", u"wed, apr 3, 2024", u"3/4/24",
       u"03-04-24");
  read(none, fails, day(1960, 4, 3), u"3/4/60");
  read(u"%Y|%m|%d", fails, day(2003, 4, 24), u"24.4.3");  // the days come first there
  // What is read whole and is no date: nothing else is tried.
  read(none, fails, fails, u"31/04/2024", u"29.02.2023", u"29-02-4000", u"03/04/2024x",
       u"03,04,2024", u"");
  read(none, day(2024, 2, 29), day(2024, 2, 29), u"29.02.2024");
  read(none, day(1582, 1, 1), day(1582, 1, 1), u"01/01/1582");
  read(none, day(9999, 12, 31) - 2, day(9999, 12, 31) - 2, u"31/12/9999");
  read(u"", april_3, april_3, u"03/04/2024");  // an empty pattern reads only a part
  read(u"%d/%m/%Y!", april_3, april_3, u"03/04/2024");
  read(u"%Y-%d-%m", april_3, april_3, u"2024-03-04");  // the locale's own come first
  read(u"%d %B %Y", april_3, april_3, u" 03 April 2024");
  read(u"%d %m", day(2000, 4, 3), day(2000, 4, 3), u"03 04");  // no year is the year 0
  expect_read(Service::date, u"03/04/2024 10:30", lenient, fails, 0);
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

TEST_F(DateTest, DatetimesAreADateAndATime) {
  set_date_patterns(u"%m/%d/%Y", u"%b %E, %Y", u"%B %E, %Y");
  set_time_patterns(u"%E %b %Y, %I:%M:%S %p", u"%#I:%M:%S %p");
  const auto read = [this](std::optional<double> value, auto... texts) {
    for (const std::u16string_view text : {std::u16string_view(texts)...}) {
      expect_read(Service::date, text, lenient | datetime, value, text.find_last_not_of(u' ') + 1);
    }
  };
  read(second(april_3, 22, 30, 15), u"3 Apr 2024, 10:30:15 PM");  // time pattern 1
  read(second(april_3, 10, 30, 15), u"2024-04-03T10:30:15", u"2024-04-03t10:30:15Z",
       u"2024-04-03 , 10:30:15", u"2024-04-03:10:30:15");
  read(second(april_3, 22, 30), u"Apr 3 2024 10:30 pm");
  read(second(april_3, 10, 30), u"4/3/24 10:30");
  read(second(april_3, 0, 5), u"4/3/2024   12:05 AM  ");
  read(fails, u"3 Apr 2024, 13:30:15 PM", u"31 Apr 2024, 10:30:15 PM", u"2024-04-0310:30:15",
       u"4/3/2024 TT10:30", u"4/3/2024 T,10:30", u"4/3/2024 T", u"4/3/2024 13:30 PM",
       u"4/31/2024 10:30", u"10:30");
  read(fails, u"4/3/2024 3 Apr 2024, 10:30");  // time pattern 1 is no time behind a date
  // One date pattern; its time is recognised all the same.
  expect_read(Service::date, u"04/03/2024 9:05", 1 | datetime, second(april_3, 9, 5), 15);
  expect_read(Service::date, u"04/03/2024", 1 | datetime, second(april_3), 10);
  expect_read(Service::date, u"04/03/2024 more", 1 | datetime, fails, 0);
  expect_read(Service::date, u"2024-04-03 9:05", 1 | datetime, fails, 0);
  expect_read(Service::date, u"3 Apr 2024, 10:30:15 PM", 1 | datetime, second(april_3, 22, 30, 15),
              23);
}

TEST_F(DateTest, ReadsNothingOfLongAndEmptyTexts) {
  set_date_patterns(u"%A, %E. %B %Y", u"%d %b %Y %z", u"%B %Z");
  for (const std::uint32_t mode : {0u, 1u, 2u, 3u, 4u, 0x200u, 0x201u, 0x204u, ~0u}) {
    expect_read(Service::date, std::u16string(9000, u' '), mode, fails, 0);
    expect_read(Service::date, u"2024" + std::u16string(9000, u' ') + u"x", mode, fails, 0);
    EXPECT_EQ(read_units<char>(Service::date, nullptr, -1, mode).value, fails);
  }
}

}  // namespace
}  // namespace jwnls::test
