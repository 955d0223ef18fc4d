#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

TEST(Lists, LocalesWithTheirNames) {
  const auto all = run_tool({{"locales"}});
  EXPECT_EQ(all.exit_code, 0);
  EXPECT_GT(std::count(all.output.begin(), all.output.end(), '\n'), 700);
  EXPECT_NE(all.output.find("\nde_DE "), std::string::npos);

  const auto swiss = run_tool({{"locales", "SCHWEIZ"}});
  EXPECT_NE(swiss.output.find("de_CH  "), std::string::npos) << swiss.output;
  EXPECT_NE(swiss.output.find("German (Switzerland)"), std::string::npos) << swiss.output;
  EXPECT_EQ(swiss.output.find("fr_CH"), std::string::npos);

  expect({"locales", "--names", "german (ger"}, "de_DE\n");
  // What people call a territory, which no name says; several parts; what may have been meant.
  const auto named = run_tool({{"locales", "-n", "Swiss"}}).output;
  for (const char* name : {"de_CH\n", "fr_CH\n", "gsw_CH\n", "it_CH\n", "rm_CH\n", "en_CH\n"}) {
    EXPECT_NE(named.find(name), std::string::npos) << named;
  }
  expect({"locales", "--names", "swiss italian"}, "it_CH\n");
  expect({"locales", "swuss"}, "", "jwnls: no locale matches 'swuss'; did you mean 'Swiss'?\n", 1);
  expect({"locales", "--json", "de_CH"},
         "[\n{\"name\":\"de_CH\",\"english_name\":\"German (Switzerland)\","
         "\"own_name\":\"Deutsch (Schweiz)\"}\n]\n");
  expect({"locales", "klingon"}, "", "jwnls: no locale matches 'klingon'\n", 1);
}

TEST(Lists, ZonesWithWhatHoldsNow) {
  expect({"zones", "kolkata"}, "Asia/Kolkata  IST  UTC+05:30\n");
  expect({"zones", "--names", "new york"}, "America/New_York\n");
  expect({"zones", "--json", "kolkata"},
         "[\n{\"name\":\"Asia/Kolkata\",\"abbreviation\":\"IST\",\"offset\":\"UTC+05:30\","
         "\"offset_seconds\":19800}\n]\n");
  expect({"zones", "berln"}, "", "jwnls: no time zone matches 'berln'; did you mean 'Berlin'?\n",
         1);
  expect({"zones", "-n", "Etc/GMT+1"}, "Etc/GMT+1\nEtc/GMT+10\nEtc/GMT+11\nEtc/GMT+12\n");
}

}  // namespace
}  // namespace jwnls::tool
