// Help, and command lines that are wrong.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

using Arguments = std::vector<std::string>;

TEST(CommandLine, HelpIsOutputAndHasExamples) {
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

TEST(CommandLine, WrongCommandLinesSayWhatIsWrong) {
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

}  // namespace
}  // namespace jwnls::tool
