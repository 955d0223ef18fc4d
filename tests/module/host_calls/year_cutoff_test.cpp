// The host's option that places two-digit years, and what every window makes of them.

#include "module/host_calls/year_cutoff.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "abi/missing_value.h"
#include "module/calendar/value_conversions.h"
#include "module/host_calls/kernel_handle.h"
#include "tests/support/fake_host.h"

namespace jwnls::test {
namespace {

constexpr const char16_t* option = u"JW_NAME_YEARCUTOFF";

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
    const std::int32_t window = year_cutoff_option();
    EXPECT_EQ(date_parts_to_date_value(month, day, year, window), date);
    EXPECT_EQ(date_parts_to_julian(month, day, year, window), full);
    // The same day of the two-digit year's Julian value.
    const double julian = year * 1000 + full % 1000;
    EXPECT_EQ(julian_to_date_value(julian, window), date);
    double y = 0, m = 0, d = 0;
    julian_to_date_parts(julian, window, y, m, d);
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
    const std::int32_t window = year_cutoff_option();
    EXPECT_TRUE(is_missing(date_parts_to_date_value(month, day, year, window))) << cutoff;
    EXPECT_TRUE(is_missing(date_parts_to_julian(month, day, year, window))) << cutoff;
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

TEST_F(OptionCalendar, IsReadAnewAndTakenAsTheKernelLeavesItWhateverTheStatus) {
  set(1980);
  EXPECT_EQ(year_cutoff_option(), 1980);
  EXPECT_EQ(host.calls,
            std::vector<std::string>{"read_option 'JW_NAME_YEARCUTOFF' 3 default 1950 size 8"});
  set(1990);  // nothing of the value before is kept
  EXPECT_EQ(year_cutoff_option(), 1990);
  host.forget_failures();
  host.failing_call = 1;
  EXPECT_EQ(year_cutoff_option(), 1950) << "a failure leaves the default";
  host.forget_failures();
  host.kernel.read_option = [](Kernel*, const char16_t*, std::int64_t, std::uint32_t, void* value,
                               std::int64_t*) {
    constexpr std::int64_t cutoff = 1980;
    std::memcpy(value, &cutoff, sizeof cutoff);
    return FakeHost::failure_status;
  };
  EXPECT_EQ(year_cutoff_option(), 1980) << "filled all the same";
  store_kernel_handle(nullptr);
  EXPECT_EQ(year_cutoff_option(), 1950) << "no kernel yet";
}

}  // namespace
}  // namespace jwnls::test
