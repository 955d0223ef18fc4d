// What each directive of a pattern writes, and which ones are refused.

#include <array>
#include <cmath>
#include <cstdio>
#include <random>

#include "module/calendar/civil.h"
#include "module/calendar/value_conversions.h"
#include "tests/module/format_dates/formatting.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

constexpr Instant morning = {2024, 3, 5, 5, 7, 9};       // a Tuesday
constexpr Instant evening = {2005, 11, 20, 23, 45, 59};  // a Sunday

class DirectiveTest : public FormattingTest {
 protected:
  void SetUp() override {
    FormattingTest::SetUp();
    LocaleRecord& record = *handle->record;
    const auto fill = [](auto& list, char16_t kind) {
      for (int i = 0; i < static_cast<int>(std::size(list)); ++i) {
        set_text(list[i], std::u16string{kind, static_cast<char16_t>(u'1' + i)});
      }
    };
    fill(record.full_weekdays, u'W');
    fill(record.short_weekdays, u'w');
    fill(record.full_months, u'M');
    fill(record.short_months, u'm');
    set_text(record.before_noon, u"vorm. ß");
    set_text(record.after_noon, u"午後\U0001F319");
  }
};

TEST_F(DirectiveTest, WriteTheirPart) {
  const auto writes = [this](std::u16string_view text, std::u16string_view evening_text,
                             auto... patterns) {
    for (const std::u16string_view pattern : {std::u16string_view(patterns)...}) {
      set_pattern(pattern);
      for (const Service service : {Service::date, Service::time, Service::datetime}) {
        expect_text(service, morning, text);
        expect_text(service, evening, evening_text);
      }
    }
  };
  const auto writes_of_the_clock = [this](std::u16string_view pattern, std::u16string_view text,
                                          std::u16string_view evening_text) {
    set_pattern(pattern);
    expect_failure(Service::date, morning, Status::not_possible);
    for (const Service service : {Service::time, Service::datetime}) {
      expect_text(service, morning, text);
      expect_text(service, evening, evening_text);
    }
  };
  writes(u"W3", u"W1", u"%A", u"%#a", u"%#A");
  writes(u"w3", u"w1", u"%a", u"%?A", u"%?a");
  writes(u"W3W3W3W3", u"W1W1W1W1", u"%F%f%?F%#f");
  writes(u"M3", u"M;", u"%B", u"%#b");
  writes(u"m3", u"m;", u"%b", u"%?B");
  writes(u"M3M3M3M3", u"M;M;M;M;", u"%C%c%?C%#c");
  writes(u"05 05 05 05", u"20 20 20 20", u"%D %d %?D %?d");
  writes(u"5 5", u"20 20", u"%#D %#d");
  writes(u" 5| 5|5|5|5|5", u"20|20|20|20|20|20", u"%e|%?e|%E|%?E|%#e|%#E");
  writes(u"03 03 03 03 03 03 03", u"11 11 11 11 11 11 11", u"%N %n %m %?M %?m %?N %?n");
  writes(u"3 3", u"11 11", u"%#N %#n");
  writes(u" 3| 3|3|3|3|3", u"11|11|11|11|11|11", u"%o|%?o|%O|%?O|%#o|%#O");
  set_pattern(u"%e|%o|%d");
  expect_text(Service::time, Instant{2024, 10, 10}, u"10|10|10");
  expect_text(Service::time, Instant{2024, 9, 9}, u" 9| 9|09");
  writes(u"7777", u"7777", u"%U%u%?U%#u");  // deliberate, whatever the date
  writes(u"2222", u"0000", u"%W%w%?W%#w");
  writes(u"2024 2024 2024", u"2005 2005 2005", u"%Y %y %?Y");
  writes(u"2024 2024", u"205 205", u"%#Y %#y");
  writes(u"% % %", u"% % %", u"%% %?% %#%");
  writes(u"CET CET CET", u"CET CET CET", u"%Z %#Z %#z");
  writes(u"+0100 +0100 +0100", u"+0100 +0100 +0100", u"%z %?Z %?z");
  writes(u"d5\u00FC\u20AC\U0001D11E", u"d5\u00FC\u20AC\U0001D11E", u"d5\u00FC\u20AC\U0001D11E");
  writes_of_the_clock(u"%P %p %?p %#P", u"vorm. ß vorm. ß vorm. ß vorm. ß",
                      u"午後\U0001F319 午後\U0001F319 午後\U0001F319 午後\U0001F319");
  writes_of_the_clock(u"%M %#M %#m", u"07 7 7", u"45 45 45");
  writes_of_the_clock(u"%S %s %?s %#s", u"09 09 09 9", u"59 59 59 59");
  writes_of_the_clock(u"%H %h %?h %#h", u"05 05 05 5", u"23 23 23 23");
  writes_of_the_clock(u"%I %i %#I", u"05 05 5", u"11 11 11");
  writes_of_the_clock(u"%K %k %#k", u"05 05 5", u"23 23 23");
  writes_of_the_clock(u"%L %l %#l", u"05 05 5", u"11 11 11");
  writes_of_the_clock(u"%H:%M:%S|%#I:%M:%S|%l:%M:%S:%M", u"05:07:09|5:07:09|05:07:09:07",
                      u"23:45:59|11:45:59|11:45:59:45");
  writes_of_the_clock(u"%H:%M:%s %H:%m:%S %H:%M:%#S", u"05:07:09 05:03:09 05:07:9",
                      u"23:45:59 23:11:59 23:45:59");
  // Trailing blanks go, and only those: neither leading ones nor other spaces.
  writes(u"", u"", u"", u"   ");
  writes(u"  05 \u00A0", u"  20 \u00A0", u"  %d \u00A0");
  writes(u"05", u"20", u"%d   ");
}

TEST_F(DirectiveTest, ShowTheHourInFourWays) {
  constexpr std::pair<int, const char16_t*> rows[] = {
      {0, u"00 12 24 00 0 12 24 0 a"},    {1, u"01 01 01 01 1 1 1 1 a"},
      {11, u"11 11 11 11 11 11 11 11 a"}, {12, u"12 12 12 12 12 12 12 12 p"},
      {13, u"13 01 13 01 13 1 13 1 p"},   {23, u"23 11 23 11 23 11 23 11 p"}};
  set_pattern(u"%H %I %K %L %#H %#I %#K %#L %p");
  set_text(handle->record->before_noon, u"a");
  set_text(handle->record->after_noon, u"p");
  for (const auto& [hour, text] : rows) {
    expect_text(Service::time, Instant{1970, 1, 1, hour, 59, 59}, text);
  }
}

TEST_F(DirectiveTest, ShowYearsAsTwoPairs) {
  constexpr std::tuple<int, const char16_t*, const char16_t*> rows[] = {
      {1582, u"1582", u"1582"}, {1900, u"1900", u"190"},  {1909, u"1909", u"199"},
      {4000, u"4000", u"400"},  {9999, u"9999", u"9999"}, {10000, u"0000", u"00"},
      {10203, u"0203", u"23"},  {20000, u"0000", u"00"},  {0, u"2000", u"200"},
      {49, u"2049", u"2049"},   {50, u"1950", u"1950"},   {99, u"1999", u"1999"}};
  for (const auto& [year, padded, bare] : rows) {
    set_pattern(u"%Y");
    expect_text(Service::date, {year, 12, 31}, padded);
    set_pattern(u"%#Y");
    expect_text(Service::date, {year, 12, 31}, bare);
  }
}

// The weekday of the calendar's first nine days is below 1; here it is brought into the week.
TEST_F(DirectiveTest, StayInsideTheNameListsInEarly1582) {
  set_pattern(u"%A%a%F%W");
  constexpr const char16_t* texts[] = {u"W1w1W10", u"W2w2W21", u"W3w3W32", u"W4w4W43",
                                       u"W5w5W54", u"W6w6W65", u"W7w7W76"};
  for (int day = 1; day <= 12; ++day) {
    const Instant at = {1582, 1, day};
    const char16_t* text = texts[(day + 4) % 7];  // the first is a Friday
    for (const Service service : {Service::date, Service::time, Service::datetime}) {
      expect_text(service, at, text);
    }
  }
}

TEST_F(DirectiveTest, ChooseThePatternByStyle) {
  LocaleRecord& record = *handle->record;
  for (int i = 0; i < 3; ++i) {
    set_text(record.date_patterns[i], std::u16string(1, static_cast<char16_t>(u'0' + i)));
  }
  set_text(record.time_pattern, u"time");
  set_text(record.style_0_pattern, u"style 0");
  set_text(record.datetime_pattern, u"other");
  for (const std::uint32_t style : {0u, 1u, 2u, 3u, 0x80000001u, 0xFFFFFFFFu}) {
    expect_text(Service::date, morning, style == 1 ? u"1" : style == 2 ? u"2" : u"0", style);
    expect_text(Service::time, morning, u"time", style);
    expect_text(Service::datetime, morning, style == 0 ? u"style 0" : u"other", style);
  }
}

TEST_F(DirectiveTest, RefuseEveryOtherLetter) {
  constexpr std::u16string_view letters = u"%ABCDEFHIKLMNOPSUWYZ";
  constexpr std::u16string_view clock_letters = u"HIKLPS";
  // A host may map these to ASCII letters; they are none.
  host.upper_case = {{u'ı', u'I'}, {u'ſ', u'S'}, {u'ａ', u'A'}, {0xC1, u'A'}};
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const auto letter = static_cast<char16_t>(unit);
    const bool small = unit >= u'a' && unit <= u'z';
    const auto capital = static_cast<char16_t>(small ? unit - 32 : unit);
    for (const char16_t modifier : {u'\0', u'?', u'#'}) {
      if (modifier == 0 && (letter == u'?' || letter == u'#')) continue;  // cut short, see below
      std::u16string pattern = u"x%";
      if (modifier != 0) pattern += modifier;
      set_pattern(pattern + letter);
      const bool known = letters.find(capital) != letters.npos;
      const bool month = capital == u'M' && modifier != u'#' && (small || modifier == u'?');
      const bool dated =
          known && clock_letters.find(capital) == clock_letters.npos && (capital != u'M' || month);
      for (const auto& [service, allowed] :
           {std::pair(Service::date, dated), {Service::time, known}}) {
        if (!allowed) {
          expect_failure(service, morning, Status::not_possible);
          if (HasFatalFailure()) return;
          continue;
        }
        char16_t out[16];
        std::int64_t length = 0;
        ASSERT_EQ(call(handle, service, morning, 0, out, 16, &length), 0u) << unit;
      }
    }
  }
  for (const char16_t* cut : {u"%", u"%?", u"%#", u"%d%", u"%%%", u"%?#", u"%#?", u"%?#d", u"%#?d",
                              u"%?\u00E4", u"   %", u"%H:%M:%"}) {
    set_pattern(cut);
    expect_failure(Service::date, morning, Status::not_possible);
    expect_failure(Service::datetime, morning, Status::not_possible);
  }
}

// The host's classes decide what is lower case, its mapping what the letter is.
TEST_F(DirectiveTest, AskTheHostAboutCase) {
  std::array<std::uint16_t, 65536> classes{};
  host.kernel.character_classes = classes.data();
  set_pattern(u"%a %B %m %o");
  expect_failure(Service::date, morning, Status::not_possible);  // "%m" is the minute now
  expect_text(Service::time, morning, u"W3 M3 07  3");
  classes[u'a'] = 0xFFFD;  // every bit but the lower-case one
  classes[u'B'] = classes[u'm'] = 0x0002;
  expect_text(Service::date, morning, u"W3 m3 03  3");
  classes[u'E'] = classes[u'M'] = 0x0002;
  set_pattern(u"%H:%M:%S %E %e");  // "E" never pads, "e" is no lower-case letter here and does
  expect_text(Service::time, morning, u"05:03:09 5  5");
  set_pattern(u"%a %B %m %o");
  host.upper_case = {{u'a', u'D'}, {u'B', u'\u0410'}};
  expect_failure(Service::date, morning, Status::not_possible);
  host.upper_case = {{u'a', u'D'}, {u'B', u'%'}, {u'o', u'Y'}};
  expect_text(Service::time, morning, u"05 % 03 2024");
  host.kernel.character_classes = nullptr;
}

TEST_F(DirectiveTest, ShowTheZoneOfTheMoment) {
  const auto expect = [&](const std::u16string& name, const char16_t* offset) {
    for (const Service service : {Service::date, Service::time, Service::datetime}) {
      set_pattern(u"%Z");
      expect_text(service, morning, name);
      set_pattern(u"%z");
      expect_text(service, morning, offset);
    }
  };
  const auto check = [&](const std::u16string& abbreviation, std::int64_t claimed,
                         std::int64_t offset, const std::u16string& name,
                         const char16_t* shown_offset, std::uint32_t zone_info_status = 0) {
    host.abbreviation = abbreviation;
    host.abbreviation_length = claimed;
    host.offset_seconds = offset;
    host.zone_info_status = zone_info_status;
    expect(name, shown_offset);
  };
  const std::u16string longest(50, u'Z');
  check(u"PDT", 3, -25200, u"PDT", u"-0700");
  check(u"PDT", 2, -12600, u"PD", u"-0330");
  check(u"", 0, 0, u"XST", u"+0000");
  check(u"PDT", -1, 50400, u"XST", u"+1400");
  check(u"PDT", INT64_MIN, -59, u"XST", u"-0000");
  check(longest, 50, 3599, longest, u"+0059");
  check(longest, 51, 100 * 3600 + 60, longest, u"+0001");
  check(longest, INT64_MAX, INT64_MAX, longest, u"+1530");
  check(longest, 1, INT64_MIN, u"Z", u"-1530");
  check(u"PDT", 3, -25200, u"XST", u"+0000", 1);
  host.zone_info_status = 0;
  host.abbreviation = u"+\u00E9\u0141";  // 8-bit: each unit's low byte
  host.abbreviation_length = 3;
  set_pattern(u"%Z");
  expect_units<char16_t>(Service::date, morning, u"+\u00E9\u0141");
  expect_units<char>(Service::date, morning, "+\xE9\x41");

  Zone* zone = std::exchange(handle->zone, nullptr);
  expect(u"XST", u"+0000");
  handle->zone = zone;
}

// Random values, whole or not, are split as the calendar splits them.
TEST_F(DirectiveTest, SplitValuesLikeTheCalendar) {
  set_pattern(u"%Y-%m-%d %W %H:%M:%S");
  std::mt19937_64 random(test_seed(1582));
  std::uniform_real_distribution<double> any(-11928470400.0, 64'000'000'000.0);
  for (int i = 0; i < 5'000; ++i) {
    double value = any(random);
    if (i % 4 != 0) value = std::floor(value);
    if (i % 4 == 2) value = std::nextafter(std::floor(value / 86400) * 86400, -1e300);
    const double day = datetime_to_date_value(value);
    const CivilDate date = civil_from_day(static_cast<int>(day));
    char expected[64];
    std::snprintf(expected, sizeof expected, "%04d-%02d-%02d %d %02.0f:%02.0f:%02d", date.year,
                  date.month, date.day, weekday_from_day(static_cast<int>(day)) - 1,
                  datetime_to_hour(value), datetime_to_minute(value),
                  static_cast<int>(datetime_to_second(value)));
    char out[32];
    std::int64_t length = 0;
    ASSERT_EQ(call(handle, Service::time, Value(value), 0, out, 32, &length), 0u);
    ASSERT_EQ(std::string(out, static_cast<std::size_t>(length)), expected) << value;
  }
}

}  // namespace
}  // namespace jwnls::test
