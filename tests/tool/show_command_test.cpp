#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

TEST(Show, TellsWhatALocaleWritesAndReads) {
  const auto outcome = run_tool({{"show", "de_DE", "-z", "Asia/Tokyo"}});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.errors;
  for (const char* line : {
           "Locale     de_DE\n",
           "Name       German (Germany)\n",
           "Time zone  Asia/Tokyo (now JST, UTC+09:00)\n",
           "  date long        5. März 2024 ",
           "  05.03.2024, 14:07:09  ",
           "  number              1234567.891  1.234.567,891\n",
           "  date     2/3/2024    2024-03-02   could be meant otherwise\n",
           "  date     3/13/2024   not read\n",
           "  number   1.234,5     1234.5\n",
           "  Saturday   Samstag     Sa.\n",
           "  March      März       März\n",
           "  decimal       ,       U+002C\n",
           "  currency      €       U+20AC\n",
           "  its decimals  2\n",
           "  week begins   Monday\n",
       }) {
    EXPECT_NE(outcome.output.find(line), std::string::npos) << line << outcome.output;
  }
}

TEST(Show, MakesAPage) {
  const struct {
    const char* locale;
    std::vector<const char*> pieces;
  } rows[] = {
      {"de_DE",
       {"<h1>German (Germany)</h1>", "<bdi lang=\"de-DE\">Dienstag, 5. März 2024</bdi>",
        "<th scope=\"row\">Tuesday</th><td><bdi", "1.234,50\u00A0€", ">1234.5</span>",
        "not read</span>: <bdi>no such date in the calendar"}},
      {"ar_EG", {"<bdi lang=\"ar-EG\">5 مارس 2024</bdi>", "EGP"}},
  };
  for (const auto& row : rows) {
    const auto page = run_tool({{"show", row.locale, "--html", "-"}});
    EXPECT_EQ(page.exit_code, 0) << page.errors;
    EXPECT_TRUE(page.output.starts_with("<!doctype html>\n")) << page.output;
    for (const char* piece : row.pieces) {
      EXPECT_NE(page.output.find(piece), std::string::npos) << piece << page.output;
    }
  }
}

TEST(Show, TellsTheSameAsJson) {
  const auto outcome = run_tool({{"show", "ja_JP", "-z", "Asia/Tokyo", "--json"}});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.errors;
  for (const char* part : {
           "{\"locale\":\"ja_JP\",\"name\":\"Japanese (Japan)\",\"own_name\":\"日本語 (日本)\",\n",
           "\"zone\":{\"name\":\"Asia/"
           "Tokyo\",\"abbreviation\":\"JST\",\"offset_seconds\":32400},\n",
           "{\"kind\":\"date\",\"words\":\"style=long\",\"value\":\"2024-03-05T14:07:09\","
           "\"text\":\"2024年3月5日\",\"pattern\":\"%Y年%O月%E日\"},\n",
           "{\"kind\":\"number\",\"text\":\"1.234,5\",\"value\":null,\"two_ways\":false},\n",
           "{\"english\":\"Monday\",\"full\":\"月曜日\",\"abbreviated\":\"月\"},\n",
           "\"currency_code\":\"JPY\",\"currency_decimals\":0,\"first_weekday\":\"Sunday\"}\n}\n",
       }) {
    EXPECT_NE(outcome.output.find(part), std::string::npos) << part << outcome.output;
  }
}

TEST(Show, EveryLocaleHasAnExampleForEachPattern) {
  std::istringstream names(run_tool({{"locales", "--names"}}).output);
  std::string name;
  int shown = 0;
  while (names >> name && shown < 1000) {
    // A sample: each tenth locale, and those with unusual scripts.
    if (shown++ % 10 != 0 && name != "ar_EG" && name != "ff_Adlm" && name != "th_TH") continue;
    const auto outcome = run_tool({{"show", name, "-z", "UTC"}});
    EXPECT_EQ(outcome.exit_code, 0) << name;
    // An example that failed stands as its message in parentheses.
    for (const char* error : {"('2024", "('-0.5", "('1234567"}) {
      EXPECT_EQ(outcome.output.find(error), std::string::npos) << outcome.output;
    }
    EXPECT_NE(outcome.output.find("2024"), std::string::npos) << outcome.output;
  }
  EXPECT_GT(shown, 700);
}

}  // namespace
}  // namespace jwnls::tool
