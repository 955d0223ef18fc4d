// Time-of-day input: single patterns, recognition and the patterns that it derives.

#include "tests/module/read_dates/reading.h"

namespace jwnls::test {
namespace {

constexpr std::uint32_t recognition = 4;
constexpr std::optional<double> fails;

constexpr const char16_t* clock_24 = u"%H:%M:%S";
constexpr const char16_t* clock_12 = u"%I:%M:%S %p";
constexpr const char16_t* none = u"!";

class TimeTest : public ReadingTest {};

TEST_F(TimeTest, RecognisesCandidatesInOrder) {
  const auto read = [this](const char16_t* pattern_1, const char16_t* pattern_2,
                           std::optional<double> value, auto... texts) {
    set_time_patterns(pattern_1, pattern_2);
    for (const std::u16string& text : {std::u16string(texts)...}) {
      expect_read(Service::time, text, recognition, value, text.size());
      expect_read(Service::time, text + u"   ", recognition, value, text.size());
    }
  };
  read(clock_24, clock_24, 37800, u"10:30", u"10:30:");
  read(clock_24, clock_24, 37815, u"  10:30:15");
  read(clock_24, clock_24, fails, u"10:30:15 ?", u"10", u"");
  read(clock_12, clock_12, 81000, u"10:30 PM", u"10:30: pm");
  read(clock_12, clock_12, 300, u"12:05 AM");
  read(clock_12, clock_12, 47100, u"13:05", u"13:05:");
  read(clock_12, clock_12, fails, u"00:30 PM", u"13:05 AM");
  // The designator before the hour goes with the seconds.
  read(none, u"%p %I:%M:%S", 47109, u"PM 1:05:09");
  read(none, u"%p%I:%M:%S", 3900, u"1:05");
  read(none, u"%p%I:%M:%S", 47100, u"PM 1:05", u"PM 1:05:");
  // Between seconds and minutes it is in the one cut alone: nothing goes from the other.
  read(none, u"%S %p %M", fails, u"7");
  read(none, u"x%S%p%M", 0, u"x");
  // The common patterns, whatever the locale's are.
  read(none, none, 86399, u"23:59:59", u"23:59:59Z", u"23:59:59z");
  read(none, none, fails, u"23:59");
  // Time pattern 1 is cut at its minutes and at its seconds.
  read(u"%#Hh%#M.%S", none, 25500, u"7h5", u"7h5.");
  read(u"%#Hh%#M.%#S", none, fails, u"7h5");
  read(u"%S %M", none, 0, u"");  // cut before its seconds, it is empty
  read(u"%d %H:%M", u"%H:%M:%S.%s", 86399.999, u"23:59:59.999");
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
  read(u"%H\uFFFD", fails, "\xE0\x80", "\xF4\x90\x80\x80", "\xF4\x7F", "\xC3\xC3", "\xC3\x7F");
  read(u"%H\uFFFD\uFFFD", 25200, "\xC0\x80", "\xE0\x80", "\xE2\xE2\x82", "\xF0\x8F", "\xC3\xC0");
  read(u"%H\uFFFD\x7F", 25200, "\xC3\x7F");
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
