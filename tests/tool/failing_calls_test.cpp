// Calls of the system that fail, each in turn, once and for ever: a command says so and ends with a
// code of its own, or does what it always does. Its target is the old one, or the new one whole.
// Reads and writes that are interrupted, or do half of what is asked, change nothing.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/tool/folder.h"
#include "tests/tool/process.h"

namespace jwnls::tool {
namespace {

namespace fs = std::filesystem;

struct Command {
  const char* arguments;  // separated by blanks; "@" is the folder
  const char* input = "";
};
constexpr Command commands[] = {
    {"format date -l de_DE -s long 2024-03-15 2024-02-30"},
    {"format number -l hi_IN -w 20 --null-out - ", "1234567.891\n\n-5\n"},
    {"read amount -l de_DE --currency any", "1.234,50 \u20AC\nfoo\n"},
    {"read datetime -l de_DE -z Europe/Berlin 2024-07-01T12:00:00Z"},
    {"convert date --from de_DE --to en_US -s long", "15.3.2024\n1. Mai\n"},
    {"read -l de_DE -c Datum=date -c Netto=number --rejects @/rejects --report @/report.html -o "
     "@/new @/table"},
    {"read -l de_DE,en_US -c Netto=number --jsonl --threads 4 -o @/new @/table"},
    {"convert --from de_DE --to en_US -c Netto=number --in-place=.old @/table"},
    {"format -l de_DE -c 2=date -n", "1,2024-03-15\n2,x\n"},
    {"detect -l de_DE,en_US @/table"},
    {"detect -l de_DE,en_US", "15.03.2024\n16.03.2024\n"},
    {"show de_DE"},
    {"locales swiss"},
    {"zones berlin"},
    {"help read date"},
    {"completions bash"},
    {"format numbr 5"},
};

constexpr const char* table =
    "Nr;Kunde;Datum;Netto\n1;\"M\u00FCller; S\u00F6hne\";15.03.2024;1.234,50\n"
    "2;B\u00E4cker;30.02.2024;-89,90\n";

std::string content_of(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// What came of a command, and what it left in a folder that had nothing but the table before.
struct Trial {
  Outcome outcome;
  std::map<std::string, std::string> files;
};

Trial try_command(const Command& command, const std::string& folder,
                  std::vector<std::string> environment) {
  for (const auto& entry : fs::directory_iterator(folder)) fs::remove(entry.path());
  std::ofstream(folder + "/table", std::ios::binary) << table;
  std::istringstream words(command.arguments);
  std::vector<std::string> arguments;
  for (std::string word; words >> word; arguments.push_back(word)) {
    if (const auto at = word.find('@'); at != std::string::npos) word.replace(at, 1, folder);
  }
  Trial trial = {run_tool({arguments, command.input, std::move(environment)}), {}};
  for (const auto& entry : fs::directory_iterator(folder)) {
    trial.files[entry.path().filename().string()] = content_of(entry.path());
  }
  return trial;
}

bool is_as_usual(const Trial& trial, const Trial& usual) {
  return trial.outcome.exit_code == usual.outcome.exit_code &&
         trial.outcome.output == usual.outcome.output &&
         trial.outcome.errors == usual.outcome.errors && trial.files == usual.files;
}

// What is wrong with a trial beside the one that nothing disturbed; empty: nothing.
std::string fault_of(const Trial& trial, const Trial& usual) {
  const auto& [code, output, errors] = trial.outcome;
  if (code < 0 || code > 5) return "ends with " + std::to_string(code) + ": " + errors;
  if (code != 0 && errors.empty()) return "says nothing of code " + std::to_string(code);
  if (code == 0 && output != usual.outcome.output) return "leaves output out: " + output;
  for (const auto& [name, content] : trial.files) {
    const auto found = usual.files.find(name);
    const bool is_usual = found != usual.files.end() && found->second == content;
    // Lists of what is wrong, and reports, are written of a run that failed too.
    const bool beside = name == "rejects" || name.starts_with("report");
    if (!is_usual && !beside && content != table)
      return std::string(name).append(" is left: ").append(content);
  }
  if (code == 0 && trial.files != usual.files) return "leaves files out";
  return trial.files.contains("table") ? "" : "takes the table away";
}

TEST(FailingCalls, EndACommandWithAMessageOrChangeNothing) {
#ifdef JWNLS_SANITIZED
  GTEST_SKIP() << "sanitizers have allocators of their own";
#endif
  const Folder folder;
  const Folder other;
  const std::string report = other.path() + "/failed";
  std::map<std::string, int> failed;  // calls, of all commands
  for (const Command& command : commands) {
    const Trial usual = try_command(command, folder.path(), {});
    for (const char* call :
         {"memory", "open", "read", "mmap", "thread", "interrupt", "short", "link"}) {
      const std::string_view kind = call;
      const bool is_failure = kind != "interrupt" && kind != "short" && kind != "link";
      for (const bool for_ever : {false, true}) {
        if (for_ever && !is_failure) continue;
        // Behind the first dozens some are left out: a command asks for thousands of blocks.
        for (int number = 0;; number += 1 + number / 8) {
          std::ofstream(report).close();
          std::vector<std::string> environment = {"LD_PRELOAD=" JWNLS_BUILD_DIR "/failing_calls.so",
                                                  std::string("FAILING_CALL=") + call,
                                                  "FAILING_NUMBER=" + std::to_string(number),
                                                  "FAILING_REPORT=" + report};
          if (for_ever) environment.emplace_back("FAILING_FOR_EVER=1");
          const Trial trial = try_command(command, folder.path(), environment);
          EXPECT_EQ(fault_of(trial, usual), "") << command.arguments << ": " << call << " "
                                                << number << (for_ever ? " for ever" : "");
          EXPECT_TRUE(is_failure || is_as_usual(trial, usual)) << command.arguments << number;
          if (fs::file_size(report) == 0) break;
          ++failed[call];
        }
      }
    }
  }
  // The test sees what it should: each kind of call is made by some command.
  for (const char* call : {"memory", "open", "read", "thread", "interrupt", "short"})
    EXPECT_GT(failed[call], 4) << call;
}

}  // namespace
}  // namespace jwnls::tool
