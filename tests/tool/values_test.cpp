// `jwnls format`, `jwnls read` and `jwnls convert`: what becomes of values.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

// Arguments without blanks, values, and all that comes of them.
struct Row {
  const char* command;
  std::vector<std::string> values;
  const char* output;
  const char* errors = "";
  int exit_code = 0;
};

void check(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    std::istringstream words(row.command);
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) arguments.push_back(word);
    arguments.insert(arguments.end(), row.values.begin(), row.values.end());
    expect(arguments, row.output, row.errors, row.exit_code);
  }
}

TEST(Values, AreWrittenAsTheLocaleDoes) {
  check({
      {"format date -l de_DE", {"2024-03-15"}, "15.03.2024\n"},
      {"format date -l de_DE -s short",
       {"20240315", "2024-12-24T18:00"},
       "15.03.2024\n24.12.2024\n"},
      {"format date --locale en-US --style long", {"2024-03-15"}, "March 15, 2024\n"},
      {"format date -l ff_Adlm -s long", {"2024-03-15"}, "15 𞤐𞤦𞤮𞥅𞤴𞤮⹁ 2024\n"},
      {"format date -l fr_FR -z UTC -s long -w 18",
       {"@0", ""},
       "    1 janvier 1970\n                  \n"},
      {"format time -l en_US",
       {"14:30", "00:05:09", "T143005"},
       "2:30:00 PM\n12:05:09 AM\n2:30:05 PM\n"},
      {"format datetime -l de_DE",
       {"2024-03-15T14:30:05", "2024-03-15"},
       "15.03.2024, 14:30:05\n15.03.2024, 00:00:00\n"},
      {"format number -l de_DE",
       {"1234567.891", "-5", "-.5", "-1e3", "--", "-0.25"},
       "1.234.567,891\n-5\n-0,5\n-1.000\n-0,25\n"},
      {"format number -l hi_IN -d 2 -w 9", {"12345.678"}, "12,345.68\n"},
      // No double comes near these.
      {"format number -l de_DE",
       {"12345678901234567890.12345678901234567890"},
       "12.345.678.901.234.567.890,12345678901234567890\n"},
      {"format number --no-group --plus --left -w 9", {"1234.5"}, "+1234.5  \n"},
      {"format number -O plus -O decimals=1", {"2"}, "+2.0\n"},
      // Amounts have the decimals of the currency, and more where the value has more.
      {"format amount -l de_DE", {"1.5", "1.859"}, "1,50 €\n1,859 €\n"},
      {"format amount -l ja_JP -d 1", {"1.55"}, "￥1.6\n"},
      {"format integer -l en_IN",
       {"1234567", "18446744073709551615"},
       "12,34,567\n1,84,46,74,40,73,70,95,51,615\n"},
  });
}

TEST(Values, ThatAreInstantsAreShownByTheClocksOfTheZone) {
  check({
      {"format datetime -l de_DE -z Europe/Berlin",
       {"2024-07-01T12:00:00Z", "2024-07-01T12:00:00"},
       "01.07.2024, 14:00:00\n01.07.2024, 12:00:00\n"},
      {"format datetime -l de_DE -z Asia/Tokyo",
       {"2024-12-31 23:30:00 -05:00"},
       "01.01.2025, 13:30:00\n"},
      {"format date -l de_DE -z Asia/Tokyo",
       {"2024-12-31T20:00:00Z", "2024-12-31T20:00:00"},
       "01.01.2025\n31.12.2024\n"},
      {"format time -l de_DE -z Asia/Kolkata", {"2024-12-31T20:00:00Z"}, "01:30:00\n"},
      {"format instant -l de_DE -z Europe/Berlin",
       {"2024-07-01T12:00:00Z", "@1719835200"},
       "01.07.2024, 14:00:00\n01.07.2024, 14:00:00\n"},
      {"format instant -l de_DE",
       {"2024-07-01T12:00:00"},
       "",
       "jwnls: '2024-07-01T12:00:00': no instant: \"Z\" or an offset such as +01:00 is missing\n",
       1},
  });
  auto outcome = run_tool({{"format", "datetime", "-l", "de_DE", "now"}, "", {"TZ=UTC"}});
  for (char& c : outcome.output) {
    if (c >= '0' && c <= '9') c = '9';
  }
  EXPECT_EQ(outcome.output, "99.99.9999, 99:99:99\n") << outcome.errors;
}

TEST(Values, ThatCannotBeWrittenAreNamedAndTheRestGoesOn) {
  // A line keeps its place: what cannot be written stays as it is.
  expect({"format", "date", "-l", "de_DE"}, "15.03.2024\n  2024-02-30 \n\n24.12.2024\nx\x1B[2J\n",
         "jwnls: line 2: '2024-02-30': there is no day 30 in month 02 of 2024\n"
         "jwnls: line 5: 'x\\x1B[2J': neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)\n",
         1, {}, "2024-03-15\r\n  2024-02-30 \n\n2024-12-24 \nx\x1B[2J");
  check({
      {"format date -z UTC",
       {"14:30", "0049-03-15", "67560-03-15", "@1e3", "--", "--raw"},
       "",
       "jwnls: '14:30': a time without a date\n"
       "jwnls: '0049-03-15': outside the calendar\n"
       "jwnls: '67560-03-15': outside the calendar\n"
       "jwnls: '@1e3': no seconds since 1970 (as @1710513000)\n"
       "jwnls: '--raw': neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)\n",
       1},
      {"format time",
       {"2024-03-15", "14:30Z"},
       "",
       "jwnls: '2024-03-15': a date without a time of day\n"
       "jwnls: '14:30Z': a time with an offset needs its date\n",
       1},
      {"format number -l de_DE",
       {"1,5", "2", "1e9999"},
       "2\n",
       "jwnls: '1,5': not a number (as 1234.5)\n"
       "jwnls: '1e9999': of too many digits\n",
       1},
      {"format integer", {"12.5"}, "", "jwnls: '12.5': no integer, or of too many digits\n", 1},
  });
}

TEST(Values, AreReadAsTheLocaleWritesThem) {
  check({
      {"read date -l de_DE", {"15. März 2024", "15.3.2024", ""}, "2024-03-15\n2024-03-15\n\n"},
      {"read date -l en_US --order dmy", {"15/3/24", "1/2/2024"}, "2024-03-15\n2024-02-01\n"},
      {"read time -l en_US", {"2:30 PM", "00:05:09"}, "14:30:00\n00:05:09\n"},
      {"read datetime -l de_DE", {"15.03.2024, 14:30:05"}, "2024-03-15T14:30:05\n"},
      {"read datetime -l en_US -z Europe/Berlin",
       {"3/15/2024 14:30 +0000"},
       "2024-03-15T15:30:00\n"},
      {"read instant -l de_DE -z Europe/Berlin", {"15.7.2024 14:30"}, "2024-07-15T12:30:00Z\n"},
      {"read period -l en_US --year-cutoff 1900",
       {"Jan-49", "W1, 2025"},
       "1949-01-01\n2024-12-30\n"},
      {"read number -l de_DE",
       {"1.234.567,89", "-0,50", "12345678901234567890,1"},
       "1234567.89\n-0.50\n12345678901234567890.1\n"},
      {"read integer -l de_DE", {"-1.234.567"}, "-1234567\n"},
      {"read number -l en_US --missing module --groups any", {".", "12,34.5"}, "\n1234.5\n"},
      {"convert date --from en_US --to de_DE -s long", {"Mar 15, 2024"}, "15. März 2024\n"},
      {"convert time -f de_DE -t en_US", {"14:30"}, "2:30:00 PM\n"},
      {"convert datetime -f ko_KR -t fr_FR",
       {"2024. 3. 15. 오후 2:30"},
       "15 mars 2024, 14:30:00\n"},
      {"convert instant -f en_US -t de_DE -z Europe/Berlin",
       {"7/15/2024 12:30Z"},
       "15.07.2024, 14:30:00\n"},
      {"convert number -f de_DE -t en_US -d 1 -w 9", {"1.234,25"}, "  1,234.3\n"},
      {"convert integer -f en_US -t hi_IN", {"1,234,567"}, "12,34,567\n"},
  });
}

TEST(Values, ThatAreNotReadAreNamedAndTheRestGoesOn) {
  expect(
      {"convert", "date", "--from", "de_DE", "--to", "en_US"},
      "Mar 15, 2024\n15. Mrz 2024\n\n30.2.2024\nApr 1, 2024\n",
      "jwnls: line 2: date '15. Mrz 2024': '15. ' fits, 'Mrz 2024' does not; de_DE writes "
      "'15.03.2024'\n"
      "jwnls: line 4: date '30.2.2024': no such date in the calendar; de_DE writes '15.03.2024'\n",
      1, {}, "15.3.2024\n15. Mrz 2024\r\n\n30.2.2024\n1.4.2024");
  check({{"read number -l de_DE",
          {"12,5x", "1"},
          "1\n",
          "jwnls: '12,5x' in de_DE: '12,5' fits, 'x' does not; de_DE writes '1.234.567,89'\n",
          1}});
}

TEST(Values, ThatCouldBeMeantOtherwiseAreNotReadInSilence) {
  const char* const in_two_ways =
      " could be meant otherwise and none decides; the first is '01/02/2024': "
      "2024-01-02 here, 2024-02-01 with order=dmy; order= decides\n";
  check({
      {"read date -l en_US",
       {"01/02/2024"},
       "2024-01-02\n",
       (std::string("jwnls: note: 1 value") + in_two_ways).c_str()},
      {"read date -l en_US --proved",
       {"01/02/2024", "2/3/2024"},
       "2024-01-02\n2024-02-03\n",
       (std::string("jwnls: not proved: 2 values") + in_two_ways).c_str(),
       5},
      {"read date -l en_US --proved", {"01/02/2024", "1/13/2024"}, "2024-01-02\n2024-01-13\n"},
      {"convert date -f en_GB -t en_US --order dmy", {"01/02/2024"}, "Feb 1, 2024\n"},
      {"convert date -f pl_PL -t en_US",
       {"15 listopada 2024"},
       "Nov 15, 2024\n",
       "jwnls: note: 1 value could be meant otherwise and none decides; the first is "
       "'15 listopada 2024': 2024-11-15 here, 2024-10-15 in hr\n"},
      {"read integer -l de_DE",
       {"1.234"},
       "1234\n",
       "jwnls: note: 1 value could be meant otherwise and none decides; the first is '1.234': "
       "1234 here, 1.234 in en\n"},
  });
}

TEST(Values, TakeTheirOwnLocaleOfTheEnvironment) {
  const auto writes = [](const char* kind, const char* value, const char* output,
                         const std::vector<std::string>& environment) {
    expect({"format", kind, value}, output, "", 0, environment);
  };
  writes("number", "1234.5", "1.234,5\n", {"LC_NUMERIC=de_DE", "LC_TIME=en_US"});
  writes("integer", "1234", "1.234\n", {"LANG=de_DE", "LC_MONETARY=en_US"});
  // Numbers and plain dates need no time zone.
  writes("number", "1.5", "1,5\n", {"LANG=de_DE", "TZ=Mars/Phobos"});
  writes("date", "2024-03-15", "15.03.2024\n", {"LANG=de_DE", "TZ=Mars/Phobos"});
}

TEST(Values, GoThereAndBackInLargeNumbers) {
  const auto outcome = run_shell(
      "seq -f @%.0f 0 86400 8640000000 | \"$jwnls\" format date -l de_DE -s long -z UTC |"
      "\"$jwnls\" convert date --from de_DE --to sv_SE -s long |"
      "\"$jwnls\" read date -l sv_SE | cksum;"
      "seq -f @%.0f 0 86400 8640000000 | date -u -f - +%F | cksum");
  const auto half = outcome.output.size() / 2;
  EXPECT_EQ(outcome.output.substr(0, half), outcome.output.substr(half)) << outcome.errors;
  EXPECT_GT(half, 8u);
}

}  // namespace
}  // namespace jwnls::tool
