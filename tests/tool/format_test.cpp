#include <gtest/gtest.h>

#include "process.h"

namespace jwnls::tool {
namespace {

using Arguments = std::vector<std::string>;

TEST(Format, WritesALineForEachValue) {
  const struct {
    Arguments arguments;
    const char* output;
  } cases[] = {
      {{"date", "-l", "de_DE", "2024-03-15"}, "15.03.2024\n"},
      {{"date", "-l", "de_DE", "-s", "short", "20240315", "2024-12-24T18:00"},
       "15.03.2024\n24.12.2024\n"},
      {{"date", "--locale", "en-US", "--style", "3", "2024-03-15"}, "March 15, 2024\n"},
      {{"date", "-l", "en_US", "-s1", "12345-01-02"}, "01/02/2345\n"},  // four digits are shown
      {{"date", "-l", "fr_FR", "-s", "long", "--raw", "0", "-138061", "6589335", "-.5"},
       "1 janvier 1960\n1 janvier 1582\n31 décembre 0000\n31 décembre 1959\n"},
      {{"date", "-l", "de_DE", "-r", "1", "-2", "--", "-3", "-.5"},
       "02.01.1960\n30.12.1959\n29.12.1959\n31.12.1959\n"},
      {{"time", "-l", "en_US", "14:30", "00:05:09", "T143005"},
       "2:30:00 PM\n12:05:09 AM\n2:30:05 PM\n"},
      {{"time", "-l", "de_DE", "-r", "52205", "-1"}, "14:30:05\n23:59:59\n"},
      {{"datetime", "-l", "de_DE", "2024-03-15T14:30:05", "2024-03-15"},
       "15.03.2024, 14:30:05\n15.03.2024, 00:00:00\n"},
      {{"datetime", "-l", "de_DE", "-s", "time", "2024-03-15T14:30:05"}, "14:30:05\n"},
      {{"datetime", "-l", "de_DE", "--raw", "0", "-0.25"},
       "01.01.1960, 00:00:00\n31.12.1959, 23:59:59\n"},
      {{"date", "-l", "ff_Adlm", "-s", "long", "2024-03-15"},
       "15 𞤐𞤦𞤮𞥅𞤴𞤮⹁ 2024\n"},
  };
  for (const auto& [arguments, output] : cases) {
    Arguments all = {"format"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const auto outcome = run_tool({all});
    EXPECT_EQ(outcome.output, output);
    EXPECT_EQ(outcome.errors, "") << output;
    EXPECT_EQ(outcome.exit_code, 0) << output;
  }
}

TEST(Format, ShowsInstantsInTheTimeZone) {
  const struct {
    const char* kind;
    const char* zone;
    const char* value;
    const char* output;
  } cases[] = {
      {"datetime", "Europe/Berlin", "2024-07-01T12:00:00Z", "01.07.2024, 14:00:00\n"},
      {"datetime", "Europe/Berlin", "2024-07-01T12:00:00", "01.07.2024, 12:00:00\n"},
      {"datetime", "Asia/Tokyo", "2024-12-31 23:30:00 -05:00", "01.01.2025, 13:30:00\n"},
      {"date", "Asia/Tokyo", "2024-12-31T20:00:00Z", "01.01.2025\n"},
      {"date", "Asia/Tokyo", "2024-12-31T20:00:00", "31.12.2024\n"},
      {"time", "asia/kathmandu", "2024-12-31T20:00:00Z", "01:45:00\n"},
      {"time", "UTC-03:30", "2024-12-31T20:00:00Z", "16:30:00\n"},
  };
  for (const auto& [kind, zone, value, output] : cases) {
    const auto outcome = run_tool({{"format", kind, "-l", "de_DE", "-z", zone, value}});
    EXPECT_EQ(outcome.output, output) << value << outcome.errors;
  }
}

TEST(Format, KnowsNow) {
  auto outcome = run_tool({{"format", "datetime", "-l", "de_DE", "now"}, "", {"TZ=UTC"}});
  for (char& c : outcome.output) {
    if (c >= '0' && c <= '9') c = '9';
  }
  EXPECT_EQ(outcome.output, "99.99.9999, 99:99:99\n") << outcome.errors;
}

TEST(Format, ReadsLinesAndGoesOnAfterBadOnes) {
  const auto outcome = run_tool(
      {{"format", "date", "-l", "de_DE"}, "2024-03-15\r\n  2024-02-30 \n\n2024-12-24 \nx\x1B[2J"});
  EXPECT_EQ(outcome.output, "15.03.2024\n24.12.2024\n");
  EXPECT_EQ(outcome.errors,
            "jwnls: line 2: '2024-02-30': there is no day 30 in month 02 of 2024\n"
            "jwnls: line 3: '': no value\n"
            "jwnls: line 5: 'x\\x1B[2J': neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)\n");
  EXPECT_EQ(outcome.exit_code, 1);
}

TEST(Format, SaysWhichValueIsBadAndWhy) {
  const struct {
    Arguments arguments;
    const char* errors;
  } cases[] = {
      {{"date", "14:30"}, "jwnls: '14:30': a time without a date\n"},
      {{"time", "2024-03-15"}, "jwnls: '2024-03-15': a date without a time of day\n"},
      {{"time", "14:30Z"}, "jwnls: '14:30Z': a time with an offset needs its date\n"},
      {{"date", "0049-03-15"},
       "jwnls: '0049-03-15': date 0049-03-15: outside 1582-01-01 to 20000-12-31\n"},
      {{"date", "--raw", "6589336"},
       "jwnls: '6589336': date 6589336 days: outside 1582-01-01 to 20000-12-31\n"},
      {{"date", "--raw", "2024-03-15"}, "jwnls: '2024-03-15': not a number (as 1234.5)\n"},
      {{"date", "--raw", ""}, "jwnls: '': no value\n"},
      {{"date", "--", "--raw", "date"},
       "jwnls: '--raw': neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)\n"
       "jwnls: 'date': neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)\n"},
      {{"datetime", "4000-02-29T12:00"},
       "jwnls: '4000-02-29T12:00': datetime 4000-02-29: no such date in the calendar\n"},
  };
  for (const auto& [arguments, errors] : cases) {
    Arguments all = {"format"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const auto outcome = run_tool({all});
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, errors);
    EXPECT_EQ(outcome.exit_code, 1) << errors;
  }
}

TEST(Format, TakesTheLocaleOfTheEnvironment) {
  const struct {
    std::vector<std::string> environment;
    const char* output;
    const char* errors;
    int exit_code;
  } cases[] = {
      {{}, "03/15/2024\n", "", 0},
      {{"LANG=de_DE.UTF-8"}, "15.03.2024\n", "", 0},
      {{"LANG=de_DE", "LC_TIME=sv_SE.UTF-8", "LC_ALL="}, "2024-03-15\n", "", 0},
      {{"LANG=de_DE", "LC_TIME=sv_SE", "LC_ALL=C.UTF-8"}, "03/15/2024\n", "", 0},
      {{"LANG=de_US"},
       "15.03.2024\n",
       "jwnls: note: locale 'de_US' (from LANG) is not known as such; using de\n",
       0},
      {{"LC_TIME=tlh_AA"}, "", "jwnls: locale 'tlh_AA': unknown (from LC_TIME)\n", 3},
  };
  for (const auto& [environment, output, errors, exit_code] : cases) {
    const auto outcome =
        run_tool({{"format", "date", "-s", "short", "2024-03-15"}, "", environment});
    EXPECT_EQ(outcome.output, output);
    EXPECT_EQ(outcome.errors, errors);
    EXPECT_EQ(outcome.exit_code, exit_code) << output;
  }
}

// Many lines, and one of 100 MB, under a limit that holds the program and its modules alone.
TEST(Format, StreamsLargeInputInConstantMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  const std::string limit;  // sanitizers reserve terabytes of addresses
#else
  const std::string limit = "ulimit -v 60000;";
#endif
  const auto outcome = run_shell(
      "{ head -c 100000000 /dev/zero; echo; seq -f %.0f 0 499999; } |"
      "{ " +
      limit + " \"$jwnls\" format date -l de_DE -s short --raw; echo $?; } | tail -n 2");
  EXPECT_EQ(outcome.output, "13.12.3328\n1\n");
  EXPECT_EQ(outcome.errors.substr(0, 20), "jwnls: line 1: '\\x00");
  EXPECT_NE(outcome.errors.find("the line is longer than 4096 bytes\n"), std::string::npos);
}

}  // namespace
}  // namespace jwnls::tool
