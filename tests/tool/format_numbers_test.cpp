// `jwnls format` with numbers: options, values, messages.

#include <gtest/gtest.h>

#include "process.h"

namespace jwnls::tool {
namespace {

using Arguments = std::vector<std::string>;

Outcome format(Arguments arguments, std::vector<std::string> environment = {}) {
  arguments.insert(arguments.begin(), "format");
  return run_tool({std::move(arguments), "", std::move(environment)});
}

TEST(FormatNumbers, WritesALineForEachValue) {
  const struct {
    Arguments arguments;
    const char* output;
  } cases[] = {
      {{"number", "-l", "de_DE", "1234567.891", "-5", "-.5", "-1e3", "--", "-0.25", ".5"},
       "1.234.567,891\n-5\n-0,5\n-1.000\n-0,25\n0,5\n"},
      {{"number", "-l", "hi_IN", "-d", "2", "-w", "14", "1234567.891", ".", ".a", "._", "inf"},
       "  12,34,567.89\n             .\n             A\n             _\n           Inf\n"},
      {{"number", "-l", "en_US", "-inf", "nan"}, "-Inf\n.\n"},
      {{"number", "-l", "fr_FR", "-k", "exponent", "-d3", "--capital", "6.02214076e23"},
       "6,022E+23\n"},
      {{"number", "-l", "en_US", "--kind", "general", "--group", "1234.5", "1e20"},
       "1,234.5\n1e+20\n"},
      {{"number", "-l", "en_US", "-k", "best", "-w", "8", "3.14159265", "1e100"},
       "3.141593\n  1E+100\n"},
      {{"number", "-l", "de_DE", "--no-group", "--sign", "--zero-fill", "-w", "8", "1234.5", "-1"},
       "+01234,5\n-0000001\n"},
      {{"number", "-l", "en_US", "--left", "-w", "4", "5"}, "5   \n"},
      {{"integer", "-l", "en_IN", "1234567", "-5", "-0x10", "18446744073709551615", "."},
       "12,34,567\n-5\n-16\n1,84,46,74,40,73,70,95,51,615\n.\n"},
      {{"integer", "--radix", "16", "--prefix", "--zero-fill", "-w8", "--capital", "255"},
       "0X0000FF\n"},
      {{"integer", "--radix=8", "--digits", "4", "8"}, "0010\n"},
      {{"currency", "-l", "de_CH", "-w", "14", "1234.5", "-5", ".B"},
       "  CHF\u00A01’234.50\n     CHF\u00A0-5.00\n             B\n"},
      {{"currency", "-l", "ja_JP", "1234567"}, "￥1,234,567\n"},
      {{"currency", "-l", "ja_JP", "-d", "1", "--left", "-w", "7", "2"}, "￥2.0   \n"},
      {{"percent", "-l", "de_DE", "0.125", "-0.07"}, "12,5%\n-7%\n"},
      {{"percent", "-l", "en_US", "-d1", "-w8", "--parentheses", "0.5", "-0.07"},
       "   50.0%\n(  7.0%)\n"},
  };
  for (const auto& [arguments, output] : cases) {
    const auto outcome = format(arguments);
    EXPECT_EQ(outcome.output, output);
    EXPECT_EQ(outcome.errors, "") << output;
    EXPECT_EQ(outcome.exit_code, 0) << output;
  }
}

TEST(FormatNumbers, SaysWhichValueIsBadAndWhy) {
  const struct {
    Arguments arguments;
    const char* output;
    const char* errors;
  } cases[] = {
      {{"number", "-l", "de_DE", "1,5", "2", "1e999"},
       "2\n",
       "jwnls: '1,5': not a number (as 1234.5)\n"
       "jwnls: '1e999': too large or too small for a double\n"},
      {{"number", "-l", "de_DE", "-d", "100", "1e300"},
       "",
       "jwnls: '1e300': number 1e+300: takes more than 350 digits\n"},
      {{"integer", "12.0", "18446744073709551616"},
       "",
       "jwnls: '12.0': not an integer (as 1234 or 0xFF)\n"
       "jwnls: '18446744073709551616': outside -9223372036854775808 to 18446744073709551615\n"},
      {{"percent", "--", "-d", "..", "1e308"},
       "",
       "jwnls: '-d': not a number (as 1234.5)\n"
       "jwnls: '..': not a number (as 1234.5)\n"
       "jwnls: '1e308': percentage of 1e+308: its hundredfold is too large for a double\n"},
  };
  for (const auto& [arguments, output, errors] : cases) {
    const auto outcome = format(arguments);
    EXPECT_EQ(outcome.output, output);
    EXPECT_EQ(outcome.errors, errors);
    EXPECT_EQ(outcome.exit_code, 1) << errors;
  }
}

TEST(FormatNumbers, NotesWhatIsShownShortened) {
  const auto outcome = format({"number", "-l", "en_US", "-k", "aligned", "-w6", "1", "12345.678"});
  EXPECT_EQ(outcome.output, "  1.00\n 12346\n");
  EXPECT_EQ(outcome.errors,
            "jwnls: '12345.678': note: shown without all its decimals, for which the width has no "
            "room\n");
  EXPECT_EQ(outcome.exit_code, 0);
}

TEST(FormatNumbers, RefusesOptionsBeforeAnyValue) {
  const struct {
    Arguments arguments;
    const char* errors;
  } cases[] = {
      {{"number", "-d", "351", "1"}, "jwnls: decimals 351: not 0 to 350 (see --help)\n"},
      {{"number", "-d", "-1", "1"}, "jwnls: decimals -1: not 0 to 350 (see --help)\n"},
      {{"number", "-w", "1001", "1"}, "jwnls: width 1001: not 0 to 1000 (see --help)\n"},
      {{"number", "-d", "two", "1"}, "jwnls: Could not convert: --decimals = two (see --help)\n"},
      {{"number", "-k", "huge", "1"},
       "jwnls: -k,--kind: 'huge' is none of: fixed (the default), general, exponent, best or "
       "aligned (see --help)\n"},
      {{"number", "-k", "best", "--sign", "1"},
       "jwnls: best fit: shows no sign but a minus (see --help)\n"},
      {{"number", "--group", "--no-group", "1"},
       "jwnls: --group excludes --no-group (see --help)\n"},
      {{"integer", "--prefix", "1"}, "jwnls: prefix: only for hexadecimal integers (see --help)\n"},
      {{"currency", "--sign", "1"},
       "jwnls: The following argument was not expected: --sign (see --help)\n"},
  };
  for (const auto& [arguments, errors] : cases) {
    const auto outcome = format(arguments);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, errors);
    EXPECT_EQ(outcome.exit_code, 2) << errors;
  }
}

TEST(FormatNumbers, TakeTheirOwnLocaleOfTheEnvironment) {
  const struct {
    Arguments arguments;
    std::vector<std::string> environment;
    const char* output;
  } cases[] = {
      {{"number", "1234.5"}, {"LC_NUMERIC=de_DE", "LC_TIME=en_US"}, "1.234,5\n"},
      {{"integer", "1234"}, {"LANG=de_DE", "LC_MONETARY=en_US"}, "1.234\n"},
      {{"currency", "1"}, {"LC_MONETARY=en_GB.UTF-8", "LC_NUMERIC=de_DE"}, "£1.00\n"},
      {{"percent", "0.125"}, {"LC_ALL=de_DE", "LC_NUMERIC=en_US"}, "12,5%\n"},
      // Numbers need no time zone.
      {{"number", "1.5"}, {"LANG=de_DE", "TZ=Mars/Phobos"}, "1,5\n"},
  };
  for (const auto& [arguments, environment, output] : cases) {
    const auto outcome = format(arguments, environment);
    EXPECT_EQ(outcome.output, output);
    EXPECT_EQ(outcome.errors, "") << output;
  }
}

TEST(FormatNumbers, ReadsLines) {
  const auto outcome =
      run_tool({{"format", "currency", "-l", "en_US", "-w", "12"}, "1234.5\r\n  -5 \n\nx\n.\n"});
  EXPECT_EQ(outcome.output, "   $1,234.50\n      $-5.00\n           .\n");
  EXPECT_EQ(outcome.errors,
            "jwnls: line 3: '': no value\n"
            "jwnls: line 4: 'x': not a number (as 1234.5)\n");
  EXPECT_EQ(outcome.exit_code, 1);
}

}  // namespace
}  // namespace jwnls::tool
