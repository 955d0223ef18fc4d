// The program around its work: usage, lists, show, output that fails.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "process.h"

namespace jwnls::tool {
namespace {

using Arguments = std::vector<std::string>;

TEST(Usage, HelpIsOutputAndHasExamples) {
  std::vector<Arguments> cases = {
      {"--help"}, {"format", "date", "-h"}, {"read", "period", "-h"}, {"convert", "number", "-h"}};
  for (const char* command : {"format", "read", "convert", "locales", "zones", "show"}) {
    cases.push_back({command, "--help"});
  }
  for (const char* kind : {"time", "datetime", "number", "integer", "currency", "percent"}) {
    cases.push_back({"format", kind, "--help"});
  }
  for (const auto& arguments : cases) {
    const auto outcome = run_tool({arguments});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output.find("Usage: jwnls") == std::string::npos, false) << outcome.output;
    const bool shows_how = outcome.output.find("Examples:\n") != std::string::npos ||
                           outcome.output.find("KIND --help") != std::string::npos;
    EXPECT_TRUE(shows_how) << outcome.output;
  }
  EXPECT_EQ(run_tool({{"--version"}}).output.substr(0, 6), "jwnls ");
}

TEST(Usage, WrongCommandLinesSayWhatIsWrong) {
  const auto check = [&](const Arguments& arguments, const char* part) {
    const auto outcome = run_tool({arguments});
    EXPECT_EQ(outcome.exit_code, 2) << part;
    EXPECT_EQ(outcome.output, "");
    EXPECT_NE(outcome.errors.find(part), std::string::npos) << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
  };
  check({}, "jwnls needs one of format, read, convert, locales, zones, show");
  check({"frobnicate"}, "frobnicate");
  check({"format"}, "format needs one of date, time, datetime, number");
  check({"format", "dates"}, "dates");
  check({"format", "date", "--frobnicate", "2024-03-15"}, "--frobnicate");
  check({"format", "date", "-l"}, "--locale");
  check({"format", "date", "-s", "huge", "2024-03-15"}, "'huge' is no style of a date: short (1)");
  check({"format", "datetime", "-s", "long", "2024-03-15"}, "'long' is no style of a datetime");
  check({"format", "time", "-s", "long", "14:30"}, "-s");
  check({"read"}, "read needs one of date, time, datetime, period");
  check({"read", "date", "-s", "long", "3/4/2024"}, "--style requires --as");
  check({"read", "date", "--raw", "--as", "de", "3/4/2024"}, "--raw excludes --as");
  check({"read", "date", "--pattern", "4", "3/4/2024"}, "pattern 4: not 0 to 3");
  check({"read", "period", "--year-cutoff", "99", "Jan-49"}, "99");
  check({"convert"}, "convert needs one of date, time, datetime");
  check({"convert", "date", "--from", "de", "3/4/2024"}, "--to is required");
  check({"show", "de_DE", "fr_FR"}, "fr_FR");
}

TEST(Failures, UnknownNamesAndMissingModules) {
  expect({"format", "date", "-l", "xx_YY", "2024-03-15"}, "", "jwnls: locale 'xx_YY': unknown\n",
         3);
  expect({"show", "de_DE", "-z", "/etc/localtime"}, "",
         "jwnls: time zone '/etc/localtime': unknown\n", 3);
  const auto alone = run_shell(
      "folder=$(mktemp -d); cp \"$jwnls\" \"$folder\"; \"$folder\"/jwnls show de_DE; code=$?;"
      "rm -r \"$folder\"; exit $code");
  EXPECT_EQ(alone.exit_code, 3);
  EXPECT_NE(alone.errors.find("jwnlsloc"), std::string::npos) << alone.errors;
}

TEST(Failures, OutputThatCannotBeWritten) {
  for (const Arguments& arguments :
       {Arguments{"format", "date", "2024-03-15"}, {"locales"}, {"zones", "-n"}, {"--help"}}) {
    const auto outcome = run_tool({arguments, "", {}, "/dev/full"});
    EXPECT_EQ(outcome.exit_code, 4);
    EXPECT_EQ(outcome.errors, "jwnls: standard output: No space left on device\n");
  }
  const auto closed =
      run_shell("{ seq 0 1000000 | \"$jwnls\" format date -r -l de_DE; echo $? >&2; } | head -n 1");
  EXPECT_EQ(closed.output, "01.01.1960\n");
  EXPECT_EQ(closed.errors, "4\n");
}

TEST(Failures, InputThatCannotBeRead) {
  const auto outcome = run_shell("\"$jwnls\" format date -l de_DE </");
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_EQ(outcome.errors, "jwnls: standard input: Is a directory\n");
}

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

TEST(Show, TellsTheWholeRecord) {
  const auto outcome = run_tool({{"show", "de_DE", "-z", "Asia/Tokyo"}});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.errors;
  for (const char* line : {
           "Locale     de_DE\n",
           "Name       German (Germany)\n",
           "Time zone  Asia/Tokyo (now JST, UTC+09:00)\n",
           "  short date   %d.%m.%Y            05.03.2024\n",
           "  datetime     %d.%m.%Y, %H:%M:%S  05.03.2024, 14:07:09\n",
           "  long date    yes        yes\n",
           "  Saturday   Samstag     Sa.\n",
           "  March      März       März\n",
           "  decimal      ,    U+002C\n",
           "  currency     €    U+20AC\n",
           "  currency  1234.5       €1.234,50\n",
           "  percent   0.125        12,5%\n",
       }) {
    EXPECT_NE(outcome.output.find(line), std::string::npos) << line << outcome.output;
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
    for (const char* error : {"(date", "(number", "(integer", "(amount", "(percentage"}) {
      EXPECT_EQ(outcome.output.find(error), std::string::npos) << outcome.output;
    }
    EXPECT_NE(outcome.output.find("2024"), std::string::npos) << outcome.output;
  }
  EXPECT_GT(shown, 700);
}

}  // namespace
}  // namespace jwnls::tool
