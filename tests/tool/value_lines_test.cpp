#include <gtest/gtest.h>

#include <string>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

// Many lines, and one of 100 MB, under a limit that holds the program and its modules alone.
TEST(ValueLines, TakeLargeInputInConstantMemory) {
#if defined(JWNLS_SANITIZED)
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
  EXPECT_NE(outcome.errors.find("longer than 4096 bytes\n"), std::string::npos);
}

// A line of any length keeps its place and its text; messages stand before the line that they are
// about.
TEST(ValueLines, KeepTheirTextAndTheirOrder) {
  const std::string shown =
      "jwnls: line 2: '" + std::string(80, 'x') + "...': longer than 4096 bytes\n";
  const std::string command =
      "{ echo 1,5; head -c 200000 /dev/zero | tr '\\0' x; printf '\\r\\n2,5\\n'; } |"
      "\"$jwnls\" read number -l de_DE ";
  const std::string text(200'000, 'x');
  EXPECT_EQ(run_shell(command + "2>&1 | cat").output, "1.5\n" + shown + text + "\n2.5\n");
  EXPECT_EQ(run_shell(command + "--invalid=empty 2>&1").output, "1.5\n" + shown + "\n2.5\n");
  EXPECT_EQ(run_shell(command + "-q --invalid=stop").output, "1.5\n");
}

TEST(ValueLines, ThatCannotBeReadAreAFailure) {
  const auto outcome = run_shell("\"$jwnls\" format date -l de_DE </");
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_EQ(outcome.errors, "jwnls: standard input: Is a directory\n");
}

}  // namespace
}  // namespace jwnls::tool
