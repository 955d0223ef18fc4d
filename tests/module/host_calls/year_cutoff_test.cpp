// Two-digit years placed by the host's option, read anew for each of them.

#include "module/host_calls/year_cutoff.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <limits>
#include <optional>

#include "module/host_calls/kernel_handle.h"
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
  const auto places = [this](std::optional<std::int64_t> cutoff, double year, double month,
                             double day, int full, double date) {
    SCOPED_TRACE(testing::Message() << full);
    set(cutoff);
    EXPECT_EQ(parts_to_date_value(year, month, day), date);
    EXPECT_EQ(parts_to_julian(year, month, day), full);
    // The same day of the two-digit year's Julian value.
    const double julian = year * 1000 + full % 1000;
    EXPECT_EQ(julian_to_date_value(julian), date);
    double y = 0, m = 0, d = 0;
    EXPECT_EQ(julian_to_date_parts(julian, y, m, d), 0);
    EXPECT_EQ(y, full / 1000);
    EXPECT_EQ(m, month);
    EXPECT_EQ(d, static_cast<int>(day));
  };
  places({}, 49, 1, 1, 2049001, 32508);
  places({}, 50, 1, 1, 1950001, -3652);
  places(1980, 79, 12, 31, 2079365, 43829);
  places(1980, 80, 1, 1, 1980001, 7305);
  places(2000, 0, 2, 29, 2000060, 14669);
  places(1900, 0, 2, 28, 1900059, -21856);
  places(1950, 4, 3, 30.5, 2004090, 16160);  // the fraction of a day is cut
  places(1582, 82, 1, 1, 1582001, -138061);  // windows at the calendar's ends
  places(1582, 81, 1, 1, 1681001, -101901);
  places(19950, 0, 12, 31, 20000365, 6589335);
  const auto refuses = [this](std::int64_t cutoff, double year, double month = 1, double day = 1) {
    set(cutoff);
    EXPECT_SAME(parts_to_date_value(year, month, day), missing) << cutoff;
    EXPECT_SAME(parts_to_julian(year, month, day), missing) << cutoff;
  };
  refuses(1900, 0, 2, 29);  // the leap day is that of the widened year
  refuses(1900, 0, 2, 28.5);
  refuses(1950, 4, 2, 29.5);
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  for (const std::int64_t cutoff : {std::int64_t{1581}, std::int64_t{0}, std::int64_t{-1950},
                                    largest, -largest - 1, (std::int64_t{1} << 32) + 1950}) {
    refuses(cutoff, 81);
  }
  refuses(19950, 1);
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
