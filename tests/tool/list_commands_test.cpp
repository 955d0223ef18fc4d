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
  expect({"locales", "klingon"}, "", "jwnls: no locale matches 'klingon'\n", 1);
}

TEST(Lists, ZonesWithWhatHoldsNow) {
  expect({"zones", "kolkata"}, "Asia/Kolkata  IST  UTC+05:30\n");
  expect({"zones", "-n", "Etc/GMT+1"}, "Etc/GMT+1\nEtc/GMT+10\nEtc/GMT+11\nEtc/GMT+12\n");
}

}  // namespace
}  // namespace jwnls::tool
