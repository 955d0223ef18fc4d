#include <gtest/gtest.h>

#include <string>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

// Many lines, and one of 100 MB, under a limit that holds the program and its modules alone.
TEST(ValueLines, TakeLargeInputInConstantMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  const std::string limit;  // sanitizers reserve terabytes of addresses
#else
  const std::string limit = "ulimit -v 60000;";
#endif
  const auto outcome = run_shell(
      "{ head -c 100000000 /dev/zero; echo; seq -f @%.0f 0 86400 43199913600; } |"
      "{ " +
      limit + " \"$jwnls\" format date -l de_DE -s short -z UTC; echo $?; } | tail -n 2");
  EXPECT_EQ(outcome.output, "14.12.3338\n1\n");
  EXPECT_EQ(outcome.errors.substr(0, 20), "jwnls: line 1: '\\x00");
  EXPECT_NE(outcome.errors.find("the line is longer than 4096 bytes; it is left empty\n"),
            std::string::npos);
}

TEST(ValueLines, ThatCannotBeReadAreAFailure) {
  const auto outcome = run_shell("\"$jwnls\" format date -l de_DE </");
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_EQ(outcome.errors, "jwnls: standard input: Is a directory\n");
}

}  // namespace
}  // namespace jwnls::tool
