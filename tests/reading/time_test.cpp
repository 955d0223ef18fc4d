// Time-of-day input: single patterns, recognition and the patterns that it derives.

#include "tests/reading/reading.h"

namespace jwnls::test {
namespace {

constexpr std::uint32_t recognition = 4;
constexpr std::optional<double> fails;

struct TimeRow {
  const char16_t* pattern_1;
  const char16_t* pattern_2;
  const char16_t* text;
  std::optional<double> value;
};

constexpr const char16_t* clock_24 = u"%H:%M:%S";
constexpr const char16_t* clock_12 = u"%I:%M:%S %p";
constexpr const char16_t* none = u"!";

constexpr TimeRow recognised[] = {
    {clock_24, clock_24, u"10:30", 37800},
    {clock_24, clock_24, u"  10:30:15", 37815},
    {clock_24, clock_24, u"10:30:15 ?", fails},
    {clock_24, clock_24, u"10", fails},
    {clock_24, clock_24, u"", fails},
    {clock_12, clock_12, u"10:30 PM", 81000},
    {clock_12, clock_12, u"10:30: pm", 81000},
    {clock_12, clock_12, u"12:05 AM", 300},
    {clock_12, clock_12, u"00:30 PM", fails},
    {clock_12, clock_12, u"13:05 AM", fails},
    {clock_12, clock_12, u"13:05:", 47100},
    // The designator before the hour goes with the seconds.
    {none, u"%p %I:%M:%S", u"PM 1:05:09", 47109},
    {none, u"%p%I:%M:%S", u"1:05", 3900},
    {none, u"%p%I:%M:%S", u"PM 1:05:", 47100},
    // Between seconds and minutes it is in the one cut alone: nothing goes from the other.
    {none, u"%S %p %M", u"7", fails},
    {none, u"x%S%p%M", u"x", 0},
    // The common patterns, whatever the locale's are.
    {none, none, u"23:59:59Z", 86399},
    {none, none, u"23:59", fails},
    // Time pattern 1 is cut at its minutes and at its seconds.
    {u"%#Hh%#M.%S", none, u"7h5.", 25500},
    {u"%#Hh%#M.%#S", none, u"7h5", fails},
    {u"%S %M", none, u"", 0},  // cut before its seconds, it is empty
    {u"%d %H:%M", u"%H:%M:%S.%s", u"23:59:59.999", 86399.999},
};

class TimeTest : public ReadingTest {};

TEST_F(TimeTest, RecognisesCandidatesInOrder) {
  for (const TimeRow& row : recognised) {
    set_time_patterns(row.pattern_1, row.pattern_2);
    const std::u16string text = row.text;
    expect_read(Service::time, text, recognition, row.value, text.size());
    expect_read(Service::time, text + u"   ", recognition, row.value, text.size());
  }
}

TEST_F(TimeTest, LeavesOutDerivedPatternsThatNoEntryCouldHold) {
  // The cut before the seconds keeps a designator and gets a second one: 60 units, then 61.
  for (const std::size_t filling : {53u, 54u}) {
    const std::u16string head(filling, u'a');
    set_time_patterns(none, head + u"%M%p%S");
    const std::u16string text = head + u"05AM AM";
    expect_read(Service::time, text, recognition, filling == 53 ? std::optional(300.0) : fails,
                text.size());
  }
}

TEST_F(TimeTest, ASinglePatternLeavesTheRestToTheCaller) {
  set_time_patterns(clock_24, clock_12);
  expect_read(Service::time, u"10:30", 1, fails, 0);
  expect_read(Service::time, u" 10:30:15 PM", 1, 37815, 9);
  expect_read(Service::time, u"10:30:15 pm!", 8, 81015, 11);
  expect_read(Service::time, u"10:30:15 pm!", 2, 81015, 11);
  expect_read(Service::time, u"1:30:15 pm", 2, fails, 0);  // fixed width
  expect_read(Service::time, u"1:30:15 pm", 6, 48615, 10);
  expect_read(Service::time, u"1:30:15 pm", 0x200, fails, 0);
}

TEST_F(TimeTest, LengthsBelowOneAreEmptyTexts) {
  set_time_patterns(clock_24, clock_24);
  for (const std::int64_t length : {std::int64_t{0}, std::int64_t{-1}, INT64_MIN}) {
    EXPECT_EQ(read_units<char16_t>(Service::time, nullptr, length, recognition).value, fails);
    EXPECT_EQ(read_units<char>(Service::time, nullptr, length, 1).value, fails);
  }
  set_time_patterns(u"", u"");
  EXPECT_EQ(read_units<char16_t>(Service::time, nullptr, -5, recognition).value, 0);
}

TEST_F(TimeTest, MalformedUtf8ReadsAsReplacementUnits) {
  // Each U+FFFD of the pattern stands for one malformed piece behind the hour.
  const auto read = [this](std::u16string_view pattern, std::optional<double> value,
                           auto... tails) {
    set_time_patterns(none, pattern);
    for (const std::string& text : {std::string("7") + tails...}) {
      EXPECT_EQ(read_text<char>(Service::time, text, recognition).value, value) << text;
    }
  };
  read(u"%H\uFFFD", 25200, "\xFF", "\xC3", "\xE2\x82", "\xF0\x9F\x8C", "\xC0", "\xEF\xBF\xBD");
  read(u"%H\uFFFD", fails, "\xE0\x80", "\xF4\x90\x80\x80", "\xC3\xC3");
  read(u"%H\uFFFD\uFFFD", 25200, "\xC0\x80", "\xE0\x80", "\xE2\xE2\x82", "\xF0\x8F", "\xC3\xC3");
  read(u"%H\uFFFD\uFFFD", fails, "\xFF");
  // Surrogates, one by one in three bytes or paired in four.
  read(u"%H\U0001F319", 25200, "\xED\xA0\xBC\xED\xBC\x99", "\xF0\x9F\x8C\x99");
}

TEST_F(TimeTest, ReadsWithinLongTextsAndEntries) {
  set_time_patterns(u"%A %B %d %z %Z", u"%H:%M:%S.%s \u65F6 %p %Z");
  expect_read(Service::time, std::u16string(9000, u' '), recognition, fails, 0);
  set_text(handle->record->style_0_pattern, u"%H:%M:%S", INT64_MAX);
  expect_read(Service::time, u"10:30:15", recognition, 37815, 8);
}

}  // namespace
}  // namespace jwnls::test
