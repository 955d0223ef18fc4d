#include "host/zones/utc_offset.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

namespace jwnls::host {
namespace {

TEST(UtcOffset, IsHoursAndMinutesBelowADay) {
  const auto check = [](std::u16string_view name, std::optional<int> minutes) {
    const std::optional<int> seconds = parse_utc_offset(name);
    EXPECT_EQ(seconds, minutes ? std::optional(*minutes * 60) : std::nullopt)
        << testing::PrintToString(name);
  };
  check(u"UTC+05:30", 330);
  check(u"utc-5", -300);
  check(u"Utc+5:45", 345);
  check(u"UTC-0930", -570);
  check(u"UTC-0", 0);
  check(u"UTC+23:59", 1439);
  for (const std::u16string_view name :
       {u"UTC+24:00", u"UTC+5:60", u"UTC+5:3", u"UTC+530", u"UTC+05:30:00", u"UTC+", u"UTC",
        u"UTC+:30", u"UTC +5", u"UTC+5 ", u"GMT+5", u"\uFF35TC+5", u"UTC+05:", u"UTC+\u0665",
        u""}) {
    check(name, std::nullopt);
  }
}

}  // namespace
}  // namespace jwnls::host
