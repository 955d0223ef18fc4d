// Two-digit years placed by the host's option, read anew for each of them.

#include "module/calendar/option_calendar.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <limits>
#include <optional>

#include "module/text/kernel_handle.h"
#include "tests/support/fake_host.h"

namespace jwnls::test {
namespace {

constexpr const char16_t* option = u"JW_NAME_YEARCUTOFF";
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
const double missing = missing_value();

bool same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}
#define EXPECT_SAME(a, b) EXPECT_PRED2(same, a, b)

class OptionCalendar : public testing::Test {
 protected:
  OptionCalendar() { store_kernel_handle(&host.kernel); }
  void TearDown() override { store_kernel_handle(nullptr); }

  void set(std::optional<std::int64_t> cutoff) {
    host.integer_options.clear();
    if (cutoff) host.integer_options[option] = *cutoff;
    host.calls.clear();
  }

  FakeHost host;
};

TEST_F(OptionCalendar, PlacesTwoDigitYearsByTheOption) {
  struct Row {
    std::optional<std::int64_t> cutoff;
    double year, month, day, julian, date;
  };
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  const Row rows[] = {
      {{}, 49, 1, 1, 2049001, 32508},
      {{}, 50, 1, 1, 1950001, -3652},
      {1980, 79, 12, 31, 2079365, 43829},
      {1980, 80, 1, 1, 1980001, 7305},
      {2000, 0, 2, 29, 2000060, 14669},
      {1900, 0, 2, 28, 1900059, -21856},
      // The leap day is that of the widened year, the fraction of a day is cut.
      {1900, 0, 2, 29, missing, missing},
      {1900, 0, 2, 28.5, missing, missing},
      {1950, 4, 2, 29.5, missing, missing},
      {1950, 4, 3, 30.5, 2004090, 16160},
      // Windows at the calendar's ends, and beyond them.
      {1582, 82, 1, 1, 1582001, -138061},
      {1582, 81, 1, 1, 1681001, -101901},
      {1581, 81, 1, 1, missing, missing},
      {19950, 0, 12, 31, 20000365, 6589335},
      {19950, 1, 1, 1, missing, missing},
      {0, 50, 1, 1, missing, missing},
      {-1950, 50, 1, 1, missing, missing},
      {largest, 99, 1, 1, missing, missing},
      {-largest - 1, 0, 1, 1, missing, missing},
      {(std::int64_t{1} << 32) + 1950, 50, 1, 1, missing, missing},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.cutoff.value_or(-1) << ": " << row.year << '-'
                                    << row.month << '-' << row.day);
    set(row.cutoff);
    EXPECT_SAME(parts_to_date_value(row.year, row.month, row.day), row.date);
    EXPECT_SAME(parts_to_julian(row.year, row.month, row.day), row.julian);
    if (is_missing(row.date)) continue;
    // The same day of the two-digit year's Julian value.
    const int full = static_cast<int>(row.julian);
    const double julian = row.year * 1000 + full % 1000;
    EXPECT_SAME(julian_to_date_value(julian), row.date);
    double year = 0, month = 0, day = 0;
    EXPECT_EQ(julian_to_date_parts(julian, year, month, day), 0);
    EXPECT_EQ(year, full / 1000);
    EXPECT_EQ(month, row.month);
    EXPECT_EQ(day, static_cast<int>(row.day));
  }
}

TEST_F(OptionCalendar, ReadsTheOptionOncePerTwoDigitYearAndForNoOther) {
  const std::string reading = "read_option 'JW_NAME_YEARCUTOFF' 3 default 1950 size 8";
  double y = 0, m = 0, d = 0;
  set(1980);
  (void)parts_to_date_value(79, 1, 1);
  (void)parts_to_julian(0, 2, 29);
  (void)julian_to_date_value(99366);
  (void)julian_to_date_parts(1, y, m, d);
  EXPECT_EQ(host.calls, std::vector<std::string>(4, reading));

  set(1990);  // nothing of the value before is kept
  EXPECT_EQ(parts_to_date_value(80, 1, 1), 43830);
  EXPECT_EQ(host.calls, std::vector<std::string>(1, reading));

  set(1980);
  for (const double year : {100.0, 1581.0, 1582.0, 2079.0, 20000.0, 20001.0, -1.0, nan, missing}) {
    (void)parts_to_date_value(year, 1, 1);
    (void)parts_to_julian(year, 1, 1);
    (void)julian_to_date_value(year * 1000 + 1);
    (void)julian_to_date_parts(year * 1000 + 1, y, m, d);
  }
  EXPECT_TRUE(host.calls.empty());
  EXPECT_EQ(parts_to_date_value(2079, 1, 1), 43465);
}

TEST_F(OptionCalendar, TakesTheSlotAsTheKernelLeavesItWhateverTheStatus) {
  set(1980);
  host.failing_call = 1;
  EXPECT_EQ(parts_to_date_value(79, 1, 1), 6940) << "a failure leaves 1950: 1979";
  host.forget_failures();
  host.kernel.read_option = [](Kernel*, const char16_t*, std::int64_t, std::uint32_t, void* value,
                               std::int64_t*) {
    constexpr std::int64_t cutoff = 1980;
    std::memcpy(value, &cutoff, sizeof cutoff);
    return FakeHost::failure_status;
  };
  EXPECT_EQ(parts_to_date_value(79, 1, 1), 43465) << "filled all the same: 2079";
  store_kernel_handle(nullptr);
  EXPECT_EQ(parts_to_date_value(79, 1, 1), 6940) << "no kernel yet";
}

}  // namespace
}  // namespace jwnls::test
