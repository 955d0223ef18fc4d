// The examples of the document are what the program does.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

// Sorted, as nobody says in which order the lines of two streams come.
std::vector<std::string> lines_of(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

void check(const std::string& command, const std::string& output) {
  SCOPED_TRACE(command);
  const auto outcome = run_shell("jwnls() { \"$jwnls\" \"$@\"; }; " + command);
  EXPECT_EQ(lines_of(outcome.output + outcome.errors), lines_of(output));
}

// An example: "$ command", and what comes of it up to the next one or the block's end.
TEST(Documents, HaveExamplesThatAreTrue) {
  std::ifstream document(JWNLS_CASES_DIR "/../../docs/tool.md");
  std::string command;
  std::string output;
  int examples = 0;
  for (std::string line; std::getline(document, line);) {
    const bool begins = line.starts_with("$ ");
    if ((begins || line == "```") && !command.empty()) {
      check(command, output);
      ++examples;
      command.clear();
    }
    if (begins) {
      command = line.substr(2);
      output.clear();
    } else if (!command.empty()) {
      output.append(line).append("\n");
    }
  }
  EXPECT_GE(examples, 12);
}

}  // namespace
}  // namespace jwnls::tool
