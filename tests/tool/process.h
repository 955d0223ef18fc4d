// Runs the program as a process, as a shell would.

#ifndef JWNLS_TESTS_TOOL_PROCESS_H_
#define JWNLS_TESTS_TOOL_PROCESS_H_

#include <string>
#include <vector>

namespace jwnls::tool {

struct Invocation {
  std::vector<std::string> arguments;
  std::string input = {};                     // of standard input
  std::vector<std::string> environment = {};  // "NAME=value"; nothing else is set
  std::string output_path = {};               // standard output goes there; empty: it is captured
};

struct Outcome {
  int exit_code;  // minus the signal's number when one ended it
  std::string output;
  std::string errors;
};

/// Runs `jwnls` of this build to its end.
Outcome run_tool(const Invocation& invocation);

/// Runs `jwnls` and compares all that came of it.
void expect(const std::vector<std::string>& arguments, const std::string& output,
            const std::string& errors = "", int exit_code = 0,
            const std::vector<std::string>& environment = {}, const std::string& input = "");

/// Runs a shell command with $jwnls as the program.
Outcome run_shell(const std::string& command);

}  // namespace jwnls::tool

#endif  // JWNLS_TESTS_TOOL_PROCESS_H_
