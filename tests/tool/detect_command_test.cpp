#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

struct Case {
  const char* locales;
  const char* input;
  int exit_code;
  const char* output;
};

constexpr Case cases[] = {
    {"en_US,de_DE", "Datum\r\n 27.03.2024 \r\n\r\n01.02.2024", 0,
     "date  2 of 3  de_DE: '27.03.2024' (line 2) is not read in en_US\n"
     "  1 value that no locale reads; the first is 'Datum' (line 1)\n"
     "  1 value could be meant otherwise\n"},
    {"fr_FR,en_US,de_DE", "01/02/2024\n", 5,
     "date  1 of 1  ambiguous: '01/02/2024' (line 1) is 2024-02-01 in fr_FR, de_DE,"
     " 2024-01-02 in en_US\n"
     "  1 value could be meant otherwise\n"},
    {"en_US,de_DE", "1.234,50\n2.345,75\n1,234.50\n", 5,
     "number  2 of 3  contradiction: de_DE; 1 value read only by others; the first is"
     " '1,234.50' (line 3), 1234.50 in en_US\n"},
    {"en_US,de_DE", "a\nb\x1B[2J\n17\n", 5,
     "none  1 of 3  no kind reads half of them; integer reads most;"
     " the first that is not read is 'a' (line 1)\n"},
    {"en_US,de_DE", "\n \n", 5, "none  0 of 0  there are no values\n"},
    {"en_US,de_DE",
     "\xEF\xBB\xBF"
     "17\n\x1B[2J\n",
     0,
     "integer  1 of 2  any of them\n"
     "  1 value that no locale reads; the first is '\\x1B[2J' (line 2)\n"},
    {"de_DE", "15-Oct-2024\n", 0, "date  1 of 1  any of them (names=english)\n"},
    {"de_DE,de_AT,de_BE,de_IT,de_LI,de_LU,en_US", "27.03.2024\n", 0,
     "date  1 of 1  de_DE, de_AT, de_BE, de_IT, de_LI and 1 more:"
     " '27.03.2024' (line 1) is not read in en_US\n"},
};

TEST(Detect, TellsKindLocalesAndWhatDecides) {
  for (const Case& each : cases) {
    SCOPED_TRACE(each.input);
    expect({"detect", "-l", each.locales}, each.output, "", each.exit_code, {}, each.input);
  }
}

TEST(Detect, NamesAllLocalesOnDemand) {
  const auto all = run_tool({{"detect", "--all"}, "27.03.2024\n"});
  EXPECT_EQ(all.exit_code, 0);
  EXPECT_NE(all.output.find(", de_DE, "), std::string::npos) << all.output;
  EXPECT_EQ(all.output.find(" more"), std::string::npos) << all.output;
}

TEST(Detect, NamesWhatCannotBeAskedOrRead) {
  expect({"detect", "-l", "de_DE,klingon"}, "", "jwnls: locale 'klingon': unknown\n", 3);
  expect({"detect", "/no/file"}, "", "jwnls: '/no/file': No such file or directory\n", 4);
  expect({"detect", "/"}, "", "jwnls: '/': Is a directory\n", 4);
  const auto cut = run_tool({{"detect", "-l", "de_DE"}, "1\n" + std::string(5000, '1') + "\n"});
  EXPECT_EQ(cut.exit_code, 1);
  EXPECT_EQ(cut.output, "integer  1 of 1  any of them\n");
  EXPECT_EQ(cut.errors.substr(0, 17), "jwnls: line 2: '1");
}

TEST(Detect, ReadsAFile) {
  const auto outcome = run_shell(
      "f=$(mktemp) && echo 27.03.2024 >$f && \"$jwnls\" detect -l de_DE,"
      "en_US $f; code=$?; rm $f; exit $code");
  EXPECT_EQ(outcome.exit_code, 0) << outcome.errors;
  EXPECT_EQ(outcome.output, "date  1 of 1  de_DE: '27.03.2024' (line 1) is not read in en_US\n");
}

}  // namespace
}  // namespace jwnls::tool
