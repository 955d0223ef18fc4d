// Values outside the calendar, lengths that lie, and texts that outgrow the work area.

#include <bit>
#include <cmath>
#include <limits>

#include "tests/module/format_dates/formatting.h"

namespace jwnls::test {
namespace {

using BoundsTest = FormattingTest;

constexpr double first_second = -11928470400.0;
constexpr double end_second = 569318630400.0;

TEST_F(BoundsTest, RefuseValuesOutsideTheCalendar) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  set_pattern(u"%Y%m%d%y");
  for (const Service service : {Service::time, Service::datetime}) {
    for (const std::uint64_t bits : {0xFFFFD10000000000, 0xFFFF000000000000, 0xFFFFFFFFFFFFFFFF}) {
      expect_failure(service, Value(std::bit_cast<double>(bits)), Status::missing_value);
    }
    for (const double value :
         {nan, -nan, std::bit_cast<double>(0xFFFEFFFFFFFFFFFF), infinity, -infinity,
          std::nextafter(first_second, -infinity), end_second, 1e300, -1e300}) {
      expect_failure(service, Value(value), Status::out_of_range);
    }
    expect_text(service, Value(first_second), u"158201011582");
    expect_text(service, Value(std::nextafter(first_second, 0)), u"158201011582");
    expect_text(service, Value(end_second - 1), u"000012310000");
    expect_text(service, Value(std::nextafter(end_second, 0)), u"000012310000");
  }
}

TEST_F(BoundsTest, RefusePartsThatFormNoDate) {
  set_pattern(u"%d");
  for (const int date : {1900'02'29, 4000'02'29, 20000'02'29, 2000'02'30, 2000'04'31, 2000'01'32,
                         2000'01'00, 2000'00'01, 2000'13'01, 1581'12'31, 20001'01'01, 100'01'01}) {
    expect_failure(Service::date, {date / 10000, date / 100 % 100, date % 100},
                   Status::out_of_range);
  }
  for (const int any : {-1, INT32_MIN, INT32_MAX}) {
    for (const Value& date : {Value(any, 1, 1), Value(2000, any, 1), Value(2000, 1, any)}) {
      expect_failure(Service::date, date, Status::out_of_range);
    }
  }
  for (const int leap_year : {2000, 3996, 0, 48}) {
    expect_text(Service::date, {leap_year, 2, 29}, u"29");
  }
}

constexpr Instant tuesday = {2024, 3, 5, 5, 7, 9};

// Whatever an entry claims, at most its 60 units are read and below 1 is empty.
TEST_F(BoundsTest, DoNotTrustTheLengthOfAnyEntry) {
  LocaleRecord& record = *handle->record;
  std::u16string full(60, u'-');
  for (std::size_t i = 0; i < full.size(); ++i) full[i] = static_cast<char16_t>(u'a' + i % 26);
  const std::pair<TextEntry*, const char16_t*> entries[] = {
      {&record.full_weekdays[2], u"%A"},    {&record.short_weekdays[2], u"%a"},
      {&record.full_months[2], u"%B"},      {&record.short_months[2], u"%b"},
      {&record.before_noon, u"%P"},         {&record.full_weekdays[2], u"%f"},
      {&pattern_of(Service::time), nullptr}};
  for (const auto& [entry, pattern] : entries) {
    for (const std::int64_t claimed :
         {std::int64_t{60}, std::int64_t{61}, std::int64_t{1} << 32, (std::int64_t{1} << 32) + 1,
          INT64_MAX, std::int64_t{0}, std::int64_t{-1}, INT64_MIN}) {
      set_text(*entry, full, claimed);
      if (pattern != nullptr) set_pattern(pattern);
      expect_text(Service::time, tuesday, claimed >= 60 ? std::u16string_view(full) : u"");
    }
  }
  // Names at and around the length up to which they are copied as a block.
  set_pattern(u"%A|");
  for (std::size_t length = 0; length <= 60; ++length) {
    set_text(record.full_weekdays[2], full, static_cast<std::int64_t>(length));
    expect_text(Service::time, tuesday, full.substr(0, length) + u"|");
    if (length == 0) continue;
    std::u16string name = full.substr(0, length);
    name.back() = u'\u20AC';
    set_text(record.full_weekdays[2], name);
    expect_text(Service::date, tuesday, name + u"|");
  }
}

// A pattern whose text has `length` units: as many weekday names of 60 units as fit, then literals.
std::u16string pattern_of_length(std::size_t length) {
  std::u16string pattern;
  for (std::size_t i = 0; i < length / 60; ++i) pattern += u"%A";
  return pattern + std::u16string(length % 60, u'x');
}

TEST_F(BoundsTest, CutWhatOutgrowsTheWorkArea) {
  LocaleRecord& record = *handle->record;
  const std::u16string name = std::u16string(59, u'n') + u'N';
  set_text(record.full_weekdays[2], name);
  for (const auto length : std::initializer_list<std::size_t>{480, 511, 512, 513, 530, 539}) {
    set_pattern(pattern_of_length(length));
    std::u16string text;
    while (text.size() < length / 60 * 60) text += name;
    text.append(length % 60, u'x');
    const bool outgrown = length > 512;
    text.resize(std::min<std::size_t>(length, 512));
    expect_text(Service::time, tuesday, text, 0, outgrown);
  }
  // Thirty names, three bytes a unit: the 8-bit form cuts at exactly byte 512.
  set_text(record.full_weekdays[2], std::u16string(60, u'\u20AC'));
  set_pattern(pattern_of_length(1800));
  expect_units<char16_t>(Service::datetime, tuesday, std::u16string(512, u'\u20AC'), 0, true);
  expect_units<char>(Service::datetime, tuesday,
                     encoded(std::u16string(171, u'\u20AC')).substr(0, 512), 0, true);
  // What has been cut ends the walk: a refusal behind it is not noticed, whether a name or a
  // literal was cut; one before it is.
  for (const auto length : std::initializer_list<std::size_t>{540, 513}) {
    set_pattern(pattern_of_length(length) + u"%Q");
    std::u16string text(std::u16string(480, u'\u20AC') + std::u16string(32, u'x'));
    if (length == 540) text = std::u16string(512, u'\u20AC');
    expect_units<char16_t>(Service::time, tuesday, text, 0, true);
  }
  for (const std::u16string& pattern :
       {pattern_of_length(511) + u"%Q", u"%Q" + pattern_of_length(1740)}) {
    set_pattern(pattern);
    expect_failure_in<char16_t>(Service::time, tuesday, Status::not_possible);
  }
}

TEST_F(BoundsTest, CutAnyDirectiveThatStraddlesTheEndOfTheWorkArea) {
  LocaleRecord& record = *handle->record;
  set_text(record.full_weekdays[2], std::u16string(60, u'n'));
  set_text(record.before_noon, u"vorm.");
  constexpr std::pair<const char16_t*, std::u16string_view> pieces[] = {
      {u"%d", u"05"},   {u"%e", u" 5"},    {u"%Y", u"2024"},  {u"%#d%#d", u"55"},
      {u"%W%%", u"2%"}, {u"%z", u"+0100"}, {u"%p", u"vorm."}, {u"xyz", u"xyz"}};
  for (const auto& [pattern, piece] : pieces) {
    for (std::size_t before = 506; before <= 512; ++before) {
      set_pattern(pattern_of_length(before) + pattern);
      std::u16string text(480, u'n');
      text.append(before - 480, u'x').append(piece);
      const bool outgrown = text.size() > 512;
      text.resize(std::min<std::size_t>(text.size(), 512));
      if (text.back() == u' ') text.pop_back();
      expect_text(Service::time, tuesday, text, 0, outgrown);
    }
  }
}

TEST_F(BoundsTest, TrimBlanksBeforeTheCapacityCounts) {
  set_text(handle->record->full_weekdays[2], u"Tuesday" + std::u16string(53, u' '));
  set_pattern(u"%A   ");
  expect_text(Service::date, tuesday, u"Tuesday");
  // Also where the work area cut the text.
  set_pattern(pattern_of_length(540));
  std::u16string text;
  while (text.size() < 480) text += u"Tuesday" + std::u16string(53, u' ');
  expect_text(Service::date, tuesday, text + u"Tuesday", 0, true);
}

// A zone's abbreviation is taken whole or replaced; the 8-bit area keeps its last byte free of it.
TEST_F(BoundsTest, ReplaceAnAbbreviationThatDoesNotFit) {
  set_text(handle->record->full_weekdays[2], std::u16string(60, u'n'));
  for (const auto size : std::initializer_list<std::size_t>{50, 10, 4}) {
    host.abbreviation = std::u16string(size, u'Z');
    host.abbreviation_length = static_cast<std::int64_t>(size);
    for (std::size_t before = 512 - size - 2; before <= 512; ++before) {
      const std::size_t rest = before - 420;  // in two names of up to 60 units
      set_text(handle->record->short_weekdays[2], std::u16string(rest / 2, u'n'));
      set_text(handle->record->full_months[2], std::u16string(rest - rest / 2, u'n'));
      set_pattern(u"%A%A%A%A%A%A%A%a%B%Z");
      const auto expect = [&]<typename Unit>(Unit, std::size_t limit) {
        std::u16string text(before, u'n');
        text += before + size <= limit ? host.abbreviation : u"XST";
        const bool outgrown = text.size() > 512;
        text.resize(std::min<std::size_t>(text.size(), 512));
        expect_units<Unit>(Service::time, tuesday, text_in<Unit>(text), 0, outgrown);
      };
      expect(char16_t{}, 512);
      expect(char{}, 511);
    }
  }
}

}  // namespace
}  // namespace jwnls::test
