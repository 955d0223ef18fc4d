// Period input: labels of months, weeks and quarters.

#include <algorithm>

#include "tests/module/read_dates/reading.h"

namespace jwnls::test {
namespace {

using namespace std::chrono;
using test::day;

constexpr std::optional<double> fails;

class PeriodTest : public ReadingTest {
 protected:
  void expect(const std::u16string& text, std::optional<double> value) {
    expect_read(Service::period, text, 0, value, text.find_last_not_of(u' ') + 1);
  }
};

TEST_F(PeriodTest, ReadsEveryLabel) {
  expect(u"Month3, 2024", day(2024, 3, 1));
  expect(u" MONTH 12,2024  ", day(2024, 12, 1));
  expect(u"Qtr 2 2024", day(2024, 4, 1));
  expect(u"Q4,2024", day(2024, 10, 1));
  expect(u"Mar-2024", day(2024, 3, 1));
  expect(u"march-24", day(2024, 3, 1));
  expect(u"3/2024", day(2024, 3, 1));
  expect(u"3/1582", day(1582, 3, 1));
  expect(u"Week0 2024", day(2024, 1, 1));
  expect(u"Week53 2000", day(2000, 12, 31));
  expect(u"W1, 1582", day(1582, 1, 4));  // the year begins on a Friday
  for (const char16_t* text : {u"Month13, 2024", u"Q5, 2024", u"Q0, 2024", u"3/2024 x", u"3/1581",
                               u"Week53 2024", u"W0, 2024", u"", u"   ", u"2024"}) {
    expect(text, fails);
  }
  expect(u"Week0 2023", fails);  // begins on a Sunday
}

TEST_F(PeriodTest, WeeksAgreeWithAnotherCalendar) {
  const auto first_monday = [](sys_days new_year) {
    const sys_days fourth = new_year + days(3);
    return fourth - (weekday(fourth) - Monday);
  };
  for (int y = 1583; y < 3000; y += 3) {
    const sys_days new_year = year(y) / January / 1;
    const sys_days next = year(y + 1) / January / 1;
    for (const int week : {1, 17, 52, 53}) {
      const auto check = [&](const std::string& label, sys_days first, sys_days end) {
        const sys_days start = first + days(7 * (week - 1));
        const auto value = static_cast<double>((start - sys_days(1960y / January / 1)).count());
        expect({label.begin(), label.end()}, start < end ? std::optional(value) : fails);
      };
      const std::string number = std::to_string(week);
      check("Week" + number + " " + std::to_string(y), new_year + (Sunday - weekday(new_year)),
            next);
      check("W" + number + ", " + std::to_string(y), first_monday(new_year), first_monday(next));
    }
  }
}

TEST_F(PeriodTest, TwoDigitYearsFollowTheOption) {
  expect(u"Mar-49", day(2049, 3, 1));
  expect(u"Mar-50", day(1950, 3, 1));
  host.integer_options[u"JW_NAME_YEARCUTOFF"] = 1980;
  expect(u"Mar-79", day(2079, 3, 1));
  expect(u"Week1 80", day(1980, 1, 6));
  expect(u"Q1, 2079", day(2079, 1, 1));
  host.integer_options[u"JW_NAME_YEARCUTOFF"] = 1400;
  expect(u"Mar-79", fails);
  expect(u"W7, 79", fails);

  // The option is read once for each two-digit year and for no other.
  const auto readings = [this](std::u16string_view text) {
    host.recording = true;
    host.calls.clear();
    double value = 0;
    std::uint64_t consumed = 0;
    (void)handle->services.read_period(handle, text.data(), static_cast<std::int64_t>(text.size()),
                                       0, &value, &consumed);
    return std::count_if(host.calls.begin(), host.calls.end(), [](const std::string& line) {
      return line.starts_with("read_option 'JW_NAME_YEARCUTOFF'");
    });
  };
  EXPECT_EQ(readings(u"W7, 79"), 1);
  EXPECT_EQ(readings(u"3/00"), 1);
  EXPECT_EQ(readings(u"3/2024"), 0);
}

}  // namespace
}  // namespace jwnls::test
