// Whole command lines on whole tables: what stands in tests/cases/tables.txt is what comes of them.
//
//   ### what the examples below show; a folder of their own
//   file NAME, its lines, end
//   $ command, standard output, "! " and standard error, "= exit" and the code

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "tests/tool/folder.h"
#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

std::string in_front(const std::string& mark, const std::string& text) {
  std::istringstream in(text);
  std::string all;
  for (std::string line; std::getline(in, line);) all.append(mark).append(line).append("\n");
  return all;
}

std::string result_of(const std::string& folder, const std::string& command) {
  const auto outcome =
      run_shell("cd " + folder + " && jwnls() { \"$jwnls\" \"$@\"; } && " + command);
  return in_front("", outcome.output) + in_front("! ", outcome.errors) + "= exit " +
         std::to_string(outcome.exit_code) + "\n";
}

TEST(Tables, BecomeWhatTheExamplesSay) {
  std::ifstream cases(JWNLS_CASES_DIR "/tables.txt");
  std::unique_ptr<Folder> folder;
  std::string title;
  int examples = 0;
  for (std::string line; std::getline(cases, line);) {
    if (line.starts_with("### ")) {
      title = line;
      folder = std::make_unique<Folder>();
    } else if (line.starts_with("file ")) {
      std::ofstream file(folder->path() + "/" + line.substr(5));
      while (std::getline(cases, line) && line != "end") file << line << '\n';
    } else if (line.starts_with("$ ")) {
      const std::string command = line.substr(2);
      std::string expected;
      while (std::getline(cases, line)) {
        expected += line + "\n";
        if (line.starts_with("= exit")) break;
      }
      EXPECT_EQ(result_of(folder->path(), command), expected) << title << "\n$ " << command;
      ++examples;
    }
  }
  EXPECT_GE(examples, 50);
}

}  // namespace
}  // namespace jwnls::tool
