#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

using Arguments = std::vector<std::string>;

TEST(Output, ThatCannotBeWrittenIsAFailure) {
  for (const Arguments& arguments :
       {Arguments{"format", "date", "2024-03-15"}, {"locales"}, {"zones", "-n"}, {"--help"}}) {
    const auto outcome = run_tool({arguments, "", {}, "/dev/full"});
    EXPECT_EQ(outcome.exit_code, 4);
    EXPECT_EQ(outcome.errors, "jwnls: standard output: No space left on device\n");
  }
  const auto closed = run_shell(
      "{ seq -f @%.0f 0 1000000 | \"$jwnls\" format date -z UTC -l de_DE; echo $? >&2; } | head -n "
      "1");
  EXPECT_EQ(closed.output, "01.01.1970\n");
  EXPECT_EQ(closed.errors, "4\n");
}

// Red is what does not fit, bold are names; the text itself is never obeyed.
TEST(Output, HasColourInMessagesAlone) {
  const auto check = [](Arguments arguments, const std::string& errors, const std::string& input) {
    arguments.emplace_back("--color=always");
    EXPECT_EQ(run_tool({arguments, input}).errors.substr(0, errors.size()), errors);
  };
  const Arguments read = {"read", "date", "-l", "de_DE"};
  check(read, "jwnls: \x1B[1mline 1:\x1B[0m date '15. \x1B[31mMrz 2024\x1B[0m': '15. ' fits,",
        "15. Mrz 2024\n");
  check(read, "jwnls: \x1B[1mline 1:\x1B[0m date '\x1B[31m30.2.2024\x1B[0m': no such",
        "30.2.2024\n");
  check(read, "jwnls: \x1B[1mline 1:\x1B[0m date '\x1B[31m\\x1B[1m\x1B[0m':", "\x1B[1m\n");
  check({"read", "-l", "de_DE", "-c", "b=number"},
        "jwnls: \x1B[1mline 2: b:\x1B[0m number '\x1B[31mx\x1B[0m': nothing", "b;c\nx;y\n");
  check({"read", "-l", "de_DE", "-c", "B=number"},
        "jwnls: no column 'B'; there is '\x1B[1mb\x1B[0m'", "b;c\nx;y\n");
  check({"locales", "swuss"},
        "jwnls: no locale matches 'swuss'; did you mean '\x1B[1mSwiss\x1B[0m'?\n", "");
}

}  // namespace
}  // namespace jwnls::tool
