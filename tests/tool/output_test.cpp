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

}  // namespace
}  // namespace jwnls::tool
