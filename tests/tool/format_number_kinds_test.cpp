// `jwnls format` with numbers: options, values, messages.

#include <gtest/gtest.h>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

TEST(FormatNumbers, WritesALineForEachValue) {
  expect({"format", "number", "-l", "de_DE", "1234567.891", "-5", "-.5", "-1e3", "--", "-0.25"},
         "1.234.567,891\n-5\n-0,5\n-1.000\n-0,25\n");
  expect({"format", "number", "-l", "hi_IN", "-d", "2", "-w", "9", "12345.678", ".", ".a", "inf"},
         "12,345.68\n        .\n        A\n      Inf\n");
  expect({"format", "number", "-l", "en_US", "-inf", "nan"}, "-Inf\n.\n");
  expect({"format", "number", "-l", "fr_FR", "-k", "exponent", "-d3", "--capital", "6.02214076e23"},
         "6,022E+23\n");
  expect({"format", "number", "-l", "en_US", "--kind", "general", "--group", "1234.5"},
         "1,234.5\n");
  expect({"format", "number", "-l", "en_US", "-k", "best", "-w", "8", "3.14159265"}, "3.141593\n");
  expect({"format", "number", "--no-group", "--sign", "--zero-fill", "-w", "8", "1234.5"},
         "+01234.5\n");
  expect({"format", "number", "-l", "en_US", "--left", "-w", "4", "5"}, "5   \n");
  expect({"format", "number", "-l", "en_US", "-k", "aligned", "-w6", "1", "12345.678"},
         "  1.00\n 12346\n",
         "jwnls: '12345.678': note: shown without all its decimals, for which the width has no "
         "room\n");
  expect({"format", "integer", "-l", "en_IN", "1234567", "-0x10", "18446744073709551615", "."},
         "12,34,567\n-16\n1,84,46,74,40,73,70,95,51,615\n.\n");
  expect(
      {"format", "integer", "--radix", "16", "--prefix", "--zero-fill", "-w8", "--capital", "255"},
      "0X0000FF\n");
  expect({"format", "integer", "--radix=8", "--digits", "4", "8"}, "0010\n");
  expect({"format", "currency", "-l", "de_CH", "-w", "14", "1234.5", ".B"},
         "  CHF\u00A01’234.50\n             B\n");
  expect({"format", "currency", "-l", "ja_JP", "-d", "1", "--left", "-w", "7", "2"}, "￥2.0   \n");
  expect({"format", "percent", "-l", "de_DE", "0.125", "-0.07"}, "12,5%\n-7%\n");
  expect({"format", "percent", "-l", "en_US", "-d1", "-w8", "--parentheses", "0.5", "-0.07"},
         "   50.0%\n(  7.0%)\n");
}

TEST(FormatNumbers, SaysWhichValueIsBadAndWhy) {
  expect({"format", "number", "-l", "de_DE", "1,5", "2", "1e999"}, "2\n",
         "jwnls: '1,5': not a number (as 1234.5)\n"
         "jwnls: '1e999': too large or too small for a double\n",
         1);
  expect({"format", "number", "-d", "100", "1e300"}, "",
         "jwnls: '1e300': number 1e+300: takes more than 350 digits\n", 1);
  expect({"format", "integer", "12.0"}, "", "jwnls: '12.0': not an integer (as 1234 or 0xFF)\n", 1);
  expect({"format", "percent", "--", "-d", "1e308"}, "",
         "jwnls: '-d': not a number (as 1234.5)\n"
         "jwnls: '1e308': percentage of 1e+308: its hundredfold is too large for a double\n",
         1);
}

TEST(FormatNumbers, RefusesOptionsBeforeAnyValue) {
  const auto refuses = [](std::vector<std::string> arguments, const std::string& reason) {
    arguments.insert(arguments.begin(), "format");
    arguments.push_back("1");
    expect(arguments, "", "jwnls: " + reason + " (see --help)\n", 2);
  };
  refuses({"number", "-d", "-1"}, "decimals -1: not 0 to 350");
  refuses({"number", "-d", "two"}, "Could not convert: --decimals = two");
  refuses({"number", "-k", "huge"},
          "-k,--kind: 'huge' is none of: fixed (the default), general, exponent, best or aligned");
  refuses({"number", "-k", "best", "--sign"}, "best fit: shows no sign but a minus");
  refuses({"number", "--group", "--no-group"}, "--group excludes --no-group");
  refuses({"integer", "--prefix"}, "prefix: only for hexadecimal integers");
  refuses({"currency", "--sign"}, "The following argument was not expected: --sign");
}

TEST(FormatNumbers, TakeTheirOwnLocaleOfTheEnvironment) {
  const auto writes = [](const char* kind, const char* value, const char* output,
                         const std::vector<std::string>& environment) {
    expect({"format", kind, value}, output, "", 0, environment);
  };
  writes("number", "1234.5", "1.234,5\n", {"LC_NUMERIC=de_DE", "LC_TIME=en_US"});
  writes("integer", "1234", "1.234\n", {"LANG=de_DE", "LC_MONETARY=en_US"});
  writes("currency", "1", "£1.00\n", {"LC_MONETARY=en_GB.UTF-8", "LC_NUMERIC=de_DE"});
  writes("percent", "0.125", "12,5%\n", {"LC_ALL=de_DE", "LC_NUMERIC=en_US"});
  // Numbers need no time zone.
  writes("number", "1.5", "1,5\n", {"LANG=de_DE", "TZ=Mars/Phobos"});
}

}  // namespace
}  // namespace jwnls::tool
