// `jwnls format` with dates and times: options, values, messages.

#include <gtest/gtest.h>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

TEST(FormatDates, WritesALineForEachValue) {
  expect({"format", "date", "-l", "de_DE", "2024-03-15"}, "15.03.2024\n");
  expect({"format", "date", "-l", "de_DE", "-s1", "20240315", "2024-12-24T18:00"},
         "15.03.2024\n24.12.2024\n");
  expect({"format", "date", "--locale", "en-US", "--style", "3", "2024-03-15"}, "March 15, 2024\n");
  expect({"format", "date", "-l", "fr_FR", "-s", "long", "--raw", "0", "-138061", "6589335"},
         "1 janvier 1960\n1 janvier 1582\n31 décembre 0000\n");  // four digits are shown
  expect({"format", "date", "-l", "de_DE", "-r", "1", "-2", "--", "-3", "-.5"},
         "02.01.1960\n30.12.1959\n29.12.1959\n31.12.1959\n");
  expect({"format", "time", "-l", "en_US", "14:30", "00:05:09", "T143005"},
         "2:30:00 PM\n12:05:09 AM\n2:30:05 PM\n");
  expect({"format", "time", "-l", "de_DE", "-r", "52205", "-1"}, "14:30:05\n23:59:59\n");
  expect({"format", "datetime", "-l", "de_DE", "2024-03-15T14:30:05", "2024-03-15"},
         "15.03.2024, 14:30:05\n15.03.2024, 00:00:00\n");
  expect({"format", "datetime", "-l", "de_DE", "-s", "time", "2024-03-15T14:30:05"}, "14:30:05\n");
  expect({"format", "datetime", "-l", "de_DE", "--raw", "-0.25"}, "31.12.1959, 23:59:59\n");
  expect({"format", "date", "-l", "ff_Adlm", "-s", "long", "2024-03-15"},
         "15 𞤐𞤦𞤮𞥅𞤴𞤮⹁ 2024\n");
}

TEST(FormatDates, ShowsInstantsInTheTimeZone) {
  const auto check = [&](const char* kind, const char* zone, const char* value,
                         const char* output) {
    expect({"format", kind, "-l", "de_DE", "-z", zone, value}, output);
  };
  check("datetime", "Europe/Berlin", "2024-07-01T12:00:00Z", "01.07.2024, 14:00:00\n");
  check("datetime", "Europe/Berlin", "2024-07-01T12:00:00", "01.07.2024, 12:00:00\n");
  check("datetime", "Asia/Tokyo", "2024-12-31 23:30:00 -05:00", "01.01.2025, 13:30:00\n");
  check("date", "Asia/Tokyo", "2024-12-31T20:00:00Z", "01.01.2025\n");
  check("date", "Asia/Tokyo", "2024-12-31T20:00:00", "31.12.2024\n");
  check("time", "UTC-03:30", "2024-12-31T20:00:00Z", "16:30:00\n");
}

TEST(FormatDates, KnowsNow) {
  auto outcome = run_tool({{"format", "datetime", "-l", "de_DE", "now"}, "", {"TZ=UTC"}});
  for (char& c : outcome.output) {
    if (c >= '0' && c <= '9') c = '9';
  }
  EXPECT_EQ(outcome.output, "99.99.9999, 99:99:99\n") << outcome.errors;
}

TEST(FormatDates, SaysWhichValueIsBadAndWhyAndGoesOn) {
  expect({"format", "date", "-l", "de_DE"}, "15.03.2024\n24.12.2024\n",
         "jwnls: line 2: '2024-02-30': there is no day 30 in month 02 of 2024\n"
         "jwnls: line 3: '': no value\n"
         "jwnls: line 5: 'x\\x1B[2J': neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)\n",
         1, {}, "2024-03-15\r\n  2024-02-30 \n\n2024-12-24 \nx\x1B[2J");
  expect({"format", "date", "14:30", "0049-03-15", "--", "--raw"}, "",
         "jwnls: '14:30': a time without a date\n"
         "jwnls: '0049-03-15': date 0049-03-15: outside 1582-01-01 to 20000-12-31\n"
         "jwnls: '--raw': neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)\n",
         1);
  expect({"format", "time", "2024-03-15", "14:30Z"}, "",
         "jwnls: '2024-03-15': a date without a time of day\n"
         "jwnls: '14:30Z': a time with an offset needs its date\n",
         1);
  expect({"format", "date", "--raw", "6589336", "2024-03-15", ""}, "",
         "jwnls: '6589336': date 6589336 days: outside 1582-01-01 to 20000-12-31\n"
         "jwnls: '2024-03-15': not a number (as 1234.5)\n"
         "jwnls: '': no value\n",
         1);
}

}  // namespace
}  // namespace jwnls::tool
