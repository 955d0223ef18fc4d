// The examples of the documents are what the program does.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/tool/folder.h"
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

void check(const Folder& folder, const std::string& command, const std::string& output) {
  SCOPED_TRACE(command);
  const auto outcome = run_shell("cd " + folder.path() +
                                 "; export jwnls; jwnls() { \"$jwnls\" \"$@\"; }; " + command);
  EXPECT_EQ(lines_of(outcome.output + outcome.errors), lines_of(output));
}

// The lines of a block that begins with "```csv NAME" are a file of that name.
void write_block(std::istream& document, const std::string& path) {
  std::ofstream file(path);
  for (std::string line; std::getline(document, line) && line != "```";) file << line << '\n';
}

// An example: "$ command", lines of it that go on behind "> ", and what comes of it up to the next
// one or the block's end. All of a document share a folder. Gives how many there were.
int check_document(const std::string& name) {
  const Folder folder;
  std::ifstream document(JWNLS_CASES_DIR "/../../docs/" + name);
  std::string command;
  std::string output;
  int examples = 0;
  constexpr std::string_view file_block = "```csv ";
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with(file_block)) {
      write_block(document, folder.path() + "/" + line.substr(file_block.size()));
      continue;
    }
    const bool begins = line.starts_with("$ ");
    if ((begins || line == "```") && !command.empty()) {
      check(folder, command, output);
      ++examples;
      command.clear();
    }
    if (begins) {
      command = line.substr(2);
      output.clear();
    } else if (!command.empty() && output.empty() && line.starts_with("> ")) {
      command.append("\n").append(line, 2);
    } else if (!command.empty()) {
      output.append(line).append("\n");
    }
  }
  return examples;
}

TEST(Documents, HaveExamplesThatAreTrue) {
  EXPECT_GE(check_document("tool.md"), 25);
  EXPECT_GE(check_document("pipes.md"), 3);
  EXPECT_GE(check_document("tables.md"), 20);
  EXPECT_GE(check_document("../README.md"), 2);
}

}  // namespace
}  // namespace jwnls::tool
