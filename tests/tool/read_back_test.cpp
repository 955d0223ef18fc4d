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
    const struct {
      std::string text;
      bool is_read;
    } rows[] = {
        {dates_read_back(*locale, client::DateStyle::short_numeric, false), true},
        {dates_read_back(*locale, client::DateStyle::medium, false), medium},
        {dates_read_back(*locale, client::DateStyle::long_form, true), long_form},
        {times_read_back(*locale, false), true},
        {times_read_back(*locale, true), strict_time},
        {datetimes_read_back(*locale, false), medium},
        {datetimes_read_back(*locale, true), medium && strict_time},
        {numbers_read_back(*locale), true},
        {integers_read_back(*locale), true},
    };
    for (const auto& [text, is_read] : rows) {
      ASSERT_EQ(text == "yes", is_read) << info.name << ": " << text;
      EXPECT_EQ(text.starts_with("no: "), !is_read) << text;
    }
  }
}

}  // namespace
}  // namespace jwnls::tool
