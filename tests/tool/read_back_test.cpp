#include "tool/read_back.h"

#include <gtest/gtest.h>

#include "tests/support/unread_locales.h"

namespace jwnls::tool {
namespace {

TEST(ReadBack, NamesTheLocalesThatDoNot) {
  client::HostOptions options;
  options.extension_path = {JWNLS_BUILD_DIR};
  const auto host = client::Host::open(std::move(options));
  ASSERT_TRUE(host) << host.error().message;
  for (const client::LocaleInfo& info : host->locales()) {
    const auto locale = host->locale(info.name, "UTC");
    ASSERT_TRUE(locale) << locale.error().message;
    const bool medium = test::medium_date_unread.count(info.name) == 0;
    const bool long_form = test::long_date_unread.count(info.name) == 0;
    const bool strict_time = test::designator_first.count(info.name) == 0;
    const auto check = [&](const std::string& text, bool is_read) {
      ASSERT_EQ(text == "yes", is_read) << info.name << ": " << text;
      EXPECT_EQ(text.starts_with("no: "), !is_read) << text;
    };
    check(dates_read_back(*locale, client::DateStyle::short_numeric, false), true);
    check(dates_read_back(*locale, client::DateStyle::medium, false), medium);
    check(dates_read_back(*locale, client::DateStyle::long_form, true), long_form);
    check(times_read_back(*locale, false), true);
    check(times_read_back(*locale, true), strict_time);
    check(datetimes_read_back(*locale, false), medium);
    check(datetimes_read_back(*locale, true), medium && strict_time);
    check(numbers_read_back(*locale), true);
    check(integers_read_back(*locale), true);
  }
}

}  // namespace
}  // namespace jwnls::tool
